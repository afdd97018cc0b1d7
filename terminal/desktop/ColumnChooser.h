#pragma once

#include <QDialog>
#include <QListWidget>
#include <optional>

#include "host/services/ColumnDialog.h"

namespace margindesk {

// Which columns a view shows and in which order: rows are dragged or moved with Alt and the arrow keys, and
// ticked with the space bar. The reserved column stays ticked.
class TColumnChooser : public QDialog {
 public:
  TColumnChooser(const TCustomColumnRecord& record, QWidget* parent);

  TColumnAnswer GetAnswer() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Move(int steps);

  QListWidget* FList;
};

// Asks the person; none when he cancelled.
std::optional<TColumnAnswer> AskForColumns(const TCustomColumnRecord& record, QWidget* parent);

}  // namespace margindesk
