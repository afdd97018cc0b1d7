#pragma once

#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <optional>

#include "host/services/ColumnDialog.h"

namespace margindesk {

// Which columns a view shows and in which order: rows are dragged, or moved with two buttons or with Alt and
// the arrow keys, and ticked with the space bar. The reserved column has a lock in place of its box.
class TColumnChooser : public QDialog {
 public:
  TColumnChooser(const TCustomColumnRecord& record, QWidget* parent);

  TColumnAnswer GetAnswer() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPushButton* MakeMoveButton(std::string_view text, int steps);
  void Move(int steps);
  void EnableMoves();

  QListWidget* FList;
  QPushButton* FUp;
  QPushButton* FDown;
};

// Asks the person; none when he cancelled.
std::optional<TColumnAnswer> AskForColumns(const TCustomColumnRecord& record, QWidget* parent);

}  // namespace margindesk
