#include "model/contract/Component.h"

#include <algorithm>

namespace margindesk {

TComponent::TComponent(TComponent* owner) : FOwner(owner) {
  if (owner != nullptr) owner->FComponents.push_back(this);
}

TComponent::~TComponent() {
  while (!FComponents.empty()) delete FComponents.back();  // it leaves the list by itself
  if (FOwner == nullptr) return;
  // From the end: what goes is mostly what was made last.
  auto& siblings = FOwner->FComponents;
  siblings.erase(std::prev(std::find(siblings.rbegin(), siblings.rend(), this).base()));
}

TComponent* TComponent::FindComponent(const std::string& name) const noexcept {
  const auto found = std::find_if(FComponents.begin(), FComponents.end(), [&](const TComponent* component) {
    return component->FComponentName == name;
  });
  return found == FComponents.end() ? nullptr : *found;
}

}  // namespace margindesk
