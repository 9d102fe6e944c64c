#pragma once

#include "engine/orlo3_link.h"
#include "simulator/desk/manual_queue.h"
#include "viewmodels/portable_write_view_model.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

inline void PrintTo(const WriteStatus& status, std::ostream* out) {
  constexpr const char* names[] = {"idle", "writing", "need pad", "error", "done"};
  *out << names[status.value.index()];
  if (const auto* error = std::get_if<WriteStatus::Error>(&status.value))
    *out << ": " << error->message;
  if (const auto* finished = std::get_if<WriteStatus::Done>(&status.value)) {
    *out << ": " << finished->firmware;
    for (const std::string& mode : finished->modes)
      *out << ' ' << mode;
  }
}

/// A pad that takes everything, or fails as it is told to.
class ScriptedLink final : public Orlo3Linking {
public:
  using Lines = std::vector<std::string>;

  std::vector<Lines> writes; ///< the lines of each write
  std::function<std::string()> answer = [] { return "1.0.7"; };

  std::optional<std::string> discoverPort() override { return std::nullopt; }
  std::optional<Orlo3Reply> query(std::string_view, double) override { return std::nullopt; }
  std::string writeMacros(const Lines& lines) override {
    writes.push_back(lines);
    return answer();
  }
};

/// A background on which nothing happens before the test says so.
class HeldBackground final : public BackgroundQueue {
public:
  std::deque<std::function<void()>> blocks; ///< the oldest first

  void async(std::function<void()> block) override { blocks.push_back(std::move(block)); }

  void runOldest() {
    ASSERT_FALSE(blocks.empty()) << "nothing is to be done";
    const auto block = std::move(blocks.front());
    blocks.pop_front();
    block();
  }
  void runNewest() {
    ASSERT_FALSE(blocks.empty()) << "nothing is to be done";
    const auto block = std::move(blocks.back());
    blocks.pop_back();
    block();
  }
};

struct PortableWriteFixture : testing::Test {
  using Lines = ScriptedLink::Lines;
  using Writes = std::vector<Lines>;
  using Skipped = std::map<std::string, std::vector<int>>;

  static inline const WriteStatus idle{WriteStatus::Idle{}};
  static inline const WriteStatus writing{WriteStatus::Writing{}};
  static inline const WriteStatus needPad{WriteStatus::NeedPad{}};
  static WriteStatus error(std::string message) { return {WriteStatus::Error{std::move(message)}}; }
  static WriteStatus done(Lines modes, Skipped skipped = {}, std::string firmware = "1.0.7") {
    return {WriteStatus::Done{std::move(firmware), std::move(modes), std::move(skipped)}};
  }

  desk::ManualQueue queue;
  HeldBackground background;
  std::shared_ptr<ScriptedLink> link = std::make_shared<ScriptedLink>();
  Lines reports;
  std::shared_ptr<PortableWriteViewModel> model = PortableWriteViewModel::make(
      {queue, background, link, [this](std::string_view what) { reports.emplace_back(what); }});

  /// Binds a key to one that is tapped.
  static KeyMapping tap(int keyId, std::string_view name) {
    return {keyId, {Output::Sequence{{Key{KeyName(name)}}}}, std::nullopt};
  }
  /// Binds a key to something that the firmware has no equivalent for.
  static KeyMapping unmappable(int keyId) {
    const Key mute{KeyName("mute"), Key::Kind::consumerKeyCode};
    return {keyId, {Output::Chord{{}, mute}}, std::nullopt};
  }
  /// One mode with one binding.
  static std::vector<ModeBindings> only(std::string mode) {
    return {{std::move(mode), {tap(1, "a")}}};
  }
  /// The command for a key that taps one letter.
  static std::string line(int keyId, const std::string& mode, char letter) {
    const std::string name(1, letter);
    const std::string payload = R"("k":")" + name + R"(","c":)" + std::to_string(int{letter}) + "}";
    return R"({"o":"set","k":)" + std::to_string(keyId) +
           R"(,"m":"keyboard","e":"click","v":[{"t":"down",)" + payload +
           R"(,{"t":"wait","ms":30},{"t":"up",)" + payload + R"(],"r":1,"s":")" + mode + R"("})";
  }

  /// Writes and waits for the end.
  WriteStatus write(std::vector<ModeBindings> modes) {
    model->writeAll(std::move(modes));
    background.runOldest();
    queue.run();
    return *model->status();
  }
};

} // namespace trellivar
