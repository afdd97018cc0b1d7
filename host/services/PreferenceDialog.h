#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/contract/Baseview.h"

namespace margindesk {

class TConfigManager;
class TCustomConfigManager;
class TOpenViews;

// A page of the dialog. The frame belongs to its plug-in object and goes with it.
struct TPreferencePage {
  std::string FClass;  // of the plug-in object that offers the page ("TIAccountInfo")
  std::string FName;   // in the language in which the page was listed
  std::int32_t FViewID = 0;
  std::int32_t FWidth = 0;  // pixels
  std::int32_t FHeight = 0;
  TViewHandle FHandle = 0;
  TFrame* FFrame = nullptr;
};

// The preference dialog of a front, without a display: the pages of all plug-in objects, and what its buttons
// do. The operations go to the pages that have been listed; a page whose plug-in object has gone since is
// passed over. They answer whether every page carried them out, and a page that did not stops no other.
class TPreferenceDialog {
 public:
  TPreferenceDialog(const TOpenViews& views, TConfigManager& config);  // which must outlive it
  TPreferenceDialog(const TPreferenceDialog&) = delete;
  TPreferenceDialog& operator=(const TPreferenceDialog&) = delete;

  // Lists the pages anew, by class and handle; a plug-in object makes its page when it is first asked.
  const std::vector<TPreferencePage>& GetPages();

  // Saves every page. What they write is announced once, at the end: a page that heard of it earlier would
  // load itself again and lose what is still to be saved.
  bool Apply();
  // Saves every page into `config` instead: what would be stored, while the person still chooses.
  void Preview(TCustomConfigManager& config) const;
  bool Reset();  // every page shows what is stored
  bool ResetFactory();
  bool Cancel() { return Reset(); }      // what has not been applied is gone when the dialog is shown again
  bool SetLanguage(std::int32_t index);  // the language itself is the language manager's

 private:
  template <class TOperation>
  bool ForEachPage(TOperation operation) const;

  const TOpenViews& FViews;
  TConfigManager& FConfig;
  std::vector<TPreferencePage> FPages;
};

}  // namespace margindesk
