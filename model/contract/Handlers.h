#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/contract/Code.h"

namespace margindesk {

// A notification handler: a method bound to an object, taking (sender, data), either of which may be null.
// What `data` points to is said where the handler is registered.
struct THandler {
  using TCall = void (*)(void* object, void* sender, void* data);

  TCall FCode = nullptr;
  void* FObject = nullptr;

  explicit operator bool() const noexcept { return FCode != nullptr; }
  void operator()(void* sender, void* data) const { FCode(FObject, sender, data); }
  friend bool operator==(const THandler&, const THandler&) = default;
};

// Binds a method `void T::Method(void* sender, void* data)`; a virtual one is called through the object's
// class.
//   MakeHandler<&TMyFrame::ConfigUpdate>(this)
template <auto Method, class T>
THandler MakeHandler(T* object) {
  return {[](void* self, void* sender, void* data) { (static_cast<T*>(self)->*Method)(sender, data); },
          object};
}

// A file completion handler: a method taking (sender, file name, file text, success).
struct TFileCompletionHandler {
  using TCall = void (*)(void* object, void* sender, const std::string& fileName, const std::string& text,
                         bool success);

  TCall FCode = nullptr;
  void* FObject = nullptr;

  explicit operator bool() const noexcept { return FCode != nullptr; }
  void operator()(void* sender, const std::string& fileName, const std::string& text, bool success) const {
    FCode(FObject, sender, fileName, text, success);
  }
};

template <auto Method, class T>
TFileCompletionHandler MakeFileCompletionHandler(T* object) {
  return {[](void* self, void* sender, const std::string& fileName, const std::string& text, bool success) {
            (static_cast<T*>(self)->*Method)(sender, fileName, text, success);
          },
          object};
}

// Told what() of every exception that a handler let out, and the handler's owner, before the list goes on to
// the next handler. The host installs one to name the fault to its user; without one the fault is dropped, as
// is an exception out of the sink. Gives back the one before.
using THandlerFaultSink = void (*)(std::string_view what, const void* owner);
THandlerFaultSink SetHandlerFaultSink(THandlerFaultSink sink) noexcept;

// Handlers of one kind of notification, each with its owner. Promises, which every notification of the host
// keeps:
// - handlers run in the order of their registration;
// - one removed while a pass runs is not called any more in that pass; one added waits for the next pass;
// - a handler may remove itself, its neighbours or its whole owner, and may start a nested pass;
// - an exception out of a handler reaches neither the list nor the other handlers (see SetHandlerFaultSink);
// - the list itself may go while a pass runs: the pass then ends.
// Whoever registers a handler removes it before its object goes. A handler registered twice is called twice;
// an empty one is not registered. A pass of a list that has run before allocates no memory. Lists belong to
// the user-interface thread.
class THandlerList {
 public:
  THandlerList();
  ~THandlerList();
  THandlerList(const THandlerList&) = delete;
  THandlerList& operator=(const THandlerList&) = delete;

  void Add(THandler handler, const void* owner);
  void RemoveOwner(const void* owner);  // every handler of the owner
  void Notify(void* sender, void* data);

  std::size_t GetCount() const noexcept;
  std::size_t GetCountOf(const void* owner) const noexcept;

 private:
  struct TState;
  std::shared_ptr<TState> FState;  // shared with the passes that run
};

// The same for subscriptions under a key (an account, a symbol): one pass calls the handlers of one key.
class TKeyedHandlerList {
 public:
  TKeyedHandlerList();
  ~TKeyedHandlerList();
  TKeyedHandlerList(const TKeyedHandlerList&) = delete;
  TKeyedHandlerList& operator=(const TKeyedHandlerList&) = delete;

  // Subscribes the owner under `key`. With a previous key the owner's subscriptions under it end first, in
  // the same step; an empty `key` then only ends them. Nothing is ever kept under the empty key.
  void Register(TCode key, THandler handler, const void* owner, TCode previousKey = TCode());

  void Unregister(TCode key, const void* owner);  // every handler of the owner under the key
  void RemoveOwner(const void* owner);            // under every key
  void Notify(TCode key, void* sender, void* data);

  // Notifies every key of `keys` in that order as one pass, but each (handler, owner) once only, the first
  // time it is met. The keys must not change meanwhile; they may go with the list.
  void NotifyOnce(const std::vector<TCode>& keys, void* sender, void* data);

  bool HasKey(TCode key) const noexcept;
  std::vector<std::pair<TCode, std::size_t>> GetKeyCounts() const;  // in ascending order of the keys' texts
  std::size_t GetCount() const noexcept;
  std::size_t GetCountOf(const void* owner) const noexcept;

 private:
  struct TState;
  std::shared_ptr<TState> FState;
};

}  // namespace margindesk
