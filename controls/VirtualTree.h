#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "controls/Control.h"
#include "controls/EditProperties.h"
#include "controls/Geometry.h"
#include "controls/StyleRepository.h"

namespace margindesk {

class TBaseDataControl;
class TCustomTreeDataControl;
class TCustomTreeDataSource;
class TDataNode;

// One row of a tree on the form. Rows last until the tree is told that its data changed.
class TVirtualTreeNode {
 public:
  TDataNode* GetData() const noexcept { return FData; }  // of the data control
  std::int32_t GetLevel() const noexcept { return FLevel; }
  TVirtualTreeNode* GetParent() const noexcept { return FParent; }  // null on level 0
  bool HasChildren() const noexcept { return FHasChildren; }

 private:
  friend class TVirtualTree;

  TDataNode* FData = nullptr;
  TVirtualTreeNode* FParent = nullptr;
  std::int32_t FLevel = 0;
  bool FHasChildren = false;
  std::string FKey;  // names the row over a rebuild of the rows
};

// One column of a tree. The events fill in their last argument; what they leave alone stays.
struct TTreeColumn {
  std::int32_t FTag = 0;
  std::string FCaption;
  bool FAllowEditing = false;
  bool FAllowFocusing = false;
  TEditProperties* FProperties = nullptr;  // a component of the form; null: plain text
  TEvent<const TTreeColumn&, const TVirtualTreeNode*, std::string&> FOnGetDisplayText;
  TEvent<const TTreeColumn&, const TVirtualTreeNode*, TEditProperties*&> FOnGetEditProperties;
};

// A tree whose rows and cells are asked for: the rows of its data source, the cells of its columns' events.
// A data change is remembered at once and the rows are built anew when somebody next looks at them, so a
// burst of changes costs one rebuild. Rows keep their place and whether they are open over a rebuild; a new
// row is closed. Without a column event a cell shows the data control's text for the column's tag.
class TVirtualTree : public TControl {
 public:
  // What is at a point. Null where there is nothing.
  struct THitTest {
    const TTreeColumn* FColumn = nullptr;
    const TVirtualTreeNode* FNode = nullptr;
  };

  using TControl::TControl;
  ~TVirtualTree() override;

  // The source is not owned. It tells the tree when it goes; null takes it away.
  void SetDataSource(TCustomTreeDataSource* source);
  TCustomTreeDataSource* GetDataSource() const noexcept { return FDataSource; }

  // Columns from left to right.
  void SetColumns(std::vector<TTreeColumn> columns);
  const std::vector<TTreeColumn>& GetColumns() const noexcept { return FColumns; }
  const TTreeColumn* FindColumn(std::int32_t tag) const noexcept;  // null when there is none

  // --- rows

  void FullRefresh();  // everything may have changed
  // All rows in order, open or not, and those under open ones alone.
  const std::vector<const TVirtualTreeNode*>& GetNodes();
  const std::vector<const TVirtualTreeNode*>& GetShownNodes();
  bool IsExpanded(const TVirtualTreeNode& node) const { return FExpanded.contains(node.FKey); }
  void SetExpanded(const TVirtualTreeNode& node, bool expanded);

  // --- cells

  std::string GetDisplayText(const TVirtualTreeNode* node, const TTreeColumn& column) const;
  TEditProperties* GetEditProperties(const TVirtualTreeNode* node, const TTreeColumn& column) const;
  const TStyle* GetContentStyle(const TVirtualTreeNode* node, const TTreeColumn& column) const;  // or null
  void SetOnGetContentStyle(
      TEvent<const TTreeColumn&, const TVirtualTreeNode*, const TStyle*&> event) noexcept {
    FOnGetContentStyle = event;
  }

  // --- geometry: rows from the top of the control, columns share its width

  bool GetShowHeaders() const noexcept { return FShowHeaders; }
  void SetShowHeaders(bool show) { Assign(FShowHeaders, show); }
  bool GetGridLines() const noexcept { return FGridLines; }  // both ways
  void SetGridLines(bool lines) { Assign(FGridLines, lines); }
  bool GetColumnAutoWidth() const noexcept { return FColumnAutoWidth; }
  void SetColumnAutoWidth(bool automatic) { Assign(FColumnAutoWidth, automatic); }
  bool GetCellHints() const noexcept { return FCellHints; }  // a hint shows a text that is cut off
  void SetCellHints(bool hints) { Assign(FCellHints, hints); }
  std::int32_t GetRowHeight() const noexcept { return FRowHeight; }  // pixels
  void SetRowHeight(std::int32_t height) { Assign(FRowHeight, height); }
  std::int32_t GetTopRow() const noexcept { return FTopRow; }  // the first shown row on the screen
  void SetTopRow(std::int32_t row) { Assign(FTopRow, row); }
  // Where the front has put the control on the screen.
  void SetScreenOrigin(TPoint origin) noexcept { FScreenOrigin = origin; }
  TPoint ClientToScreen(TPoint point) const noexcept {
    return {FScreenOrigin.FX + point.FX, FScreenOrigin.FY + point.FY};
  }

  // Opens the rows around a row, which may then be scrolled to.
  void MakeVisible(const TVirtualTreeNode& node);
  // The place of a cell; empty for a row that is not shown. It may lie outside the control.
  TRect GetCellRect(const TVirtualTreeNode& node, const TTreeColumn& column);
  THitTest HitTest(TPoint point);

  // --- the person at the mouse, as a front reports it

  void MouseMove(TPoint point) { FOnMouseMove(point.FX, point.FY); }
  void MouseLeave() { FOnMouseLeave(); }
  void SetOnMouseMove(TEvent<std::int32_t, std::int32_t> event) noexcept { FOnMouseMove = event; }
  void SetOnMouseLeave(TEvent<> event) noexcept { FOnMouseLeave = event; }

 private:
  void DataChanged(TBaseDataControl* sender);
  void Rebuild();
  void AddRows(TCustomTreeDataControl& control, TDataNode* parent, TVirtualTreeNode* parentRow);
  std::int32_t GetColumnLeft(std::size_t index) const noexcept;

  TCustomTreeDataSource* FDataSource = nullptr;
  std::vector<TTreeColumn> FColumns;
  std::vector<std::unique_ptr<TVirtualTreeNode>> FRows;
  std::vector<const TVirtualTreeNode*> FNodes;
  std::vector<const TVirtualTreeNode*> FShownNodes;
  std::set<std::string> FExpanded;  // keys
  bool FRowsValid = false;
  bool FShownValid = false;
  bool FShowHeaders = true;
  bool FGridLines = false;
  bool FColumnAutoWidth = false;
  bool FCellHints = false;
  std::int32_t FRowHeight = 18;
  std::int32_t FTopRow = 0;
  TPoint FScreenOrigin;
  TEvent<const TTreeColumn&, const TVirtualTreeNode*, const TStyle*&> FOnGetContentStyle;
  TEvent<std::int32_t, std::int32_t> FOnMouseMove;
  TEvent<> FOnMouseLeave;
};

}  // namespace margindesk
