#pragma once

#include <QScrollArea>

namespace margindesk {

// Holds a form. It asks for the room in which the form is whole, but for no more than half of the screen:
// in less than that the form scrolls, so that nothing of it is out of reach.
class TFormScroll : public QScrollArea {
 public:
  TFormScroll(QWidget* form, QWidget* parent);  // takes the form over

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace margindesk
