#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace margindesk {

class TOpenViews;

// One entry of the menu that the views of the packages make up: it opens a view, or holds further entries.
struct TMenuEntry {
  std::int32_t FID = 0;
  std::int32_t FIndex = 0;  // the place in its group
  std::int32_t FGroup = 0;  // a front draws a line between groups
  std::string FCaption;     // in the language of when the menu was built
  std::string FClass;       // of the view that it opens; empty where it opens none
  std::vector<TMenuEntry> FItems;
};

// Builds the menu of the plug-in objects that are visible now. Entries of one ID in one place are one entry:
// the first plug-in object registered says how it looks and what it opens. Entries stand by group, then by
// index, then in the order of registration. Whoever shows the menu builds it anew when the language or the
// packages change.
std::vector<TMenuEntry> BuildMenu(const TOpenViews& views);

}  // namespace margindesk
