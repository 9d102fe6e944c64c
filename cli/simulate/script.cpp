#include "cli/simulate/script.h"

#include "cli/diagnostics_json.h"
#include "cli/input.h"
#include "core/json/quoted.h"
#include "core/mode_profiles.h"
#include "simulator/desk/key_codes.h"
#include "simulator/desk/pad.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <utility>

namespace trellivar::cli::simulate {

namespace {

template <class Value, std::size_t n>
using Vocabulary = std::array<std::pair<std::string_view, Value>, n>;

constexpr Vocabulary<Connect::Link, 3> links{{{"none", Connect::Link::none},
                                              {"usb", Connect::Link::usb},
                                              {"bluetooth", Connect::Link::bluetooth}}};
constexpr Vocabulary<Permission, 2> permissions{{{"accessibility", Permission::accessibility},
                                                 {"inputMonitoring", Permission::inputMonitoring}}};
constexpr Vocabulary<DisableTap::Reason, 2> reasons{
    {{"timeout", DisableTap::Reason::timeout}, {"userInput", DisableTap::Reason::userInput}}};

template <class Value, std::size_t n>
Value wordIn(const Vocabulary<Value, n>& words, const JsonReader& reader) {
  const std::string& text = reader.text();
  std::string known;
  for (const auto& [word, value] : words) {
    if (word == text) return value;
    known.append(known.empty() ? "" : ", ").append(word);
  }
  reader.fail("expected one of " + known + ", found " + quotedJson(text));
}

std::string modeIn(const JsonReader& reader) {
  const std::string& mode = reader.text();
  if (std::ranges::find(modeNames, mode) == modeNames.end())
    reader.fail("expected P, M or R, found " + quotedJson(mode));
  return mode;
}

int padKeyIn(const JsonReader& reader) {
  const int key = reader.integer();
  if (std::ranges::find(desk::Pad::keyIds, key) == desk::Pad::keyIds.end())
    reader.fail("the pad has keys 1 to 3");
  return key;
}

Seconds secondsIn(const JsonReader& reader) {
  constexpr double week = 7 * 24 * 3600.0;
  const double seconds = reader.number();
  if (seconds < 0 || seconds > week) reader.fail("expected seconds from 0 to a week");
  return Seconds(seconds);
}

void requireTrue(const JsonReader& reader) {
  if (!reader.boolean()) reader.fail("expected true");
}

} // namespace

} // namespace trellivar::cli::simulate

namespace trellivar {

using namespace cli::simulate; // NOLINT(google-build-using-namespace): they are read here only

/// One key of the pad, as lists of them are read.
struct PadKey {
  int id;
};
template <> PadKey decode<PadKey>(const JsonReader& reader) { return {padKeyIn(reader)}; }

template <> KeyName decode<KeyName>(const JsonReader& reader) {
  const KeyName name(reader.text());
  if (!desk::keyCodes(name)) reader.fail("the keyboard has no key " + quotedJson(name.text()));
  return name;
}

template <> Permission decode<Permission>(const JsonReader& reader) {
  return wordIn(permissions, reader);
}

template <> Connect decode<Connect>(const JsonReader& reader) {
  if (reader.json().is_object()) return {reader.as<DeviceIdentity>()};
  return {wordIn(links, reader)};
}

template <> Bind decode<Bind>(const JsonReader& reader) {
  Bind bind{modeIn(reader.member("mode")), padKeyIn(reader.member("key")),
            reader.member("output").as<Output>(), std::nullopt};
  if (const auto label = reader.optionalMember("label")) bind.label = label->text();
  return bind;
}

template <> Press decode<Press>(const JsonReader& reader) {
  Press press;
  const JsonReader keys = reader.member("press");
  if (keys.json().is_array()) {
    for (const PadKey key : keys.list<PadKey>())
      press.keys.push_back(key.id);
  } else {
    press.keys.push_back(padKeyIn(keys));
  }
  if (const auto hold = reader.optionalMember("hold")) press.hold = secondsIn(*hold);
  if (const auto stagger = reader.optionalMember("stagger")) press.stagger = secondsIn(*stagger);
  return press;
}

template <> Step decode<Step>(const JsonReader& reader) {
  struct Kind {
    std::string_view word;
    std::function<decltype(Step::action)(const JsonReader&)> read;
  };
  static const std::array kinds{
      Kind{"connect", [](const JsonReader& r) { return r.member("connect").as<Connect>(); }},
      Kind{"mode", [](const JsonReader& r) { return SetMode{modeIn(r.member("mode"))}; }},
      Kind{"bind", [](const JsonReader& r) { return r.member("bind").as<Bind>(); }},
      Kind{"press", [](const JsonReader& r) { return r.as<Press>(); }},
      Kind{"type", [](const JsonReader& r) { return Type{r.member("type").list<KeyName>()}; }},
      Kind{"learn", [](const JsonReader& r) { return Learn{padKeyIn(r.member("learn"))}; }},
      Kind{"record", [](const JsonReader& r) { return Record{padKeyIn(r.member("record"))}; }},
      Kind{"wait", [](const JsonReader& r) { return Wait{secondsIn(r.member("wait"))}; }},
      Kind{"write",
           [](const JsonReader& r) {
             requireTrue(r.member("write"));
             return Write{};
           }},
      Kind{"grant",
           [](const JsonReader& r) {
             return SetPermissions{r.member("grant").list<Permission>(), true};
           }},
      Kind{"revoke",
           [](const JsonReader& r) {
             return SetPermissions{r.member("revoke").list<Permission>(), false};
           }},
      Kind{"disableTap",
           [](const JsonReader& r) { return DisableTap{wordIn(reasons, r.member("disableTap"))}; }},
      Kind{"status",
           [](const JsonReader& r) {
             requireTrue(r.member("status"));
             return Status{};
           }},
  };
  reader.object();
  const Kind* found = nullptr;
  for (const Kind& kind : kinds) {
    if (!reader.has(kind.word)) continue;
    if (found)
      reader.fail("a step does one thing, not " + std::string(found->word) + " and " +
                  std::string(kind.word));
    found = &kind;
  }
  if (!found) reader.fail("there is no such step");
  return {0, found->read(reader)};
}

} // namespace trellivar

namespace trellivar::cli::simulate {

std::vector<Step> readScript(Context& context, const std::string& file) {
  std::vector<Step> steps;
  forEachRecord(context, file, [&](const JsonReader& record, std::size_t line) {
    steps.push_back(record.as<Step>());
    steps.back().number = line;
  });
  return steps;
}

} // namespace trellivar::cli::simulate
