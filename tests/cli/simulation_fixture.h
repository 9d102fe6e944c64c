#pragma once

#include "tests/cli/documents.h"
#include "tests/cli/profiles_fixture.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli {

/// The names of an object's members, in their order.
inline std::vector<std::string> memberNames(const Json& object) {
  std::vector<std::string> names;
  for (const auto& [name, value] : object.items())
    names.push_back(name);
  return names;
}

/// What a simulation told with --json.
struct Simulation {
  std::vector<Json> lines;

  std::vector<Json> arrivals() const { return with("t"); }
  std::vector<Json> reports() const { return with("step"); }

  /// The only report of a step.
  Json resultOf(int step) const {
    std::vector<Json> found;
    for (const Json& report : reports()) {
      if (report["step"] == step) found.push_back(report["result"]);
    }
    EXPECT_EQ(found.size(), 1U) << "reports of step " << step;
    return found.size() == 1 ? found.front() : Json();
  }

  /// What applications received: "engine: c+ c-", "+" for a press and "-" for a release, with a new
  /// sender each time that it changes.
  std::string heard() const {
    std::string text;
    std::string sender;
    for (const Json& arrival : arrivals()) {
      if (arrival["sender"] != sender) {
        sender = arrival["sender"].get<std::string>();
        text += (text.empty() ? "" : " | ") + sender + ":";
      }
      const std::string kind = arrival["kind"];
      text += " " + arrival["name"].get<std::string>() + (kind.ends_with("Down") ? "+" : "-");
    }
    return text;
  }

  /// What is held down in the end, as applications see it.
  std::vector<std::string> heldInTheEnd() const {
    std::map<std::string, int> down;
    for (const Json& arrival : arrivals()) {
      const std::string kind = arrival["kind"];
      down[arrival["name"].get<std::string>()] += kind.ends_with("Down") ? 1 : -1;
    }
    std::vector<std::string> held;
    for (const auto& [name, count] : down) {
      if (count != 0) held.push_back(name + " " + std::to_string(count));
    }
    return held;
  }

private:
  std::vector<Json> with(std::string_view member) const {
    std::vector<Json> found;
    for (const Json& line : lines) {
      if (line.contains(member)) found.push_back(line);
    }
    return found;
  }
};

/// Plays scripts on the simulated desk.
class SimulationTest : public ProfilesTest {
protected:
  /// A script, one step a line.
  using Script = std::vector<std::string>;
  static std::string text(const Script& script) {
    std::string result;
    for (const std::string& step : script)
      result += step + "\n";
    return result;
  }

  /// Every line has to be an arrival or a report in the fixed form, and time never runs backwards.
  Simulation play(const Script& script) const {
    return understood(run({"simulate", "--json", "-"}, text(script)));
  }
  Simulation playOnData(const Script& script) const {
    return understood(on("data", {"simulate", "--json", "-"}, text(script)));
  }
  /// In words.
  std::string told(const Script& script) const {
    const Answer answer = run({"simulate", "-"}, text(script));
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.err, "");
    return answer.out;
  }

  static Simulation understood(const Answer& answer) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.err, "");
    Simulation simulation;
    double last = 0;
    std::istringstream lines(answer.out);
    for (std::string line; std::getline(lines, line);) {
      const Json json = simulation.lines.emplace_back(Json::parse(line));
      EXPECT_EQ(json.dump(), line) << "a line is written without blanks";
      if (json.contains("step")) {
        EXPECT_EQ(memberNames(json), (Names{"step", "result"}));
        EXPECT_TRUE(json["step"].is_number_integer());
        continue;
      }
      EXPECT_EQ(memberNames(json), (Names{"t", "sender", "kind", "name", "flags"}));
      EXPECT_GE(json["t"].get<double>(), last);
      last = json["t"];
      EXPECT_TRUE(json["flags"].is_array());
    }
    return simulation;
  }

  static std::string bind(const std::string& mode, int key, const std::string& output,
                          const std::string& further = "") {
    return R"({"bind":{"mode":")" + mode + R"(","key":)" + std::to_string(key) + R"(,"output":)" +
           output + further + "}}";
  }
};

inline const std::string onCable = R"({"connect":"usb"})";
inline const std::string overBluetooth = R"({"connect":"bluetooth"})";
inline const std::string away = R"({"connect":"none"})";
inline const std::string askStatus = R"({"status":true})";
inline const std::string write = R"({"write":true})";
inline const std::string commandD = documents::chord("left_command", "d");

inline std::string mode(const std::string& id) { return R"({"mode":")" + id + R"("})"; }
inline std::string press(int key) { return R"({"press":)" + std::to_string(key) + "}"; }
inline std::string learn(int key) { return R"({"learn":)" + std::to_string(key) + "}"; }
inline std::string record(int key) { return R"({"record":)" + std::to_string(key) + "}"; }
inline std::string wait(const std::string& seconds) { return R"({"wait":)" + seconds + "}"; }

} // namespace trellivar::cli
