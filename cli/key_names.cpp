#include "cli/key_names.h"

#include "core/cg_keycode_map.h"
#include "core/key_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace trellivar::cli {

namespace {

/// Levenshtein distance: insertions, deletions and replacements of bytes.
std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = std::exchange(row[j], std::min({replaced, row[j] + 1, row[j - 1] + 1}));
    }
  }
  return row.back();
}

/// How far a name is from what was typed. People also type a word of a name ("command" for
/// "left_command") and its beginning ("esc" for "escape").
std::size_t distance(std::string_view typed, std::string_view name) {
  constexpr std::size_t shortestBeginning = 3;
  if (typed.size() >= shortestBeginning && name.starts_with(typed)) return typed != name;
  std::size_t least = editDistance(typed, name);
  for (std::size_t start = 0; start <= name.size();) {
    const std::size_t end = std::min(name.find('_', start), name.size());
    least = std::min(least, 1 + editDistance(typed, name.substr(start, end - start)));
    start = end + 1;
  }
  return least;
}

} // namespace

const std::vector<std::string>& allKeyNames() {
  static const auto names = [] {
    std::vector<std::string> result;
    for (const auto& row : keytable::keys)
      result.emplace_back(row.name);
    for (const auto& row : keytable::modifiers)
      result.emplace_back(row.name);
    for (const auto& row : keytable::consumers)
      result.emplace_back(row.name);
    for (int button = 0; button < keytable::buttonCount; ++button)
      result.push_back(CGKeycodeMap::pointingName(button)->text());
    return result;
  }();
  return names;
}

std::vector<std::string> nearestNames(std::string_view text,
                                      const std::vector<std::string>& candidates) {
  constexpr std::size_t most = 3;
  constexpr std::size_t longestSensible = 64; // longer texts are no typing errors
  const std::string_view typed = text.substr(0, longestSensible);
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (const std::string& name : candidates)
    ranked.emplace_back(distance(typed, name), name);
  std::ranges::stable_sort(ranked, {}, &std::pair<std::size_t, std::string>::first);
  ranked.resize(std::min(ranked.size(), most));
  std::vector<std::string> nearest;
  for (auto& [away, name] : ranked)
    nearest.push_back(std::move(name));
  return nearest;
}

} // namespace trellivar::cli
