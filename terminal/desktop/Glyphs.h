#pragma once

#include <QIcon>
#include <QWidget>

namespace margindesk {

enum class TGlyph { Cross, Arrow, Lock, Float };

// A glyph in the colour of a widget's button texts, sharp on its screen.
QIcon MakeGlyph(TGlyph glyph, const QWidget& widget);

// A one-colour picture in the colour of a widget's button texts, so that it can be seen in every skin.
QIcon MakeTintedIcon(const QPixmap& picture, const QWidget& widget);

}  // namespace margindesk
