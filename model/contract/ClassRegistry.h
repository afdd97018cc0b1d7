#pragma once

#include <string_view>

#include "model/contract/Service.h"

namespace margindesk {

class TComponent;
class TIBaseView;

// Makes a plug-in object; it belongs to `owner`, or to the caller where that is null.
using TPluginMaker = TIBaseView* (*)(TComponent* owner);

// The plug-in classes that packages offer, by name. A package registers its classes when it is initialised
// and takes them out when it is finalised; by then the host has freed the objects that it made of them.
class TClassRegistry : public TService<TClassRegistry> {
 public:
  virtual void RegisterClass(std::string_view className, TPluginMaker maker) = 0;  // in place of one before
  virtual void UnregisterClass(std::string_view className) = 0;                    // an unknown one: nothing
};

extern template class TService<TClassRegistry>;

}  // namespace margindesk
