#include "terminal/desktop/Skin.h"

#include <QApplication>
#include <QFontInfo>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>

#include "model/contract/LanguageManager.h"
#include "terminal/desktop/MessagePicture.h"

namespace margindesk {

namespace {

struct TSkinColor {
  QPalette::ColorRole FRole;
  QRgb FLight;
  QRgb FDark;
};

// BrightText is for figures below zero. Every text reads at 4.5 to 1 or more on its background.
constexpr TSkinColor kColors[] = {
    {QPalette::Window, 0xfff3f4f6, 0xff1e2227},
    {QPalette::WindowText, 0xff1b1f24, 0xffe3e6ea},
    {QPalette::Base, 0xffffffff, 0xff171a1e},
    {QPalette::AlternateBase, 0xfff7f8fa, 0xff1c2025},
    {QPalette::Text, 0xff1b1f24, 0xffe3e6ea},
    {QPalette::Button, 0xffe7e9ed, 0xff2b3037},
    {QPalette::ButtonText, 0xff1b1f24, 0xffe3e6ea},
    {QPalette::BrightText, 0xffb3261e, 0xffff8a80},
    {QPalette::Highlight, 0xff1f6feb, 0xff2f5fa8},
    {QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    {QPalette::ToolTipBase, 0xff2b3037, 0xffe3e6ea},
    {QPalette::ToolTipText, 0xfff3f4f6, 0xff1b1f24},
    {QPalette::PlaceholderText, 0xff646b75, 0xff9aa3ae},
    {QPalette::Mid, 0xffc3c8d0, 0xff3a4048},
    {QPalette::Link, 0xff0b57d0, 0xff8ab4f8},
};

constexpr QRgb kOutlineLight = 0xff838b96;
constexpr QRgb kOutlineDark = 0xff737d8a;
constexpr QRgb kDisabledLight = 0xff7a828c;
constexpr QRgb kDisabledDark = 0xff7f8893;
constexpr double kFontPoints = 9;

// The face of the Chinese characters, by the language's index: the same character has other strokes in each
// region, and a fallback left to chance comes bold. Latin letters and figures keep the system's face.
constexpr const char* kHanFaces[] = {"Noto Sans CJK SC", "Noto Sans CJK SC", "Noto Sans CJK HK"};

// Pixel sizes that grow with the scale, as the texts beside them do.
constexpr QStyle::PixelMetric kScaledSizes[] = {
    QStyle::PM_IndicatorWidth,           QStyle::PM_IndicatorHeight,       QStyle::PM_ExclusiveIndicatorWidth,
    QStyle::PM_ExclusiveIndicatorHeight, QStyle::PM_SmallIconSize,         QStyle::PM_ButtonIconSize,
    QStyle::PM_ToolBarIconSize,          QStyle::PM_LineEditIconSize,      QStyle::PM_ScrollBarExtent,
    QStyle::PM_TreeViewIndentation,      QStyle::PM_HeaderMarkSize,        QStyle::PM_MessageBoxIconSize,
    QStyle::PM_LayoutHorizontalSpacing,  QStyle::PM_LayoutVerticalSpacing,
};

int appliedScale = 100;  // percent

// Pixels on either side of a caption, so that one at the right and the next at the left stand apart.
constexpr int kHeaderMargin = 3;

// Boxes to type in and to tick, and menus, have an outline that stands out from the window at 3 to 1 in every
// skin.
class TSkinStyle : public QProxyStyle {
 public:
  TSkinStyle(bool dark, int scalePercent)
      : QProxyStyle(QStringLiteral("Fusion")),
        FOutline(dark ? kOutlineDark : kOutlineLight),
        FScale(scalePercent) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_HeaderMargin) return kHeaderMargin * FScale / 100;
    const int size = QProxyStyle::pixelMetric(metric, option, widget);
    return std::ranges::find(kScaledSizes, metric) == std::end(kScaledSizes) ? size : size * FScale / 100;
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    // Of every cell: what Fusion draws, without the colours that it mixes for what it draws elsewhere.
    if (element == PE_PanelItemViewRow) return QCommonStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_IndicatorBranch && !option->state.testFlag(State_Children)) return;
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_FrameLineEdit || element == PE_IndicatorCheckBox;
    const bool outlined = box ? !option->state.testFlag(State_HasFocus) : element == PE_PanelMenu;
    if (!outlined) return;
    painter->save();
    painter->setPen(FOutline);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
  }

  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                     const QWidget* widget) const override {
    const QIcon own = MakeMessagePicture(picture);
    return own.isNull() ? QProxyStyle::standardIcon(picture, option, widget) : own;
  }

 private:
  const QColor FOutline;
  const int FScale;  // percent
};

}  // namespace

int FindScaleStep(int percent) {
  const auto* step = std::ranges::lower_bound(kScaleSteps, percent);
  return step == std::end(kScaleSteps) ? *std::prev(step) : *step;
}

int Scaled(int pixels) { return qRound(pixels * appliedScale / 100.0); }

int Unscaled(int pixels) { return qRound(pixels * 100.0 / appliedScale); }

void ApplySkin(QApplication& application, const std::string& skin, int scalePercent) {
  const bool dark = skin == "Dark";
  QPalette palette;
  for (const TSkinColor& color : kColors) palette.setColor(color.FRole, dark ? color.FDark : color.FLight);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dark ? kDisabledDark : kDisabledLight);
  }
  appliedScale = scalePercent;
  application.setStyle(new TSkinStyle(dark, scalePercent));
  application.setPalette(palette);
  static const QString latin = QFontInfo(QApplication::font()).family();  // the face behind an alias
  const auto language = static_cast<std::size_t>(TCustomLanguageManager::GetInstance().GetLanguageIndex());
  QFont font = application.font();
  font.setFamilies({latin, QString::fromLatin1(kHanFaces[std::min(language, std::size(kHanFaces) - 1)])});
  font.setPointSizeF(kFontPoints * scalePercent / 100);
  font.setStyleStrategy(QFont::PreferAntialias);
  application.setFont(font);
}

}  // namespace margindesk
