#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/EditProperties.h"
#include "model/contract/Variant.h"

namespace margindesk {

// Keys of an editor that are no characters (see TextEdit.h for the others).
inline constexpr char32_t kKeyUp = 0xF700;
inline constexpr char32_t kKeyDown = 0xF701;

// The editor that is open in a cell of a grid (TGridTableView::OpenEditor). It has what it edits with from
// the cell's properties; its list is a copy, which goes stale when the properties change under it.
class TCellEditor {
 public:
  TCellEditor(std::int32_t record, std::int32_t columnTag, TEditProperties* properties, TVariant value);

  std::int32_t GetRecord() const noexcept { return FRecord; }
  std::int32_t GetColumnTag() const noexcept { return FColumnTag; }
  TEditProperties* GetProperties() const noexcept { return FProperties; }  // null: plain text
  bool IsSpin() const noexcept;
  bool IsDropDown() const noexcept;

  const TVariant& GetValue() const noexcept { return FValue; }
  bool IsModified() const noexcept { return FModified; }  // since it opened; else committing does nothing
  // Fires the properties' change event unless it is what it was.
  void SetValue(TVariant value);

  const std::vector<std::string>& GetItems() const noexcept { return FItems; }
  void SetItems(std::vector<std::string> items) { FItems = std::move(items); }
  std::int32_t GetItemIndex() const;  // of the value among the items; -1 when it is none of them

  // The caret, in characters from the start of the value's text.
  std::int32_t GetCaret() const noexcept { return FCaret; }
  void SetCaretToEnd();

 private:
  friend class TGridTableView;

  std::int32_t FRecord;
  std::int32_t FColumnTag;
  TEditProperties* FProperties;
  TVariant FValue;
  std::vector<std::string> FItems;
  std::int32_t FCaret = 0;
  bool FModified = false;
};

}  // namespace margindesk
