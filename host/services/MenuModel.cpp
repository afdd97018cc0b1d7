#include "host/services/MenuModel.h"

#include <algorithm>
#include <tuple>

#include "host/services/OpenViews.h"

namespace margindesk {

namespace {

// The entry of a plug-in object on one level, which is added where there is none of that ID.
TMenuEntry& TakeEntry(std::vector<TMenuEntry>& entries, TIBaseView& plugin, std::int32_t level) {
  const std::int32_t id = plugin.GetMenuID(level);
  const auto known = std::ranges::find(entries, id, &TMenuEntry::FID);
  if (known != entries.end()) return *known;
  return entries.emplace_back(TMenuEntry{
      id, plugin.GetMenuIndex(level), plugin.GetMenuGroupIndex(level), plugin.GetMenuCaption(level), {}, {}});
}

void SortEntries(std::vector<TMenuEntry>& entries) {
  std::ranges::stable_sort(entries, {},
                           [](const TMenuEntry& entry) { return std::tuple(entry.FGroup, entry.FIndex); });
  for (TMenuEntry& entry : entries) SortEntries(entry.FItems);
}

}  // namespace

std::vector<TMenuEntry> BuildMenu(const TOpenViews& views) {
  std::vector<TMenuEntry> menu;
  for (const std::string& className : views.GetClasses()) {
    TIBaseView& plugin = *views.FindClass(className);
    if (!plugin.GetIsVisible()) continue;
    std::vector<TMenuEntry>* entries = &menu;
    TMenuEntry* entry = nullptr;
    for (std::int32_t level = 0; level < plugin.GetMenuLevel(); ++level) {
      entry = &TakeEntry(*entries, plugin, level);
      entries = &entry->FItems;
    }
    if (entry != nullptr && entry->FClass.empty()) entry->FClass = className;
  }
  SortEntries(menu);
  return menu;
}

}  // namespace margindesk
