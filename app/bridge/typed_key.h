#pragma once

#include "core/modifier.h"

#include <QString>
#include <Qt>
#include <optional>
#include <vector>

/// What the keys of the keyboard in front of the user are on the drawn keyboard.
namespace trellivar::TypedKey {

/// The modifier that a key is, on the left side, since nothing tells the sides apart.
std::optional<Modifier> modifier(int key);
/// The modifiers among those that are held while another key is pressed.
std::vector<Modifier> modifiers(Qt::KeyboardModifiers held);
/// The id of a key that types or does something. None for those that work the sheet itself: Tab,
/// the arrows, Space, Return and Escape.
std::optional<QString> base(int key);

} // namespace trellivar::TypedKey
