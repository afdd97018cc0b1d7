#include "terminal/desktop/ViewDock.h"

#include <QCloseEvent>

#include "terminal/desktop/FormScroll.h"
#include "terminal/desktop/Glyphs.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Picture.h"
#include "terminal/desktop/Skin.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

namespace {

constexpr int kMargin = 6;  // pixels around the form at 100 % scale

}  // namespace

TViewDock::TViewDock(TOpenViews& views, const TOpenView& view, QWidget* parent, TClose closeView)
    : QDockWidget(parent),
      FViews(views),
      FHandle(view.FHandle),
      FClose(std::move(closeView)),
      FForm(CreateFormWidget(*view.FFrame, this)),
      FSimulation(*view.FFrame, *FForm) {
  setObjectName(QStringLiteral("view%1").arg(FHandle));
  setAllowedAreas(Qt::AllDockWidgetAreas);
  setWidget(new TFormScroll(FForm, this));

  FTitle = new TDockTitle(*this);
  Update();
}

void TViewDock::Update() {
  const TOpenView* view = FViews.Find(FHandle);
  if (view == nullptr) return;
  setWindowTitle(ToQt(view->FCaption));
  setAccessibleName(windowTitle());
  FTitle->UpdateTexts();
  UpdateMargins();
  UpdateButtons();
}

void TViewDock::UpdateMargins() {
  const int margin = Scaled(kMargin);
  FForm->layout()->setContentsMargins(margin, 0, margin, margin);
}

// Buttons stay the same objects, so that one that is held down or has the focus keeps it.
void TViewDock::UpdateButtons() {
  TIBaseView* plugin = FViews.FindPlugin(FHandle);
  std::vector<TCaptionButton*> models;
  const TImageList* images = nullptr;
  plugin->GetViewCaptionButtons(FHandle, models);
  plugin->GetViewCaptionButtonImageList(FHandle, images);
  while (FCaptionButtons.size() < models.size()) AddButton();
  for (std::size_t i = 0; i < FCaptionButtons.size(); ++i) {
    QToolButton& button = *FCaptionButtons[i];
    const TCaptionButton* model = i < models.size() ? models[i] : nullptr;
    button.setVisible(model != nullptr && model->FVisible);
    if (model == nullptr) continue;
    button.setCheckable(model->FDown != 0);
    button.setChecked(model->FDown != 0);
    const TBitmap* image = images == nullptr ? nullptr : images->GetImage(model->FImageIndex);
    button.setIcon(image == nullptr ? QIcon() : MakeTintedIcon(MakePixmap(*image), *this));
    button.setToolTip(ToQt(model->FHint));
    button.setAccessibleName(button.toolTip());
  }
}

void TViewDock::AddButton() {
  auto* button = new QToolButton(&FTitle->Buttons());
  button->setAutoRaise(true);
  const auto index = static_cast<std::int32_t>(FCaptionButtons.size());
  // The click may close the view, and the dock with it.
  QObject::connect(
      button, &QToolButton::clicked, this,
      [&views = FViews, handle = FHandle, index] {
        if (TIBaseView* owner = views.FindPlugin(handle)) owner->HandleCaptionButtonClick(handle, index);
      },
      Qt::QueuedConnection);
  FTitle->Buttons().layout()->addWidget(button);
  FCaptionButtons.push_back(button);
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
