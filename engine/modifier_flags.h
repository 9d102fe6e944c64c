#pragma once

#include "core/key_name.h"

#include <cstdint>

/// Which modifiers an event says to be down: the side-independent flags (kCGEventFlagMask* in
/// CGEventTypes.h) and the side-specific ones (NX_DEVICE*KEYMASK in IOLLEvent.h), which travel in
/// the same word. Pure.
namespace trellivar::modifier_flags {

/// Every flag of every modifier; caps lock, fn and the like are not among them.
std::uint64_t all() noexcept;

/// Whether `name` is a modifier that `flags` say to be down: its own side's flag decides if `flags`
/// tell the sides of this modifier apart at all, else the side-independent one.
bool isDown(std::uint64_t flags, KeyName name) noexcept;

/// `flags` after the press or release of `name`, as a keyboard reports them. With the other side
/// still down the side-independent flag stays. A name that is no modifier changes nothing.
std::uint64_t pressing(std::uint64_t flags, KeyName name) noexcept;
std::uint64_t releasing(std::uint64_t flags, KeyName name) noexcept;

} // namespace trellivar::modifier_flags
