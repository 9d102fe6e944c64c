#pragma once

#include "core/key.h"

#include <cstdint>
#include <optional>

/// The elements of HID devices that captures understand, by their usages in the USB HID usage
/// tables. Pure; any thread.
namespace trellivar::hid {

/// Usage pages.
inline constexpr std::uint32_t genericDesktopPage = 0x01;
inline constexpr std::uint32_t keyboardPage = 0x07;
inline constexpr std::uint32_t buttonPage = 0x09;
inline constexpr std::uint32_t consumerPage = 0x0C;
inline constexpr std::uint32_t digitizerPage = 0x0D;

/// Collections, on the generic desktop and the consumer page.
inline constexpr std::uint32_t mouseUsage = 0x02;
inline constexpr std::uint32_t keyboardUsage = 0x06;
inline constexpr std::uint32_t consumerControlUsage = 0x01;

/// Letters, digits, a few keys beside them, and modifiers; every other usage is deliberately
/// unknown and gives an empty name.
KeyName keyCode(std::uint32_t forUsage);
/// Six media keys; every other usage gives an empty name.
KeyName consumerCode(std::uint32_t forUsage);

/// The key behind an element; none for one that captures ignore.
std::optional<Key> key(std::uint32_t usagePage, std::uint32_t usage);

/// Left control to right GUI.
constexpr bool isModifier(std::uint32_t usagePage, std::uint32_t usage) noexcept {
  return usagePage == keyboardPage && usage >= 0xE0 && usage <= 0xE7;
}

} // namespace trellivar::hid
