#include "cli/simulate/account.h"

#include "cli/shortcut.h"

#include <array>
#include <cmath>
#include <cstdio>
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

} // namespace

Listener JsonAccount::listener() {
  return {[](const Step&) {},
          [this](const Arrival& arrival) { out_ += jsonOf(arrival).dump() + '\n'; },
          [this](const Step& step, const OrderedJson& result) {
            out_ += OrderedJson{{"step", step.number}, {"result", result}}.dump() + '\n';
          }};
}

Listener WordedAccount::listener() {
  return {[this](const Step& step) { began(step); },
          [this](const Arrival& arrival) { arrived(arrival); },
          [this](const Step& step, const OrderedJson& result) {
            endLine();
            out_ += "      (" + std::to_string(step.number) + ")  " + result.dump() + '\n';
          }};
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

void WordedAccount::endLine() {
  if (lineOf_) out_ += '\n';
  lineOf_.reset();
}

} // namespace trellivar::cli::simulate
