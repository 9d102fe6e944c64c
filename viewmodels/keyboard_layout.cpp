#include "viewmodels/keyboard_layout.h"

#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <utility>

namespace trellivar {

namespace {

using Row = std::vector<KeyDef>;

KeyDef base(std::string_view name, std::string_view label, double width = 1.0) {
  return {std::string(name),
          std::string(label),
          width,
          {KeyDef::Role::Base{{KeyName(name), Key::Kind::keyCode}}}};
}

/// Both sides have the same symbol on their caps.
KeyDef held(Modifier modifier, double width) {
  const Modifier left = modifier.isLeft() ? modifier : modifier.oppositeSide();
  return {"mod-" + std::string(modifier.rawValue()),
          std::string(left.symbol()),
          width,
          {KeyDef::Role::Modifier{modifier}}};
}

KeyDef gap(std::string_view name, double width) {
  return {"spacer-" + std::string(name), "", width, {KeyDef::Role::Spacer{}}};
}

void append(Row& row, Row more) {
  row.insert(row.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

constexpr char upperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Keys whose names are the letters and digits on them.
Row plainKeys(std::string_view characters) {
  Row row;
  for (const char c : characters)
    row.push_back(base(std::string(1, c), std::string(1, upperCase(c))));
  return row;
}

Row functionKeys(int first, int last) {
  Row row;
  for (int number = first; number <= last; ++number) {
    const std::string text = std::to_string(number);
    row.push_back(base("f" + text, "F" + text));
  }
  return row;
}

Row joined(std::vector<Row> parts) {
  Row row;
  for (Row& part : parts)
    append(row, std::move(part));
  return row;
}

std::vector<Row> keyboard() {
  return {
      joined({{base("escape", "esc"), gap("escape", 0.5)},
              functionKeys(1, 4),
              {gap("f4", 0.5)},
              functionKeys(5, 8),
              {gap("f8", 0.5)},
              functionKeys(9, 12)}),
      joined(
          {{base("grave_accent_and_tilde", "`")},
           plainKeys("1234567890"),
           {base("hyphen", "-"), base("equal_sign", "="), base("delete_or_backspace", "⌫", 1.5)}}),
      joined({{base("tab", "⇥", 1.5)},
              plainKeys("qwertyuiop"),
              {base("open_bracket", "["), base("close_bracket", "]"), base("backslash", "\\")}}),
      joined({{gap("caps_lock", 1.75)},
              plainKeys("asdfghjkl"),
              {base("semicolon", ";"), base("quote", "'"), base("return_or_enter", "⏎", 1.75)}}),
      joined({{held(Modifier::shift, 2.25)},
              plainKeys("zxcvbnm"),
              {base("comma", ","), base("period", "."), base("slash", "/"),
               held(Modifier::rightShift, 2.25)}}),
      {held(Modifier::control, 1.25), held(Modifier::option, 1.25), held(Modifier::command, 1.5),
       base("spacebar", "Space", 2.5), held(Modifier::rightCommand, 1.5),
       held(Modifier::rightOption, 1.25), held(Modifier::rightControl, 1.25),
       base("left_arrow", "←"), base("up_arrow", "↑"), base("down_arrow", "↓"),
       base("right_arrow", "→")},
  };
}

std::map<std::string, std::string, std::less<>> labelsOf(std::span<const Row> rows) {
  std::map<std::string, std::string, std::less<>> labels;
  for (const Row& row : rows) {
    for (const KeyDef& def : row) {
      if (const auto* found = std::get_if<KeyDef::Role::Base>(&def.role.value))
        labels.emplace(found->key.keyCode.text(), def.label);
    }
  }
  return labels;
}

} // namespace

const std::vector<std::vector<KeyDef>>& KeyboardLayout::rows() {
  static const std::vector<Row> rows = keyboard();
  return rows;
}

std::string KeyboardLayout::displayLabel(std::string_view forKeyCode) {
  static const auto labelByCode = labelsOf(rows());
  const auto found = labelByCode.find(forKeyCode);
  if (found != labelByCode.end()) return found->second;
  if (forKeyCode.size() == 1) return {upperCase(forKeyCode.front())};
  return std::string(forKeyCode);
}

} // namespace trellivar
