#pragma once

#include <QImage>
#include <QRect>

namespace trellivar {

/// What stands there on the screen, whichever program painted it.
QImage pictureOf(const QRect& place);

} // namespace trellivar
