#pragma once

#include <QIcon>

namespace trellivar {

/// A filled keyboard for the status area, as a mask: where the system tints such icons, its own
/// colour takes the place of black.
QIcon keyboardIcon();

} // namespace trellivar
