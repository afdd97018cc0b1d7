#pragma once

#include <string>
#include <vector>

namespace margindesk {

// The base of everything that may have an owner. An owner deletes the components it still owns when it goes,
// last made first; a component that goes earlier leaves its owner's list by itself. A component without an
// owner belongs to whoever made it.
class TComponent {
 public:
  explicit TComponent(TComponent* owner);
  virtual ~TComponent();
  TComponent(const TComponent&) = delete;
  TComponent& operator=(const TComponent&) = delete;

  TComponent* GetOwner() const noexcept { return FOwner; }
  const std::vector<TComponent*>& GetComponents() const noexcept { return FComponents; }

  // The name under which a form's component is known ("edtAccount"); empty for none.
  const std::string& GetComponentName() const noexcept { return FComponentName; }
  void SetComponentName(std::string name) { FComponentName = std::move(name); }

  // The owned component of that name (letter case counts), or null.
  TComponent* FindComponent(const std::string& name) const noexcept;

 private:
  TComponent* FOwner;
  std::vector<TComponent*> FComponents;
  std::string FComponentName;
};

}  // namespace margindesk
