#include "terminal/desktop/Dialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

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

}  // namespace

void TMessageWindows::ShowMessage(std::string_view text) {
  auto* box = new QMessageBox(QMessageBox::Information, QStringLiteral("MarginDesk"), ToQt(text),
                              QMessageBox::NoButton, QApplication::activeWindow());
  box->addButton(HostText("Desktop_OK"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->open();
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
