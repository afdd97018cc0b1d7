#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "controls/Event.h"
#include "model/contract/Component.h"

namespace margindesk {

class TPopupMenu;

// The base of the control models: what a frame sets and reads of a control, without a toolkit. A control
// belongs to its form, which finds it by its component name.
//
// Two kinds of events. The update event belongs to the front that shows the control: it fires after any
// change of what is shown, once for a batch. The events of the kinds (change, click and so on) belong to the
// form: a change event fires whenever the value really changes, whoever changed it, at once, and never when
// it is set to what it was.
class TControl : public TComponent {
 public:
  explicit TControl(TComponent* owner) : TComponent(owner) {}
  TControl(TComponent* owner, std::string name) : TComponent(owner) { SetComponentName(std::move(name)); }

  bool GetVisible() const noexcept { return FVisible; }
  void SetVisible(bool visible) { Assign(FVisible, visible); }
  bool GetEnabled() const noexcept { return FEnabled; }
  void SetEnabled(bool enabled) { Assign(FEnabled, enabled); }
  const std::string& GetCaption() const noexcept { return FCaption; }
  void SetCaption(std::string caption) { Assign(FCaption, std::move(caption)); }
  const std::string& GetHint() const noexcept { return FHint; }
  void SetHint(std::string hint) { Assign(FHint, std::move(hint)); }

  // Pixels at 100 % scale; 0 where the layout decides.
  std::int32_t GetWidth() const noexcept { return FWidth; }
  void SetWidth(std::int32_t width) { Assign(FWidth, width); }
  std::int32_t GetHeight() const noexcept { return FHeight; }
  void SetHeight(std::int32_t height) { Assign(FHeight, height); }

  // The right-click menu, a component of the same form; null for none.
  TPopupMenu* GetPopupMenu() const noexcept { return FPopupMenu; }
  void SetPopupMenu(TPopupMenu* menu) { Assign(FPopupMenu, menu); }

  // Between the two nothing is told to the front; the last EndUpdate tells it once if anything changed.
  void BeginUpdate() noexcept { ++FUpdateDepth; }
  void EndUpdate() {
    if (--FUpdateDepth == 0 && std::exchange(FUpdatePending, false)) FOnUpdate();
  }

  void SetOnUpdate(TEvent<> event) noexcept { FOnUpdate = event; }

 protected:
  // Something that is shown changed.
  void Updated() {
    if (FUpdateDepth > 0) {
      FUpdatePending = true;
    } else {
      FOnUpdate();
    }
  }

  // Sets a property and tells the front, unless it is what it was. Answers whether it changed.
  template <class TValue>
  bool Assign(TValue& property, TValue value) {
    if (property == value) return false;
    property = std::move(value);
    Updated();
    return true;
  }

 private:
  bool FVisible = true;
  bool FEnabled = true;
  bool FUpdatePending = false;
  std::int32_t FUpdateDepth = 0;
  std::int32_t FWidth = 0;
  std::int32_t FHeight = 0;
  std::string FCaption;
  std::string FHint;
  TPopupMenu* FPopupMenu = nullptr;
  TEvent<> FOnUpdate;
};

// One batch of changes of a control.
class TControlUpdate {
 public:
  explicit TControlUpdate(TControl& control) : FControl(control) { FControl.BeginUpdate(); }
  ~TControlUpdate() { FControl.EndUpdate(); }
  TControlUpdate(const TControlUpdate&) = delete;
  TControlUpdate& operator=(const TControlUpdate&) = delete;

 private:
  TControl& FControl;
};

// A control that holds one value.
template <class TValue>
class TValueControl : public TControl {
 public:
  using TControl::TControl;

  void SetOnChange(TEvent<> event) noexcept { FOnChange = event; }

 protected:
  const TValue& Value() const noexcept { return FValue; }
  void ChangeValue(TValue value) {
    if (Assign(FValue, std::move(value))) FOnChange();
  }

 private:
  TValue FValue{};
  TEvent<> FOnChange;
};

}  // namespace margindesk
