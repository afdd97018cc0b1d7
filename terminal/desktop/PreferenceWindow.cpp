#include "terminal/desktop/PreferenceWindow.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

TPreferenceWindow::TPreferenceWindow(TPreferenceDialog& dialog, QWidget* parent)
    : QDialog(parent), FDialog(dialog) {
  setWindowTitle(HostText("Desktop_Preferences"));
  auto* tabs = new QTabWidget(this);
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
  add(TBox::Reset, "Desktop_Reset", [this] { FDialog.Reset(); });
  add(TBox::RestoreDefaults, "Desktop_Factory", [this] { FDialog.ResetFactory(); });
  auto* box = new QVBoxLayout(this);
  box->addWidget(tabs);
  box->addWidget(buttons);
}

bool TPreferenceWindow::Apply() {
  if (FDialog.Apply()) return true;
  QMessageBox::warning(this, windowTitle(), HostText("Desktop_NotSaved"));
  return false;
}

void TPreferenceWindow::reject() {
  FDialog.Cancel();
  QDialog::reject();
}

}  // namespace margindesk
