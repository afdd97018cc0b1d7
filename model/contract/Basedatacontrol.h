#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/contract/ColumnInfo.h"
#include "model/contract/Component.h"
#include "model/contract/Variant.h"

namespace margindesk {

class TBaseDataControl;

// A data control's notification to its view: a method of the view with its object.
struct TDataChangeEvent {
  void (*FCode)(void* object, TBaseDataControl* sender) = nullptr;
  void* FObject = nullptr;

  explicit operator bool() const noexcept { return FCode != nullptr; }
  void operator()(TBaseDataControl* sender) const { FCode(FObject, sender); }
};

template <auto Method, class T>
TDataChangeEvent MakeDataChangeEvent(T* object) {
  return {[](void* self, TBaseDataControl* sender) { (static_cast<T*>(self)->*Method)(sender); }, object};
}

// What stands behind a grid or a tree: it answers cell values and texts and tells its view when they change.
// Rows are 0-based; a row or column out of range answers an unassigned value, an empty text, false and null.
class TBaseDataControl : public TComponent {
 public:
  using TComponent::TComponent;

  virtual std::int32_t GetCount() = 0;
  virtual void Changed();                       // the data changed: calls the change event
  virtual const TColumnList* GetColList() = 0;  // owned by the control or its view; null when there is none
  virtual TVariant GetValue(std::int32_t row, std::int32_t column) = 0;
  virtual std::string GetDisplayValue(std::int32_t row, std::int32_t column) = 0;
  virtual bool GetRowValue(std::int32_t row, const void*& value) = 0;
  virtual bool GetColValue(std::int32_t column, const void*& value) = 0;

  // The view's event; an empty one ends it. A view that goes before its control takes its event back.
  void SetOnChange(TDataChangeEvent event) noexcept { FOnChange = event; }

 protected:
  void NotifyChange();  // calls the change event when one is assigned

 private:
  TDataChangeEvent FOnChange;
};

// The identity of rows, for a data control whose rows come and go. A grid keeps the key of its focused record
// and looks it up after every change, so that the focus follows its position and never slides onto another
// one; what the user does next is then done to the row that he chose.
class TRowKeys {
 public:
  virtual ~TRowKeys() = default;
  virtual std::string GetRowKey(std::int32_t row) const = 0;     // "" out of range
  virtual std::int32_t FindRow(std::string_view key) const = 0;  // -1 when there is none
};

}  // namespace margindesk
