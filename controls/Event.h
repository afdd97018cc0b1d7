#pragma once

namespace margindesk {

// An event of a control: a method of the form with its object, or nothing. Firing an empty event does
// nothing. A form that goes takes its controls with it, so an event never outlives its object.
template <class... TArguments>
struct TEvent {
  void (*FCode)(void* object, TArguments... arguments) = nullptr;
  void* FObject = nullptr;

  explicit operator bool() const noexcept { return FCode != nullptr; }
  void operator()(TArguments... arguments) const {
    if (FCode != nullptr) FCode(FObject, arguments...);
  }
  friend bool operator==(const TEvent&, const TEvent&) = default;
};

// What MakeEvent answers: it becomes an event of whatever arguments the method takes.
template <auto Method, class T>
struct TEventBinding {
  T* FObject;

  template <class... TArguments>
  // NOLINTNEXTLINE(google-explicit-constructor): it exists to be assigned to an event
  operator TEvent<TArguments...>() const {
    return {[](void* self, TArguments... arguments) { (static_cast<T*>(self)->*Method)(arguments...); },
            FObject};
  }
};

// Binds a method; a virtual one is called through the object's class.
//   btnMoreInfo->SetOnClick(MakeEvent<&TMyFrame::btnMoreInfoClick>(this));
template <auto Method, class T>
TEventBinding<Method, T> MakeEvent(T* object) {
  return {object};
}

}  // namespace margindesk
