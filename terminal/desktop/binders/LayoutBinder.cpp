#include "terminal/desktop/binders/LayoutBinder.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <utility>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Skin.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

namespace {

constexpr auto kRebuild = static_cast<QEvent::Type>(QEvent::User + 2);
constexpr int kSpacing = 6;  // pixels between places

struct TControlName {
  std::string_view FControl;
  const char* FText;
};

constexpr TControlName kNames[] = {
    {"AccountInfoTree", "Desktop_NameFigures"},
    {"PositionGrid", "Desktop_NamePositions"},
    {"OrderGrid", "Desktop_NameOrders"},
};

// Whether the place takes what is left over along its group.
bool Grows(const TBaseLayoutItem& item, TLayoutDirection direction) {
  return direction == TLayoutDirection::Vertical ? item.GetAlignVert() == TLayoutAlignVert::Client
                                                 : item.GetAlignHorz() == TLayoutAlignHorz::Client;
}

// Whether the place stands at the far end of its group.
bool StandsAtEnd(const TBaseLayoutItem& item, TLayoutDirection direction) {
  return direction == TLayoutDirection::Vertical ? item.GetAlignVert() == TLayoutAlignVert::Bottom
                                                 : item.GetAlignHorz() == TLayoutAlignHorz::Right;
}

}  // namespace

TLayoutBinder::TLayoutBinder(TLayoutControl& layout, QWidget& widget)
    : QObject(&widget), FLayout(layout), FWidget(widget) {
  auto* box = new QVBoxLayout(&widget);
  box->setContentsMargins(0, 0, 0, 0);
  widget.installEventFilter(this);
  Rebuild();
}

TLayoutBinder::~TLayoutBinder() {
  for (TBaseLayoutItem* item : FWatched) item->SetOnUpdate({});
}

// A change of the scale comes with one of the font.
bool TLayoutBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    FRescaled = true;
    LayoutUpdated();
  }
  return QObject::eventFilter(watched, event);
}

void TLayoutBinder::LayoutUpdated() {
  if (std::exchange(FPending, true)) return;
  QCoreApplication::postEvent(this, new QEvent(kRebuild));
}

bool TLayoutBinder::event(QEvent* event) {
  if (event->type() != kRebuild) return QObject::event(event);
  FPending = false;
  if (std::exchange(FRescaled, false)) ForgetSizes();
  Rebuild();
  return true;
}

// A drop-down list keeps its least size over a change of the font, but not over one of the style.
void TLayoutBinder::ForgetSizes() {
  for (const auto& [control, widget] : FWidgets) {
    if (qobject_cast<QComboBox*>(widget) == nullptr) continue;
    QEvent changed(QEvent::StyleChange);
    QCoreApplication::sendEvent(widget, &changed);
  }
}

void TLayoutBinder::Watch(TBaseLayoutItem& item) {
  item.SetOnUpdate(MakeEvent<&TLayoutBinder::LayoutUpdated>(this));
  FWatched.push_back(&item);
}

void TLayoutBinder::Rebuild() {
  const auto* focused = FWidget.focusWidget();
  for (TBaseLayoutItem* item : FWatched) item->SetOnUpdate({});
  FWatched.clear();
  // The controls' widgets outlive the places in which they stood.
  for (const auto& [control, widget] : FWidgets) {
    widget->setParent(&FWidget);
    widget->hide();
  }
  delete FRoot;
  FRoot = nullptr;
  if (TLayoutGroup* root = FLayout.GetRoot()) {
    FRoot = MakeGroup(*root, &FWidget);
    FWidget.layout()->addWidget(FRoot);
    FRoot->show();
  }
  for (const auto& [control, widget] : FWidgets) {
    if (widget == focused) widget->setFocus();
  }
}

QWidget* TLayoutBinder::MakePlace(TBaseLayoutItem& item, QWidget* parent) {
  if (auto* group = dynamic_cast<TLayoutGroup*>(&item)) return MakeGroup(*group, parent);
  return MakeItem(static_cast<TLayoutItem&>(item), parent);
}

QWidget* TLayoutBinder::MakeGroup(TLayoutGroup& group, QWidget* parent) {
  Watch(group);
  QWidget* widget = group.GetCaption().empty()
                        ? new QWidget(parent)
                        : static_cast<QWidget*>(new QGroupBox(ToQt(group.GetCaption()), parent));
  const bool vertical = group.GetDirection() == TLayoutDirection::Vertical;
  auto* box = new QBoxLayout(vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, widget);
  if (group.GetCaption().empty()) box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(Scaled(kSpacing));
  bool grown = false;
  for (TBaseLayoutItem* item : group.GetItems()) {
    QWidget* place = MakePlace(*item, widget);
    place->setVisible(item->GetVisible());
    const bool grows = Grows(*item, group.GetDirection()) && item->GetWidth() == 0;
    if (!grown && StandsAtEnd(*item, group.GetDirection()) && item->GetVisible()) {
      box->addStretch(1);
      grown = true;
    }
    grown = grown || (grows && item->GetVisible());
    box->addWidget(place, grows ? 1 : 0);
  }
  if (!grown && vertical) box->addStretch(1);
  if (group.GetWidth() > 0) {
    // As wide as the layout says, unless that would cut a control.
    widget->setFixedWidth(std::max(Scaled(group.GetWidth()), widget->minimumSizeHint().width()));
  }
  return widget;
}

QWidget* TLayoutBinder::MakeItem(TLayoutItem& item, QWidget* parent) {
  Watch(item);
  auto* place = new QWidget(parent);
  auto* box = new QHBoxLayout(place);
  box->setContentsMargins(0, 0, 0, 0);
  QLabel* label = nullptr;
  if (!item.GetCaption().empty()) {
    label = new QLabel(ToQt(item.GetCaption()), place);
    box->addWidget(label);
  }
  QWidget* widget = item.GetControl() == nullptr ? nullptr : FindWidget(*item.GetControl());
  if (widget != nullptr) {
    widget->setParent(place);
    widget->setVisible(item.GetControl()->GetVisible());
    box->addWidget(widget, 1);
    if (label != nullptr) label->setBuddy(widget);
    NameWidget(*widget, item);
  }
  return place;
}

// A control is called what stands beside it: its place's caption, else its own, else that of the control
// before it. The big ones have nothing there.
void TLayoutBinder::NameWidget(QWidget& widget, const TLayoutItem& item) const {
  const auto* big = std::ranges::find(kNames, item.GetControl()->GetComponentName(), &TControlName::FControl);
  if (big != std::end(kNames)) return widget.setAccessibleName(HostText(big->FText));
  std::string name = item.GetCaption().empty() ? item.GetControl()->GetCaption() : item.GetCaption();
  for (const TBaseLayoutItem* other : item.GetParent()->GetItems()) {
    if (!name.empty() || other == &item) break;
    const auto* before = dynamic_cast<const TLayoutItem*>(other);
    if (before != nullptr && before->GetControl() != nullptr) name = before->GetControl()->GetCaption();
  }
  if (!name.empty()) widget.setAccessibleName(ToQt(name));
}

QWidget* TLayoutBinder::FindWidget(TControl& control) {
  const auto found = FWidgets.find(&control);
  if (found != FWidgets.end()) return found->second;
  QWidget* widget = CreateControlWidget(control, &FWidget);
  if (widget != nullptr) FWidgets.emplace(&control, widget);
  return widget;
}

}  // namespace margindesk
