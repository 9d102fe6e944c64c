#include "files/temporary_name.h"

#include <unistd.h>

#include <atomic>
#include <charconv>

namespace trellivar {

namespace {

constexpr std::string_view suffix = ".tmp";

std::string prefix(std::string_view fileName) { return "." + std::string(fileName) + "."; }

template <typename Number> std::optional<Number> number(std::string_view text) {
  Number value{};
  const auto end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

} // namespace

TemporaryName TemporaryName::next() {
  static std::atomic<std::uint64_t> counter{0};
  return {::getpid(), counter++};
}

std::optional<TemporaryName> TemporaryName::parse(std::string_view text,
                                                  std::string_view fileName) {
  const std::string start = prefix(fileName);
  if (text.size() < start.size() + suffix.size()) return std::nullopt;

  const auto numbers = text.substr(start.size(), text.size() - start.size() - suffix.size());
  const auto dash = numbers.find('-');
  if (dash == std::string_view::npos) return std::nullopt;

  const auto process = number<int>(numbers.substr(0, dash));
  const auto counter = number<std::uint64_t>(numbers.substr(dash + 1));
  if (!process || !counter || *process <= 0) return std::nullopt;

  // Another prefix or suffix, or another spelling of the same numbers, is not ours.
  const TemporaryName name{*process, *counter};
  return name.text(fileName) == text ? std::optional(name) : std::nullopt;
}

std::string TemporaryName::text(std::string_view fileName) const {
  return prefix(fileName) + std::to_string(process) + "-" + std::to_string(counter) +
         std::string(suffix);
}

} // namespace trellivar
