#pragma once

#include <QIcon>
#include <QStyle>

namespace margindesk {

// The picture of a message box: a mark on a disc, or on a triangle for a warning. Null for other pictures.
QIcon MakeMessagePicture(QStyle::StandardPixmap picture);

}  // namespace margindesk
