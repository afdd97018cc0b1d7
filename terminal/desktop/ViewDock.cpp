#include "terminal/desktop/ViewDock.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Picture.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

TViewDock::TViewDock(TOpenViews& views, const TOpenView& view, QWidget* parent, TClose closeView)
    : QDockWidget(parent), FViews(views), FHandle(view.FHandle), FClose(std::move(closeView)) {
  setObjectName(QStringLiteral("view%1").arg(FHandle));
  setAllowedAreas(Qt::AllDockWidgetAreas);
  setWidget(CreateFormWidget(*view.FFrame, this));

  FTitle = new QWidget(this);
  auto* row = new QHBoxLayout(FTitle);
  row->setContentsMargins(6, 2, 2, 2);
  FCaption = new QLabel(FTitle);
  row->addWidget(FCaption, 1);
  FButtons = new QWidget(FTitle);
  row->addWidget(FButtons);
  auto* closeButton = new QToolButton(FTitle);
  closeButton->setAutoRaise(true);
  closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  closeButton->setAccessibleName(HostText("Desktop_Close"));
  QObject::connect(closeButton, &QToolButton::clicked, this, [this] { close(); });
  row->addWidget(closeButton);
  setTitleBarWidget(FTitle);
  Update();
}

void TViewDock::Update() {
  const TOpenView* view = FViews.Find(FHandle);
  if (view == nullptr) return;
  setWindowTitle(ToQt(view->FCaption));
  FCaption->setText(windowTitle());
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
    if (image != nullptr) button->setIcon(MakePixmap(*image));
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

void TViewDock::closeEvent(QCloseEvent* event) {
  event->ignore();  // the dock goes when the view does
  FClose(FHandle);
}

}  // namespace margindesk
