#include "cli/shortcut.h"

#include "cli/context.h"
#include "cli/key_names.h"
#include "core/cg_keycode_map.h"
#include "core/json/quoted.h"
#include "core/trimmed.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace trellivar::cli {

namespace {

/// Row for row the short form of `Modifier::allCases`.
constexpr std::array<std::string_view, 8> shortForms{"cmd",  "shift",  "ctrl",  "opt",
                                                     "rcmd", "rshift", "rctrl", "ropt"};

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return result;
}

std::vector<std::string> namesIn(std::string_view text, char separator) {
  std::vector<std::string> names;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    names.push_back(lowerCase(trimmed(text.substr(start, end - start))));
    start = end + 1;
  }
  return names;
}

std::optional<Modifier> modifierNamed(std::string_view name) {
  const auto found = std::ranges::find(shortForms, name);
  if (found != shortForms.end())
    return Modifier::allCases[static_cast<std::size_t>(found - shortForms.begin())];
  return Modifier::fromRawValue(name);
}

[[noreturn]] void failUnknown(std::string_view name) {
  if (name.empty()) throw BadInput("the shortcut lacks a key name");
  if (name.find('+') != std::string_view::npos)
    throw BadInput("a sequence consists of single keys; " + quotedJson(name) + " is a combination");
  std::vector<std::string> candidates(shortForms.begin(), shortForms.end());
  candidates.insert(candidates.end(), allKeyNames().begin(), allKeyNames().end());
  std::string list;
  for (const std::string& near : nearestNames(name, candidates))
    list += (list.empty() ? "" : ", ") + near;
  throw BadInput("unknown key " + quotedJson(name) + "; the nearest names are " + list);
}

Key keyNamed(std::string_view name) {
  if (const auto modifier = modifierNamed(name)) return {modifier->keyName()};
  if (CGKeycodeMap::keyCode(name)) return {KeyName(name)};
  if (CGKeycodeMap::auxKey(name)) return {KeyName(name), Key::Kind::consumerKeyCode};
  const auto& names = allKeyNames(); // only the plain spelling of a button, not "button007"
  if (CGKeycodeMap::buttonNumber(name) && std::ranges::find(names, name) != names.end())
    return {KeyName(name), Key::Kind::pointingButton};
  failUnknown(name);
}

Output sequenceOf(const std::vector<std::string>& names) {
  Output::Sequence sequence;
  for (const std::string& name : names)
    sequence.keys.push_back(keyNamed(name));
  return {sequence};
}

Output combinationOf(const std::vector<std::string>& names) {
  std::vector<Modifier> modifiers;
  std::optional<Key> key;
  for (const std::string& name : names) {
    if (const auto modifier = modifierNamed(name)) {
      if (std::ranges::find(modifiers, *modifier) != modifiers.end())
        throw BadInput("the shortcut names " + name + " twice");
      modifiers.push_back(*modifier);
    } else {
      const Key next = keyNamed(name);
      if (key)
        throw BadInput("a shortcut has one key beside its modifiers; " + name + " is another");
      key = next;
    }
  }
  if (key) return {Output::Chord{modifiers, *key}};
  return {Output::Modifiers{modifiers}};
}

std::string joined(std::string text, std::string_view separator, std::string_view next) {
  if (!text.empty()) text += separator;
  return text.append(next);
}

struct TextOf {
  std::string operator()(const Output::Chord& chord) const {
    return joined((*this)(Output::Modifiers{chord.modifiers}), "+", chord.key.keyCode.text());
  }
  std::string operator()(const Output::Sequence& sequence) const {
    std::string text;
    for (const Key& key : sequence.keys)
      text = joined(text, ",", key.keyCode.text());
    return text;
  }
  std::string operator()(const Output::Modifiers& alone) const {
    std::string text;
    for (const Modifier modifier : alone.modifiers)
      text = joined(text, "+", shortForms[modifier]);
    return text;
  }
};

} // namespace

Output parseShortcut(std::string_view text) {
  if (text.find(',') != std::string_view::npos) return sequenceOf(namesIn(text, ','));
  return combinationOf(namesIn(text, '+'));
}

std::string shortcutText(const Output& output) {
  const std::string text = std::visit(TextOf{}, output.value);
  return text.empty() ? "nothing" : text;
}

} // namespace trellivar::cli
