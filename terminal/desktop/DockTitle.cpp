#include "terminal/desktop/DockTitle.h"

#include <QEvent>

#include "terminal/desktop/Glyphs.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

constexpr int kMargin = 6;        // pixels before the caption at 100 % scale
constexpr int kButtonMargin = 3;  // around the buttons

void Name(QToolButton& button, const QString& name) {
  button.setToolTip(name);
  button.setAccessibleName(name);
}

}  // namespace

TDockTitle::TDockTitle(QDockWidget& dock)
    : QWidget(&dock), FDock(dock), FCaption(new QLabel(this)), FButtons(new QWidget(this)) {
  auto* row = new QHBoxLayout(this);
  row->setSpacing(0);
  QFont bold = FCaption->font();
  bold.setBold(true);
  FCaption->setFont(bold);
  FCaption->setTextFormat(Qt::PlainText);
  row->addWidget(FCaption, 1);
  auto* buttons = new QHBoxLayout(FButtons);
  buttons->setContentsMargins(0, 0, 0, 0);
  buttons->setSpacing(0);
  row->addWidget(FButtons);
  FFloat = AddButton(*row);
  FClose = AddButton(*row);
  QObject::connect(FFloat, &QToolButton::clicked, &dock, [&dock] { dock.setFloating(!dock.isFloating()); });
  QObject::connect(FClose, &QToolButton::clicked, &dock, &QWidget::close);
  QObject::connect(&dock, &QWidget::windowTitleChanged, this,
                   [this](const QString& title) { FCaption->setText(title); });
  QObject::connect(&dock, &QDockWidget::topLevelChanged, this, [this] { UpdateTexts(); });
  FCaption->setText(dock.windowTitle());
  UpdateLook();
  UpdateTexts();
  dock.setTitleBarWidget(this);
}

QToolButton* TDockTitle::AddButton(QHBoxLayout& row) {
  auto* button = new QToolButton(this);
  button->setAutoRaise(true);
  row.addWidget(button);
  return button;
}

void TDockTitle::UpdateTexts() {
  Name(*FFloat, HostText(FDock.isFloating() ? "Desktop_Dock" : "Desktop_Float"));
  Name(*FClose, HostText("Desktop_Close"));
}

void TDockTitle::UpdateLook() {
  const int margin = Scaled(kButtonMargin);
  layout()->setContentsMargins(Scaled(kMargin), margin, margin, margin);
  FFloat->setIcon(MakeGlyph(TGlyph::Float, *this));
  FClose->setIcon(MakeGlyph(TGlyph::Cross, *this));
}

void TDockTitle::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
  if (look && FClose != nullptr) UpdateLook();
}

}  // namespace margindesk
