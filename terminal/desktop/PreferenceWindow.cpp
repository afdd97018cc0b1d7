#include "terminal/desktop/PreferenceWindow.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

TPreferenceWindow::TPreferenceWindow(TPreferenceDialog& dialog, TConfigManager& config,
                                     std::function<void(std::int32_t language)> applied, QWidget* parent)
    : QDialog(parent), FDialog(dialog), FConfig(config), FApplied(std::move(applied)) {
  setWindowTitle(HostText("Desktop_Preferences"));
  auto* tabs = new QTabWidget(this);
  FHostPage = new THostPage(FConfig, tabs);
  tabs->addTab(FHostPage, HostText("Desktop_General"));
  for (const TPreferencePage& page : FDialog.GetPages()) {
    QWidget* form = CreateFormWidget(*page.FFrame, tabs);
    form->setMinimumSize(page.FWidth, page.FHeight);
    tabs->addTab(form, ToQt(page.FName));
  }
  auto* buttons = new QDialogButtonBox(this);
  using TBox = QDialogButtonBox;
  const auto add = [&](TBox::StandardButton which, const char* key, auto act) {
    QPushButton* button = buttons->addButton(which);
    button->setText(HostText(key));
    QObject::connect(button, &QPushButton::clicked, this, act);
  };
  add(TBox::Ok, "Desktop_OK", [this] {
    if (Apply()) accept();
  });
  add(TBox::Cancel, "Desktop_Cancel", [this] { reject(); });
  add(TBox::Apply, "Desktop_Apply", [this] { Apply(); });
  add(TBox::Reset, "Desktop_Reset", [this] {
    FHostPage->Load();
    FDialog.Reset();
  });
  add(TBox::RestoreDefaults, "Desktop_Factory", [this] {
    FHostPage->LoadFactory();
    FDialog.ResetFactory();
  });
  auto* box = new QVBoxLayout(this);
  box->addWidget(tabs);
  box->addWidget(buttons);
}

bool TPreferenceWindow::Apply() {
  bool saved = false;
  {
    const TConfigHold hold(FConfig);  // a page that heard of the others would lose what it has to save
    saved = FDialog.Apply();
    FHostPage->Save();
  }
  FApplied(FHostPage->GetLanguage());
  FHostPage->Load();
  if (saved) return true;
  QMessageBox::warning(this, windowTitle(), HostText("Desktop_NotSaved"));
  return false;
}

void TPreferenceWindow::reject() {
  FDialog.Cancel();
  QDialog::reject();
}

}  // namespace margindesk
