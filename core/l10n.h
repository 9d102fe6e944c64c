#pragma once

#include "core/app_language.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Every text that people see, by key and language. The texts are the rows of `core/strings.def`,
/// compiled into the program. Every function may be called on any thread.
///
///     L10n::setCurrent(AppLanguage::zhHans);
///     L10n::t(L10n::Key::refresh);             // "刷新"
///     L10n::t(L10n::Key::keyNNamed, 2, "⌘ C"); // "按键 2 — ⌘ C"
namespace trellivar::L10n {

enum class Key : std::uint8_t {
#define TRELLIVAR_STRING(name, english, chinese) name,
#include "core/strings.def"
};

/// In the order of the enumeration.
inline constexpr auto allKeys = std::to_array<Key>({
#define TRELLIVAR_STRING(name, english, chinese) Key::name,
#include "core/strings.def"
});
inline constexpr std::size_t keyCount = allKeys.size();
static_assert(keyCount == 91);

/// The name of the key: "errPadNotSeen". Empty for a number that is no key.
std::string_view rawValue(Key key) noexcept;

/// The language in force in the whole process; `en` until set.
AppLanguage current() noexcept;
void setCurrent(AppLanguage language) noexcept;

/// The text of a key as it stands in the table, placeholders included. Lives as long as the
/// process. Empty for a number that is no key.
std::string_view text(Key key, AppLanguage language) noexcept;
/// The same in the current language.
std::string_view t(Key key) noexcept;

/// What takes the place of one placeholder.
class Argument {
public:
  explicit Argument(std::string_view text) : text_(text) {}
  /// Plain decimal digits in every locale. Truth values and characters are no numbers.
  template <std::integral Number>
    requires(!std::same_as<Number, bool> && !std::same_as<Number, char>)
  explicit Argument(Number number) : text_(std::to_string(number)) {}

  const std::string& text() const noexcept { return text_; }

private:
  std::string text_;
};

/// The text of a key in the current language with its placeholders replaced, the first by the first
/// argument and so on. Arguments are inserted as they are, whatever they contain, and the kind of a
/// placeholder is not enforced. A placeholder without an argument stays, a surplus argument is
/// ignored.
std::string t(Key key, std::span<const Argument> arguments);

template <typename... Arguments>
  requires(sizeof...(Arguments) > 0 && (std::constructible_from<Argument, const Arguments&> && ...))
std::string t(Key key, const Arguments&... arguments) {
  return t(key, std::array{Argument(arguments)...});
}

} // namespace trellivar::L10n
