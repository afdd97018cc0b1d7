#pragma once

#include <QObject>
#include <QWidget>

#include "controls/Control.h"

namespace margindesk {

// Joins one control model to the widget that shows it: the widget follows the model's updates, and what the
// person does reaches the model once. What the program writes into the widget never comes back as if the
// person had done it. The binder belongs to its widget; the control must outlive it, or be let go first.
class TBinder : public QObject {
 public:
  TBinder(TControl& control, QWidget& widget) : QObject(&widget), FControl(control), FWidget(widget) {
    control.SetOnUpdate(MakeEvent<&TBinder::ControlUpdated>(this));
  }
  ~TBinder() override { FControl.SetOnUpdate({}); }

 protected:
  // Writes the model into the widget.
  virtual void Refresh() = 0;

  // Whether the widget is being written to, so that its signals are no person's.
  bool IsRefreshing() const noexcept { return FRefreshing; }

  // To be called by the constructor of a derived binder when it is complete.
  void Show() { ControlUpdated(); }

  // What every kind has: whether it can be used, and its hint. Its layout names it for a screen reader.
  void RefreshCommon();

  QWidget& Widget() const noexcept { return FWidget; }

 private:
  void ControlUpdated() {
    if (FRefreshing) return;
    FRefreshing = true;
    RefreshCommon();
    Refresh();
    FRefreshing = false;
  }

  TControl& FControl;
  QWidget& FWidget;
  bool FRefreshing = false;
};

}  // namespace margindesk
