#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <functional>
#include <utility>
#include <vector>

#include "host/services/PreferenceDialog.h"
#include "terminal/desktop/HostPage.h"

namespace margindesk {

// The preference dialog: the host's own page, a tab for every page of the packages, a sample of each kind of
// figure in the decimals that the pages show at the moment, and the buttons.
class TPreferenceWindow : public QDialog {
 public:
  // Calls `applied` with the language that is wanted when the pages have been saved.
  TPreferenceWindow(TPreferenceDialog& dialog, TConfigManager& config,
                    std::function<void(std::int32_t language)> applied, QWidget* parent);
  void reject() override;

 private:
  struct TSample {
    QLabel* FCaption;
    QLabel* FValue;
  };

  void FollowPage(QWidget& form);  // what the person sets there is seen in the samples
  void AddButtons();
  void UpdateTexts();  // in the current language
  void UpdateSamples();
  bool Apply();

  TPreferenceDialog& FDialog;
  TConfigManager& FConfig;
  QTabWidget* const FTabs;
  THostPage* const FHostPage;
  QGroupBox* const FDecimals;
  std::vector<TSample> FSamples;
  std::vector<std::pair<QPushButton*, const char*>> FButtons;  // with their texts' keys
  QTimer FSampleTimer;
  const std::function<void(std::int32_t language)> FApplied;
};

}  // namespace margindesk
