#pragma once

namespace margindesk {

// A host service: the package reaches the one live object through GetInstance at each use and never stores or
// frees it. The host installs its object before it loads a package and takes it out after it has unloaded the
// last one.
//
// Every service is declared `extern template class TService<TCustomX>;` and instantiated once in the host
// framework's library, so that the terminal and every package share one slot.
template <class T>
class TService {
 public:
  TService(const TService&) = delete;
  TService& operator=(const TService&) = delete;
  virtual ~TService() = default;

  // The live object. Asking while none is installed is a fault of the host, not an answer to be handled.
  static T& GetInstance() noexcept { return *FInstance; }
  static bool HasInstance() noexcept { return FInstance != nullptr; }

  // Makes `instance` (not owned, null for none) the live object and gives back the one before.
  static T* Install(T* instance) noexcept {
    T* previous = FInstance;
    FInstance = instance;
    return previous;
  }

 protected:
  TService() = default;

 private:
  static T* FInstance;
};

template <class T>
T* TService<T>::FInstance = nullptr;

// Installs a service for a scope and puts the one before back at its end.
template <class T>
class TServiceScope {
 public:
  explicit TServiceScope(T& instance) : FPrevious(TService<T>::Install(&instance)) {}
  ~TServiceScope() { TService<T>::Install(FPrevious); }
  TServiceScope(const TServiceScope&) = delete;
  TServiceScope& operator=(const TServiceScope&) = delete;

 private:
  T* FPrevious;
};

}  // namespace margindesk
