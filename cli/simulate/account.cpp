#include "cli/simulate/account.h"

#include "cli/diagnostics_json.h"
#include "cli/link_name.h"
#include "cli/shortcut.h"
#include "cli/write_report.h"
#include "core/l10n.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string_view>

namespace trellivar::cli::simulate {

namespace {

/// To the microsecond: virtual time is a sum of many small steps.
double secondsOf(Instant t) { return std::round(t.time_since_epoch().count() * 1e6) / 1e6; }

OrderedJson jsonOf(const Arrival& arrival) {
  OrderedJson flags = OrderedJson::array();
  for (const KeyName flag : arrival.flags)
    flags.push_back(flag.text());
  return {{"t", secondsOf(arrival.t)},
          {"sender", rawValue(arrival.source)},
          {"kind", trellivar::rawValue(arrival.kind)},
          {"name", arrival.name.text()},
          {"flags", std::move(flags)}};
}

std::string number(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%g", value);
  return text.data();
}

std::string keysText(const std::vector<int>& keys) {
  std::string text = keys.size() == 1 ? "key " : "keys ";
  for (std::size_t i = 0; i < keys.size(); ++i)
    text += (i == 0 ? "" : " and ") + std::to_string(keys[i]);
  return text;
}

/// A step in words.
struct Words {
  std::string operator()(const Connect& connect) const {
    if (const auto* identity = std::get_if<DeviceIdentity>(&connect.to))
      return "the pad connects as " + std::to_string(identity->vendorId) + ":" +
             std::to_string(identity->productId);
    constexpr std::array words{"the pad is unplugged", "the pad is plugged in by cable",
                               "the pad connects over Bluetooth"};
    return words.at(static_cast<std::size_t>(std::get<Connect::Link>(connect.to)));
  }
  std::string operator()(const SetMode& set) const {
    return "the pad's switch moves to " + set.mode;
  }
  std::string operator()(const Bind& bind) const {
    return "in mode " + bind.mode + ", key " + std::to_string(bind.key) + " shall do " +
           shortcutText(bind.output);
  }
  std::string operator()(const Press& press) const {
    return "press " + keysText(press.keys) +
           (press.hold > Seconds(0.05) ? " for " + number(press.hold.count()) + " s" : "");
  }
  std::string operator()(const Type& type) const {
    std::string keys;
    for (const KeyName key : type.keys)
      keys += " " + key.text();
    return "type" + keys + " on the keyboard";
  }
  std::string operator()(const Learn& learn) const {
    return "learn key " + std::to_string(learn.key);
  }
  std::string operator()(const Record& record) const {
    return "record a shortcut for key " + std::to_string(record.key);
  }
  std::string operator()(const Wait& wait) const {
    return "wait " + number(wait.duration.count()) + " s";
  }
  std::string operator()(const Write&) const { return "write the bindings into the pad"; }
  std::string operator()(const SetPermissions& set) const {
    std::string names;
    for (const Permission permission : set.permissions) {
      names += names.empty() ? " " : " and ";
      names += permission == Permission::accessibility ? "Accessibility" : "Input Monitoring";
    }
    return (set.granted ? "grant" : "revoke") + names;
  }
  std::string operator()(const DisableTap& disable) const {
    return std::string("the system disables the tap: ") +
           (disable.reason == DisableTap::Reason::timeout ? "timeout" : "user input");
  }
  std::string operator()(const Status&) const { return "status"; }
};

struct ResultJson {
  OrderedJson operator()(const Result::State& state) const {
    return {{"accessibilityGranted", state.engine.accessibilityGranted},
            {"inputMonitoringGranted", state.engine.inputMonitoringGranted},
            {"trellivarGrabbed", state.engine.trellivarGrabbed},
            {"padLink", linkName(state.padLink)}};
  }
  OrderedJson operator()(const KeySignature& signature) const { return encode(signature); }
  OrderedJson operator()(const Output& output) const { return encode(output); }
  OrderedJson operator()(const WriteStatus::Done& done) const { return jsonReport(done); }
  OrderedJson operator()(WriteStatus::NeedPad) const { return {{"needPad", true}}; }
  OrderedJson operator()(const Result::Error& error) const { return {{"error", error.text}}; }
};

struct ResultWords {
  std::string operator()(const Result::State& state) const {
    const auto granted = [](bool is) { return is ? "granted" : "not granted"; };
    return std::string("Accessibility ") + granted(state.engine.accessibilityGranted) +
           ", Input Monitoring " + granted(state.engine.inputMonitoringGranted) + ", the pad is " +
           (state.engine.trellivarGrabbed ? "intercepted" : "not intercepted") + ", link " +
           std::string(linkName(state.padLink));
  }
  std::string operator()(const KeySignature& signature) const {
    std::string text = "the key sends";
    for (const Key& code : signature.codes)
      text += (&code == signature.codes.data() ? " "
               : signature.isChord             ? "+"
                                               : ", ") +
              code.keyCode.text();
    return text;
  }
  std::string operator()(const Output& output) const {
    return "the shortcut is " + shortcutText(output);
  }
  std::string operator()(const WriteStatus::Done& done) const { return wordedReport(done); }
  std::string operator()(WriteStatus::NeedPad) const {
    return std::string(L10n::text(L10n::Key::needPad, AppLanguage::en));
  }
  std::string operator()(const Result::Error& error) const { return error.text; }
};

} // namespace

Listener JsonAccount::listener() {
  return {[](const Step&) {},
          [this](const Arrival& arrival) { out_ += jsonOf(arrival).dump() + '\n'; },
          [this](const Step& step, const Result& result) {
            const OrderedJson line{{"step", step.number},
                                   {"result", std::visit(ResultJson{}, result.value)}};
            out_ += line.dump() + '\n';
          },
          [] {}};
}

Listener WordedAccount::listener() {
  return {[this](const Step& step) { began(step); },
          [this](const Arrival& arrival) { arrived(arrival); },
          [this](const Step& step, const Result& result) { reported(step, result); },
          [this] { endLine(); }};
}

void WordedAccount::began(const Step& step) {
  endLine();
  std::array<char, 32> numberText{};
  std::snprintf(numberText.data(), numberText.size(), "%4zu  ", step.number);
  out_ += numberText.data() + std::visit(Words{}, step.action) + '\n';
}

void WordedAccount::arrived(const Arrival& arrival) {
  if (lineOf_ != arrival.source) {
    endLine();
    std::array<char, 64> head{};
    std::snprintf(head.data(), head.size(), "      %9.3f s  %-8s ", secondsOf(arrival.t),
                  std::string(rawValue(arrival.source)).c_str());
    out_ += head.data();
    lineOf_ = arrival.source;
  }
  out_ += "  " + arrival.name.text() + (isDown(arrival.kind) ? " ↓" : " ↑");
}

/// Of a result that comes later, the number of its step tells to what it belongs.
void WordedAccount::reported(const Step& step, const Result& result) {
  endLine();
  std::istringstream lines(std::visit(ResultWords{}, result.value));
  for (std::string line; std::getline(lines, line);)
    out_ += "      (" + std::to_string(step.number) + ")  " + line + '\n';
}

void WordedAccount::endLine() {
  if (lineOf_) out_ += '\n';
  lineOf_.reset();
}

} // namespace trellivar::cli::simulate
