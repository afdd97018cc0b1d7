#pragma once

#include <QIcon>
#include <QPainter>
#include <functional>

namespace margindesk {

// Draws into a square of the side, in pixels, at the painter's origin.
using TIconDraw = std::function<void(QPainter& painter, double side)>;

// An icon that is drawn anew, smoothed, at whatever size and resolution is asked for. A disabled one looks
// the same.
QIcon MakeDrawnIcon(TIconDraw draw);

}  // namespace margindesk
