#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/Control.h"

namespace margindesk {

enum class TLayoutAlignHorz { Client, Left, Center, Right };
enum class TLayoutAlignVert { Client, Top, Center, Bottom };
enum class TLayoutDirection { Vertical, Horizontal };

class TLayoutGroup;

// A place in a layout: it may be hidden, and says where it stands in its group.
class TBaseLayoutItem : public TControl {
 public:
  using TControl::TControl;

  TLayoutGroup* GetParent() const noexcept { return FParent; }  // null for a root
  TLayoutAlignHorz GetAlignHorz() const noexcept { return FAlignHorz; }
  void SetAlignHorz(TLayoutAlignHorz align) { Assign(FAlignHorz, align); }
  TLayoutAlignVert GetAlignVert() const noexcept { return FAlignVert; }
  void SetAlignVert(TLayoutAlignVert align) { Assign(FAlignVert, align); }

  // Whether the item and every group around it are visible.
  bool IsShown() const noexcept;

 private:
  friend class TLayoutGroup;

  TLayoutGroup* FParent = nullptr;
  TLayoutAlignHorz FAlignHorz = TLayoutAlignHorz::Client;
  TLayoutAlignVert FAlignVert = TLayoutAlignVert::Top;
};

// The place of one control; the caption stands beside it.
class TLayoutItem : public TBaseLayoutItem {
 public:
  TLayoutItem(TComponent* owner, std::string name, TControl* control = nullptr)
      : TBaseLayoutItem(owner, std::move(name)), FControl(control) {}

  TControl* GetControl() const noexcept { return FControl; }  // null for an empty place

 private:
  TControl* FControl;
};

// Places in a row or a column. The items belong to the form; an item that is added leaves the group in which
// it stood.
class TLayoutGroup : public TBaseLayoutItem {
 public:
  TLayoutGroup(TComponent* owner, std::string name, TLayoutDirection direction)
      : TBaseLayoutItem(owner, std::move(name)), FDirection(direction) {}

  TLayoutDirection GetDirection() const noexcept { return FDirection; }
  void SetDirection(TLayoutDirection direction) { Assign(FDirection, direction); }
  const std::vector<TBaseLayoutItem*>& GetItems() const noexcept { return FItems; }
  void AddItem(TBaseLayoutItem* item) { InsertItem(FItems.size(), item); }
  void InsertItem(std::size_t index, TBaseLayoutItem* item);  // index: after the item has left its old place

 private:
  TLayoutDirection FDirection;
  std::vector<TBaseLayoutItem*> FItems;
};

// Fills the form with a root group.
class TLayoutControl : public TControl {
 public:
  using TControl::TControl;

  TLayoutGroup* GetRoot() const noexcept { return FRoot; }
  void SetRoot(TLayoutGroup* root) { Assign(FRoot, root); }

 private:
  TLayoutGroup* FRoot = nullptr;
};

}  // namespace margindesk
