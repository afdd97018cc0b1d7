#include "terminal/desktop/ViewDock.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>

#include "terminal/desktop/Glyphs.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Picture.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

namespace {

constexpr int kMargin = 6;  // pixels around the form

QWidget* MakeForm(TFrame& frame, QWidget* parent) {
  QWidget* form = CreateFormWidget(frame, parent);
  form->setObjectName(QStringLiteral("ViewForm"));
  form->layout()->setContentsMargins(kMargin, 0, kMargin, kMargin);
  return form;
}

}  // namespace

TViewDock::TViewDock(TOpenViews& views, const TOpenView& view, QWidget* parent, TClose closeView)
    : QDockWidget(parent),
      FViews(views),
      FHandle(view.FHandle),
      FClose(std::move(closeView)),
      FSimulation(*view.FFrame, *MakeForm(*view.FFrame, this)) {
  setObjectName(QStringLiteral("view%1").arg(FHandle));
  setAllowedAreas(Qt::AllDockWidgetAreas);
  setWidget(findChild<QWidget*>(QStringLiteral("ViewForm")));

  FTitle = new QWidget(this);
  auto* row = new QHBoxLayout(FTitle);
  row->setContentsMargins(kMargin, 3, 3, 3);
  FCaption = new QLabel(FTitle);
  QFont bold = FCaption->font();
  bold.setBold(true);
  FCaption->setFont(bold);
  row->addWidget(FCaption, 1);
  FButtons = new QWidget(FTitle);
  row->addWidget(FButtons);
  FCloseButton = new QToolButton(FTitle);
  FCloseButton->setAutoRaise(true);
  QObject::connect(FCloseButton, &QToolButton::clicked, this, [this] { close(); });
  row->addWidget(FCloseButton);
  setTitleBarWidget(FTitle);
  Update();
}

void TViewDock::Update() {
  const TOpenView* view = FViews.Find(FHandle);
  if (view == nullptr) return;
  setWindowTitle(ToQt(view->FCaption));
  setAccessibleName(windowTitle());
  FCaption->setText(windowTitle());
  FCloseButton->setIcon(MakeGlyph(TGlyph::Cross, *this));
  FCloseButton->setToolTip(HostText("Desktop_Close"));
  FCloseButton->setAccessibleName(FCloseButton->toolTip());
  UpdateButtons();
}

void TViewDock::UpdateButtons() {
  TIBaseView* plugin = FViews.FindPlugin(FHandle);
  std::vector<TCaptionButton*> buttons;
  const TImageList* images = nullptr;
  plugin->GetViewCaptionButtons(FHandle, buttons);
  plugin->GetViewCaptionButtonImageList(FHandle, images);
  delete FButtons->layout();
  qDeleteAll(FButtons->findChildren<QToolButton*>());
  auto* row = new QHBoxLayout(FButtons);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const TCaptionButton& model = *buttons[i];
    if (!model.FVisible) continue;
    auto* button = new QToolButton(FButtons);
    button->setAutoRaise(true);
    button->setCheckable(model.FDown != 0);
    button->setChecked(model.FDown != 0);
    const TBitmap* image = images == nullptr ? nullptr : images->GetImage(model.FImageIndex);
    if (image != nullptr) button->setIcon(MakeTintedIcon(MakePixmap(*image), *this));
    button->setToolTip(ToQt(model.FHint));
    button->setAccessibleName(button->toolTip());
    const auto index = static_cast<std::int32_t>(i);
    // The click may close the view, and the dock with it.
    QObject::connect(
        button, &QToolButton::clicked, this,
        [&views = FViews, handle = FHandle, index] {
          if (TIBaseView* owner = views.FindPlugin(handle)) owner->HandleCaptionButtonClick(handle, index);
        },
        Qt::QueuedConnection);
    row->addWidget(button);
  }
}

void TViewDock::changeEvent(QEvent* event) {
  QDockWidget::changeEvent(event);
  const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
  if (look && FTitle != nullptr) Update();
}

void TViewDock::closeEvent(QCloseEvent* event) {
  event->ignore();  // the dock goes when the view does
  FClose(FHandle);
}

}  // namespace margindesk
