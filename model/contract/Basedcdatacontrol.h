#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/contract/Basedatacontrol.h"

namespace margindesk {

// A flat data control. It listens to the configuration, if there is one, from its making until it goes.
class TCustomDataControl : public TBaseDataControl {
 public:
  explicit TCustomDataControl(TComponent* owner);
  ~TCustomDataControl() override;

  // The configuration changed: texts and formats may differ. Here it calls the change event; sender and data
  // are not looked at.
  virtual void ConfigUpdate(void* sender, void* data);
};

// One row of a tree data control. A node belongs to the control's node list; its children are borrowed.
class TDataNode {
 public:
  explicit TDataNode(TDataNode* parent) : FParent(parent) {
    if (parent != nullptr) parent->FChildren.push_back(this);
  }
  virtual ~TDataNode() = default;
  TDataNode(const TDataNode&) = delete;
  TDataNode& operator=(const TDataNode&) = delete;

  TDataNode* GetParent() const noexcept { return FParent; }
  const std::vector<TDataNode*>& GetChildren() const noexcept { return FChildren; }
  void ClearChildren() noexcept { FChildren.clear(); }  // before the children themselves go
  std::int32_t GetLevel() const noexcept { return FParent == nullptr ? 0 : FParent->GetLevel() + 1; }

  // Tells the row from its siblings, also after the rows have been built anew.
  virtual std::string GetKey() const = 0;

 private:
  TDataNode* FParent;
  std::vector<TDataNode*> FChildren;
};

// A data control of a tree. Columns are cell codes (Constdef.h). It listens to the configuration as
// TCustomDataControl does.
class TCustomTreeDataControl : public TBaseDataControl {
 public:
  explicit TCustomTreeDataControl(TComponent* owner);
  ~TCustomTreeDataControl() override;

  using TBaseDataControl::GetDisplayValue;
  using TBaseDataControl::GetValue;

  // Nodes last until the rows are built anew: the columns are set, or the account changes or is loaded again.
  virtual TDataNode* GetParentNode(TDataNode* node) = 0;  // null for a row of the first level
  virtual TDataNode* GetNode(std::int32_t index) = 0;     // of the node list; null out of range
  virtual TDataNode* GetChildNode(TDataNode* node, std::int32_t index) = 0;  // of the root for null
  virtual std::int32_t GetChildNodeCount(TDataNode* node) = 0;
  virtual TDataNode* GetRootNode() = 0;  // null: the first level hangs under no node
  virtual TVariant GetValue(TDataNode* node, std::int32_t column) = 0;
  virtual std::string GetDisplayValue(TDataNode* node, std::int32_t column) = 0;
  // The columns are borrowed until the next call; the list is given again after any change of it.
  virtual void SetColumnList(const TColumnList& columns) = 0;
  virtual void ConfigUpdate(void* sender, void* data);
};

// Makes a data control of one class; the maker's answer belongs to `owner`.
using TTreeDataControlClass = TCustomTreeDataControl* (*)(TComponent* owner);
using TGridDataControlClass = TBaseDataControl* (*)(TComponent* owner);

template <class T>
TCustomTreeDataControl* CreateTreeDataControl(TComponent* owner) {
  return new T(owner);
}
template <class T>
TBaseDataControl* CreateGridDataControl(TComponent* owner) {
  return new T(owner);
}

// Creates and owns one tree data control and gives it its columns.
class TCustomTreeDataSource : public TComponent {
 public:
  TCustomTreeDataSource(const TColumnList& columns, TTreeDataControlClass dataControlClass);
  ~TCustomTreeDataSource() override;

  TCustomTreeDataControl* GetDataControl() const noexcept { return FDataControl; }
  void SetColumnList(const TColumnList& columns);

  // The event of the tree that shows the source: rows or cells may have changed; a null sender says that the
  // source is going. An empty event ends it.
  void Connect(TDataChangeEvent event) noexcept;

 private:
  void DataChanged(TBaseDataControl* sender);

  TDataChangeEvent FOnChange;
  TCustomTreeDataControl* FDataControl;  // an owned component
};

// Creates and owns one grid data control.
class TCustomGridDataSource : public TComponent {
 public:
  explicit TCustomGridDataSource(TGridDataControlClass dataControlClass);
  ~TCustomGridDataSource() override;

  TBaseDataControl* GetDataControl() const noexcept { return FDataControl; }

  void Connect(TDataChangeEvent event) noexcept;  // as of a tree's source

 private:
  void DataChanged(TBaseDataControl* sender);

  TDataChangeEvent FOnChange;
  TBaseDataControl* FDataControl;  // an owned component
};

}  // namespace margindesk
