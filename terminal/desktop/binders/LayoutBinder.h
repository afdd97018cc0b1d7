#pragma once

#include <QWidget>
#include <unordered_map>
#include <vector>

#include "controls/LayoutControl.h"

namespace margindesk {

// Places the controls of a form as its layout says and follows the layout's changes: places that come and go,
// captions, directions. The layout's pixels are those at 100 % scale. The widgets of the controls are made
// once and move.
class TLayoutBinder : public QObject {
 public:
  TLayoutBinder(TLayoutControl& layout, QWidget& widget);
  ~TLayoutBinder() override;

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(TBaseLayoutItem& item);
  void LayoutUpdated();  // later, once for a burst
  void ForgetSizes();
  void Rebuild();
  QWidget* MakePlace(TBaseLayoutItem& item, QWidget* parent);
  QWidget* MakeGroup(TLayoutGroup& group, QWidget* parent);
  QWidget* MakeItem(TLayoutItem& item, QWidget* parent);
  void NameWidget(QWidget& widget, const TLayoutItem& item) const;  // for a screen reader
  QWidget* FindWidget(TControl& control);

  TLayoutControl& FLayout;
  QWidget& FWidget;
  QWidget* FRoot = nullptr;
  bool FPending = false;
  bool FRescaled = false;
  std::vector<TBaseLayoutItem*> FWatched;
  std::unordered_map<TControl*, QWidget*> FWidgets;
};

}  // namespace margindesk
