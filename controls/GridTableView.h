#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "controls/CellEditor.h"
#include "controls/Control.h"
#include "controls/EditProperties.h"
#include "controls/Geometry.h"
#include "model/contract/Variant.h"

namespace margindesk {

class TBaseDataControl;
class TCustomGridDataSource;

enum class TSortOrder { None, Ascending, Descending };

// One column of a grid, known by its tag. The events fill in their last arguments; what they leave alone
// stays. Records are 0-based.
struct TGridColumn {
  std::int32_t FTag = 0;
  std::string FCaption;
  std::int32_t FWidth = 0;     // pixels
  std::int32_t FMinWidth = 0;  // pixels
  bool FVisible = true;
  TSortOrder FSortOrder = TSortOrder::None;
  std::int32_t FSortIndex = -1;  // the place among the sorted columns; -1 when not sorted
  bool FNumeric = false;         // holds numbers; otherwise texts
  bool FAllowEditing = false;
  bool FAllowSorting = true;
  bool FAllowFiltering = false;
  bool FAllowFocusing = false;
  bool FShowEditButtons = false;  // of every cell, not only of the focused one
  TAlignment FHeaderAlignment = TAlignment::Left;
  TEditProperties* FProperties = nullptr;  // a component of the form; null: plain text
  TEvent<const TGridColumn&, std::int32_t, std::string&> FOnGetDisplayText;
  TEvent<const TGridColumn&, std::int32_t, TEditProperties*&> FOnGetProperties;
  // The person commits a cell: the value may be replaced; a non-empty text refuses it.
  TEvent<TVariant&, std::string&> FOnValidate;
};

// What a grid offers beside its records.
struct TGridOptions {
  bool FAllowDeleting = true;     // of records, by the person
  bool FGroupByBox = false;       // a box above the headers to drag columns into
  bool FColumnAutoWidth = false;  // the columns share the width
  bool FCellHints = false;        // a hint shows a text that is cut off
  bool FCellEllipsis = false;     // and the cell ends in dots
  std::string FEmptyText;         // in place of records

  friend bool operator==(const TGridOptions&, const TGridOptions&) = default;
};

// A grid of records. With a data source the records are the rows of its data control; without one the grid
// keeps the values itself. A burst of data changes costs one sorting, when somebody next asks for the order.
//
// The focused record and the selected ones follow their rows where the data control names its rows
// (TRowKeys): when the row goes, no record is focused, so that an action never slides onto the row that took
// its place.
//
// Editing. A front, and a script in its place, edits a cell with one editor at a time, in these steps:
//   OpenEditor          focuses the record, asks the form (editing event), and copies value and list
//   PressEditorKey      for every key, before what the key does; arrow keys included
//   TypeInEditor        the editor now holds this: after each key that changed it, or once for a text pasted
//   ChooseInEditor      an entry of the list was picked
//   SpinEditor          one step of the spin buttons or of an arrow key
//   DropDownEditor      the list or the panel is about to show
//   CommitEditor        Enter, or the focus leaves: the column validates, then the cell has the value
//   CancelEditor        Escape: the cell keeps what it has
// The properties' change event follows each change of the editor, also one by the form.
class TGridTableView : public TControl {
 public:
  using TControl::TControl;
  ~TGridTableView() override;

  // The source is not owned. It tells the grid when it goes; null takes it away.
  void SetDataSource(TCustomGridDataSource* source);
  TCustomGridDataSource* GetDataSource() const noexcept { return FDataSource; }

  // Columns in display order.
  const std::vector<TGridColumn>& GetColumns() const noexcept { return FColumns; }
  void SetColumns(std::vector<TGridColumn> columns);  // without a source, cells keep their column by its tag
  const TGridColumn* FindColumn(std::int32_t tag) const noexcept;  // null when there is none
  void SetColumnCaption(std::int32_t tag, std::string caption);    // of every column with the tag
  void SetSorting(std::int32_t tag, TSortOrder order);  // by this column alone; nothing where it may not be

  // --- records

  std::int32_t GetRecordCount() const;
  void SetRecordCount(std::int32_t count);             // without a source: new records are blank
  void DeleteRecord(std::int32_t record);              // without a source; nothing out of range
  const std::vector<std::int32_t>& GetDisplayOrder();  // the records in the order of the sorted columns

