#include "terminal/desktop/BatchWindow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

QTableWidget* MakeTable(const TBatchQuestion& question, QWidget* parent) {
  auto* table = new QTableWidget(static_cast<int>(question.FRows.size()),
                                 static_cast<int>(question.FColumns.size()), parent);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->verticalHeader()->hide();
  table->setAlternatingRowColors(true);
  table->setShowGrid(false);
  for (int column = 0; column < table->columnCount(); ++column) {
    const TBatchColumn& facts = question.FColumns[static_cast<std::size_t>(column)];
    const auto make = [&facts](const std::string& text) {
      auto* item = new QTableWidgetItem(ToQt(text));
      item->setTextAlignment(Qt::AlignVCenter | (facts.FNumeric ? Qt::AlignRight : Qt::AlignLeft));
      return item;
    };
    table->setHorizontalHeaderItem(column, make(facts.FCaption));
    for (int row = 0; row < table->rowCount(); ++row) {
      const auto& texts = question.FRows[static_cast<std::size_t>(row)];
      table->setItem(row, column, make(texts[static_cast<std::size_t>(column)]));
    }
  }
  table->resizeColumnsToContents();
  table->horizontalHeader()->setStretchLastSection(true);
  return table;
}

}  // namespace

bool AskForBatch(const TBatchQuestion& question, QWidget* parent) {
  QDialog dialog(parent);
  dialog.setWindowTitle(ToQt(question.FCaption));
  auto* box = new QVBoxLayout(&dialog);
  box->addWidget(new QLabel(ToQt(question.FQuestion), &dialog));
  box->addWidget(MakeTable(question, &dialog), 1);
  for (const TBatchTotal& total : question.FTotals) box->addWidget(new QLabel(ToQt(total.FText), &dialog));
  auto* buttons = new QDialogButtonBox(&dialog);
  QPushButton* send = buttons->addButton(HostText("Desktop_Send"), QDialogButtonBox::AcceptRole);
  QPushButton* cancel = buttons->addButton(HostText("Desktop_Cancel"), QDialogButtonBox::RejectRole);
  send->setAutoDefault(false);
  cancel->setDefault(true);
  QObject::connect(send, &QPushButton::clicked, &dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  box->addWidget(buttons);
  dialog.resize(720, 420);
  cancel->setFocus();
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace margindesk
