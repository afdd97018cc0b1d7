#pragma once

#include <QFrame>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

#include "terminal/desktop/Skin.h"

namespace margindesk {

// What stands in a cell while it is edited: a line, and at its right the buttons of its kind.
class TCellField : public QFrame {
 public:
  enum class TKind { Text, Popup, List, Spin };

  TCellField(QWidget* parent, TKind kind);

  TKind GetKind() const noexcept { return FKind; }
  QLineEdit& Line() noexcept { return *FLine; }
  // Null where the kind has none.
  QToolButton* Up() noexcept { return FUp; }
  QToolButton* Down() noexcept { return FDown; }
  QToolButton* Drop() noexcept { return FDrop; }

  // A frame in the colour of what is wrong.
  void SetRefused(bool refused);

 private:
  QToolButton* MakeButton(bool up, const QString& name);

  const TKind FKind;
  QLineEdit* FLine;
  QToolButton* FUp = nullptr;
  QToolButton* FDown = nullptr;
  QToolButton* FDrop = nullptr;
};

// A small filled arrow in the colour of the pen.
void PaintArrow(QPainter& painter, QPointF center, bool up);

// Pixels that the buttons of a cell take at its right edge.
inline int GetCellButtonWidth() { return Scaled(18); }

}  // namespace margindesk
