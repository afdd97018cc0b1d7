#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/loader/Package.h"
#include "model/contract/Baseview.h"
#include "model/contract/ClassRegistry.h"

namespace margindesk {

class TReferenceHost;

// The plug-in classes of the packages, in the order of their registration.
class TPluginClasses final : public TClassRegistry {
 public:
  struct TClass {
    std::string FName;
    TPluginMaker FMaker;
  };

  void RegisterClass(std::string_view className, TPluginMaker maker) override;
  void UnregisterClass(std::string_view className) override;

  const std::vector<TClass>& GetClasses() const noexcept { return FClasses; }

 private:
  std::vector<TClass> FClasses;
};

// The packages of a host, and one plug-in object of each class that they register, which its open views then
// know by the class's name. It goes before the host does.
//
// Unloading undoes it in the reverse order: the views, the plug-in objects, the units, the library.
class TPackages {
 public:
  explicit TPackages(TReferenceHost& host);
  ~TPackages();
  TPackages(const TPackages&) = delete;
  TPackages& operator=(const TPackages&) = delete;

  // Loads a package and makes its plug-in objects. The answer is "" or why it was refused ("file: reason"); a
  // plug-in object that cannot be made is such a reason, too, and nothing of the package is then left.
  std::string Load(const std::filesystem::path& file);
  // Saves the workspace and closes every view first.
  void UnloadAll();

  const std::vector<std::unique_ptr<TPackage>>& GetPackages() const noexcept { return FPackages; }

 private:
  struct TPlugin {
    std::string FClass;
    std::unique_ptr<TIBaseView> FObject;
  };

  std::string MakePlugins(std::size_t firstClass);  // "" or why not
  void DropPlugins(std::size_t firstPlugin);

  TReferenceHost& FHost;
  TPluginClasses FClasses;
  TServiceScope<TClassRegistry> FScope;
  std::vector<std::unique_ptr<TPackage>> FPackages;  // that are loaded
  std::vector<TPlugin> FPlugins;
};

}  // namespace margindesk