  // A cell's value; unassigned where there is none.
  TVariant GetValue(std::int32_t record, std::int32_t tag) const;
  void SetValue(std::int32_t record, std::int32_t tag, TVariant value);  // without a source
  // What the cell shows: the column's event, else the data control's text, else the value.
  std::string GetDisplayText(std::int32_t record, const TGridColumn& column) const;
  TEditProperties* GetProperties(std::int32_t record, const TGridColumn& column) const;

  // --- the person at the grid, as a front reports it

  std::int32_t GetFocusedRecordIndex() const noexcept { return FFocusedRecord; }  // -1 for none
  void SetFocusedRecordIndex(std::int32_t record);                                // -1 out of range
  bool GetMultiSelect() const noexcept { return FMultiSelect; }
  void SetMultiSelect(bool multiSelect) { Assign(FMultiSelect, multiSelect); }
  const std::vector<std::int32_t>& GetSelection() const noexcept { return FSelection; }
  void SetSelection(std::vector<std::int32_t> records);  // one at most without multi-select
  void DoubleClickCell() { FOnCellDblClick(); }          // on the focused record
  // Each answers "" when it was done, else why not. An editor that is open elsewhere is committed first.
  std::string OpenEditor(std::int32_t record, std::int32_t tag);
  TCellEditor* GetEditor() noexcept { return FEditor ? &*FEditor : nullptr; }  // null while none is open
  void PressEditorKey(char32_t key);
  std::string TypeInEditor(TVariant value);  // texts become numbers where the editor wants them
  std::string ChooseInEditor(std::int32_t index);
  std::string SpinEditor(bool up, bool byKey);
  std::string DropDownEditor();
  std::string CommitEditor();  // an editor whose value is refused stays open
  void CancelEditor();
  // All of it at once: opens, types or chooses, and commits; a refused value leaves the cell as it was.
  std::string EditCell(std::int32_t record, std::int32_t tag, TVariant value);
  // The same of so many spins, downward when negative.
  std::string SpinCell(std::int32_t record, std::int32_t tag, std::int32_t steps, bool byKey);

  const TGridOptions& GetOptions() const noexcept { return FOptions; }
  void SetOptions(TGridOptions options) { Assign(FOptions, std::move(options)); }

  void SetOnCellDblClick(TEvent<> event) noexcept { FOnCellDblClick = event; }
  void SetOnEditing(TEvent<const TGridColumn&, bool&> event) noexcept { FOnEditing = event; }
  void SetOnEditKeyDown(TEvent<const TGridColumn&, TCellEditor&, char32_t> event) noexcept {
    FOnEditKeyDown = event;
  }
  void SetOnChange(TEvent<> event) noexcept { FOnChange = event; }  // the focused record changed

 private:
  void DataChanged(TBaseDataControl* sender);
  void FollowFocus();
  void FollowSelection();
  void ChangeFocus(std::int32_t record);
  TBaseDataControl* GetDataControl() const noexcept;  // null without a source
  bool IsRecord(std::int32_t record) const { return record >= 0 && record < GetRecordCount(); }
  void InvalidateOrder();  // it stays when it turns out to be the same
  std::vector<TVariant> GetSortKeys(const TGridColumn& column) const;

  TCustomGridDataSource* FDataSource = nullptr;
  std::vector<TGridColumn> FColumns;
  struct TCell {
    std::int32_t FTag;
    TVariant FValue;
  };
  std::vector<std::vector<TCell>> FRecords;  // without a source
  std::vector<std::int32_t> FOrder;
  std::vector<std::vector<TVariant>> FSortKeys;  // that FOrder was made from, a list for each sorted column
  bool FOrderValid = false;
  std::int32_t FFocusedRecord = -1;
  std::string FFocusedKey;
  bool FMultiSelect = false;
  std::vector<std::int32_t> FSelection;
  std::vector<std::string> FSelectedKeys;  // of FSelection, where rows are named
  TEvent<> FOnCellDblClick;
  TEvent<> FOnChange;
  TEvent<const TGridColumn&, bool&> FOnEditing;
  TEvent<const TGridColumn&, TCellEditor&, char32_t> FOnEditKeyDown;
  TGridOptions FOptions;
  std::optional<TCellEditor> FEditor;
};

}  // namespace margindesk
