#pragma once

#include <QDialog>
#include <functional>

#include "host/services/PreferenceDialog.h"
#include "terminal/desktop/HostPage.h"

namespace margindesk {

// The preference dialog: the host's own page, a tab for every page of the packages, and the buttons.
class TPreferenceWindow : public QDialog {
 public:
  // Calls `applied` with the language that is wanted when the pages have been saved.
  TPreferenceWindow(TPreferenceDialog& dialog, TConfigManager& config,
                    std::function<void(std::int32_t language)> applied, QWidget* parent);
  void reject() override;

 private:
  bool Apply();

  TPreferenceDialog& FDialog;
  TConfigManager& FConfig;
  THostPage* FHostPage;
  const std::function<void(std::int32_t language)> FApplied;
};

}  // namespace margindesk
