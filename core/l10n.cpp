#include "core/l10n.h"

#include <algorithm>
#include <atomic>

namespace trellivar::L10n {

namespace {

struct Row {
  std::string_view name;
  std::string_view english;
  std::string_view chinese;
};

constexpr std::array<Row, keyCount> rows{{
#define TRELLIVAR_STRING(name, english, chinese) {#name, english, chinese},
#include "core/strings.def"
}};

constexpr Row row(Key key) noexcept {
  const auto index = static_cast<std::size_t>(key);
  return index < rows.size() ? rows[index] : Row{};
}

constinit std::atomic<AppLanguage::Value> currentLanguage{AppLanguage::en};

/// Where the first placeholder begins. Both kinds are two characters long.
std::size_t findPlaceholder(std::string_view format) noexcept {
  return std::min(format.find("%@"), format.find("%d"));
}
constexpr std::size_t placeholderLength = 2;

} // namespace

std::string_view rawValue(Key key) noexcept { return row(key).name; }

AppLanguage current() noexcept { return currentLanguage.load(); }
void setCurrent(AppLanguage language) noexcept { currentLanguage.store(language); }

std::string_view text(Key key, AppLanguage language) noexcept {
  return language == AppLanguage::zhHans ? row(key).chinese : row(key).english;
}

std::string_view t(Key key) noexcept { return text(key, current()); }

std::string t(Key key, std::span<const Argument> arguments) {
  std::string result;
  std::string_view rest = t(key);
  for (const Argument& argument : arguments) {
    const std::size_t at = findPlaceholder(rest);
    if (at == std::string_view::npos) break;
    result.append(rest.substr(0, at)).append(argument.text());
    rest.remove_prefix(at + placeholderLength);
  }
  return result.append(rest);
}

} // namespace trellivar::L10n
