#include "host/loader/Packages.h"

#include <algorithm>
#include <system_error>

#include "host/services/Fault.h"
#include "host/services/ReferenceHost.h"

namespace margindesk {

void TPluginClasses::RegisterClass(std::string_view className, TPluginMaker maker) {
  UnregisterClass(className);
  FClasses.push_back({std::string(className), maker});
}

void TPluginClasses::UnregisterClass(std::string_view className) {
  std::erase_if(FClasses, [className](const TClass& known) { return known.FName == className; });
}

TPackages::TPackages(TReferenceHost& host) : FHost(host), FScope(FClasses) {}

TPackages::~TPackages() { UnloadAll(); }

std::string TPackages::Load(const std::filesystem::path& file) {
  std::error_code error;
  for (const auto& loaded : FPackages) {
    if (std::filesystem::equivalent(loaded->GetFile(), file, error)) {
      return file.string().append(": it is loaded already");
    }
  }
  auto package = std::make_unique<TPackage>(file);
  const std::size_t firstClass = FClasses.GetClasses().size();
  const std::size_t firstPlugin = FPlugins.size();
  if (!package->Load()) return package->GetError();
  std::string reason;
  if (const auto thrown = CatchFault([&] { reason = MakePlugins(firstClass); })) {
    reason = MakeThrownReason(*thrown);
  }
  if (!reason.empty()) {
    DropPlugins(firstPlugin);
    package->Unload();
    return file.string().append(": ").append(reason);
  }
  FPackages.push_back(std::move(package));
  return {};
}

std::string TPackages::MakePlugins(std::size_t firstClass) {
  for (std::size_t i = firstClass; i < FClasses.GetClasses().size(); ++i) {
    const TPluginClasses::TClass& made = FClasses.GetClasses()[i];
    TPlugin& plugin = FPlugins.emplace_back(TPlugin{made.FName, nullptr});
    plugin.FObject.reset(made.FMaker(nullptr));
    if (plugin.FObject == nullptr) return "class " + made.FName + " makes no object";
    FHost.Views().AddClass(plugin.FClass, *plugin.FObject);
  }
  return {};
}

void TPackages::DropPlugins(std::size_t firstPlugin) {
  while (FPlugins.size() > firstPlugin) {
    FHost.Views().RemoveClass(FPlugins.back().FClass);
    FPlugins.pop_back();
  }
}

void TPackages::UnloadAll() {
  FHost.CloseViews();
  DropPlugins(0);
  while (!FPackages.empty()) FPackages.pop_back();
}

}  // namespace margindesk
