#pragma once

#include <QDialog>

#include "host/services/PreferenceDialog.h"

namespace margindesk {

// The preference dialog: a tab for every page, and its buttons.
class TPreferenceWindow : public QDialog {
 public:
  TPreferenceWindow(TPreferenceDialog& dialog, QWidget* parent);
  void reject() override;

 private:
  bool Apply();

  TPreferenceDialog& FDialog;
};

}  // namespace margindesk
