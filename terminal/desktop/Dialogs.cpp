#include "terminal/desktop/Dialogs.h"

#include <QApplication>
#include <QMainWindow>
#include <QPushButton>
#include <algorithm>

#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "terminal/desktop/BatchWindow.h"
#include "terminal/desktop/ColumnChooser.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

void ChooseColumns(void* data) {
  const auto* record = static_cast<const TCustomColumnRecord*>(data);
  if (record == nullptr) return;
  const auto answer = AskForColumns(*record, QApplication::activeWindow());
  if (!answer) return;
  TCustomColumnResult result = MakeColumnResult(*record, *answer);
  record->FCallback(nullptr, &result);
}

// The window over which a message is shown; null while there is none.
QWidget* FindWindow() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto main = std::ranges::find_if(
      windows, [](const QWidget* window) { return qobject_cast<const QMainWindow*>(window) != nullptr; });
  return main == windows.end() ? nullptr : *main;
}

}  // namespace

void TMessageWindows::ShowMessage(std::string_view text) {
  if (FMessage != nullptr) {
    const QStringList lines = FMessage->text().split(u'\n');
    if (!lines.contains(ToQt(text))) FMessage->setText(FMessage->text() + u'\n' + ToQt(text));
    return;
  }
  FMessage = new QMessageBox(QMessageBox::Information, QStringLiteral("MarginDesk"), ToQt(text),
                             QMessageBox::NoButton, FindWindow());
  FMessage->addButton(HostText("Desktop_OK"), QMessageBox::AcceptRole);
  FMessage->setAttribute(Qt::WA_DeleteOnClose);
  FMessage->setTextFormat(Qt::PlainText);
  QObject::connect(FMessage, &QDialog::finished, FMessage, [this] { FMessage.clear(); });
  // What is said while the terminal starts is shown over its window.
  QMetaObject::invokeMethod(FMessage, &QDialog::open, Qt::QueuedConnection);
}

std::int32_t TMessageWindows::ShowConfirmation(std::string_view text) {
  QMessageBox box(QMessageBox::Question, QStringLiteral("MarginDesk"), ToQt(text), QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  QPushButton* yes = box.addButton(HostText("Desktop_Yes"), QMessageBox::YesRole);
  QPushButton* no = box.addButton(HostText("Desktop_Cancel"), QMessageBox::RejectRole);
  box.setDefaultButton(no);
  box.setEscapeButton(no);
  yes->setAutoDefault(false);  // the Enter key is no yes, wherever the focus is
  box.exec();
  return box.clickedButton() == yes ? kConfirmationYes : 0;
}

TDialogs::TDialogs(TReferenceHost& host) : FHost(host) {
  FHost.Channels().SetResponder(kMessageCustomColumns, &ChooseColumns);
  FHost.Confirmation().SetFront(
      [](const TBatchQuestion& question) { return AskForBatch(question, QApplication::activeWindow()); });
}

TDialogs::~TDialogs() {
  FHost.Confirmation().SetFront({});
  FHost.Channels().SetResponder(kMessageCustomColumns, {});
}

}  // namespace margindesk
