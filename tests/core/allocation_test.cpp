#include "core/tap_processor.h"
#include "tests/core/counting_new.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using SingleAction = MappingTable::SingleAction;

template <class Work> std::size_t allocationsOf(const Work& work) {
  const std::size_t before = allocationCount();
  work();
  return allocationCount() - before;
}

/// Where pointers go so that no compiler may leave their allocation out.
const volatile void* volatile seen = nullptr;

TEST(AllocationCounter, countsEveryFormOfAllocation) {
  struct alignas(64) Line {
    char bytes[64];
  };
  EXPECT_EQ(allocationsOf([] { seen = std::make_unique<int>(1).get(); }), 1U);
  EXPECT_EQ(allocationsOf([] { seen = std::make_unique<int[]>(100).get(); }), 1U);
  EXPECT_EQ(allocationsOf([] { seen = std::make_unique<Line>().get(); }), 1U);
  EXPECT_EQ(allocationsOf([] { seen = std::make_unique<Line[]>(3).get(); }), 1U);
  EXPECT_EQ(allocationsOf([] { seen = std::vector<int>(10).data(); }), 1U);
  EXPECT_EQ(allocationsOf([] { seen = std::make_shared<std::string>(100, 'x').get(); }), 2U);
  EXPECT_EQ(allocationsOf([] {
              void* const memory = ::operator new(8, std::nothrow);
              seen = memory;
              ::operator delete(memory);
            }),
            1U);
  EXPECT_EQ(allocationsOf([] { seen = nullptr; }), 0U);
}

TEST(AllocationCounter, seesAListOfEventsOutgrowItsInside) {
  const auto fill = [event = down("a")](int count) {
    TapEvents events;
    for (int i = 0; i < count; ++i)
      events.push_back(event);
    seen = events.begin();
  };
  EXPECT_EQ(allocationsOf([&] { fill(8); }), 0U);
  EXPECT_EQ(allocationsOf([&] { fill(9); }), 1U);
}

/// A processor with several pads and a full table. Each test plays a scene over and over, checks
/// that the scene is the one it means, and counts once everything is warm.
class AllocationTest : public testing::Test {
protected:
  static constexpr DeviceIdentity pad{0x1001, 1};
  static constexpr std::int64_t sender = 7;
  static constexpr std::int64_t stranger = 8;

  AllocationTest() {
    MappingTable table;
    MappingTable::CompiledIdentity& entry = table.identities[pad];
    addChord(entry, {"left_control", "f"});
    // Twenty chords of three that all share two members; the last one is the one that is played.
    for (int i = 0; i < 20; ++i)
      addChord(entry, {"left_shift", "left_option", "k" + std::to_string(i)});
    entry.singles.insert_or_assign(KeyName("spacebar"), SingleAction{SingleAction::Fire{output()}});
    entry.singles.insert_or_assign(KeyName("swallowed"), SingleAction{SingleAction::Swallow{}});
    entry.normalization.emplace(KeyName("right_command"), KeyName("left_command"));
    processor.setTable(std::move(table));
    processor.setSenders({{sender, pad}, {100, pad}, {101, pad}});
  }

  static CompiledOutput output() {
    return CompiledOutput(Output{Output::Chord{{Modifier::command, Modifier::shift}, key("v")}});
  }
  static void addChord(MappingTable::CompiledIdentity& entry,
                       std::initializer_list<std::string> names) {
    MappingTable::ChordTrigger trigger{{}, output()};
    for (const std::string& name : names)
      trigger.members.insert(KeyName(name));
    entry.chords.push_back(std::move(trigger));
  }

  struct Step {
    TapEvent event;
    double after = 0; ///< seconds since the step before
  };
  static Step press(std::string_view name) { return {down(name, sender), 0.01}; }
  static Step release(std::string_view name) { return {up(name, sender), 0.01}; }

  /// Plays the scene and returns the number of actions of each kind, by `TapAction` index.
  std::vector<int> play(const std::vector<Step>& scene) {
    std::vector<int> kinds(5);
    for (const Step& step : scene) {
      now_ += step.after;
      for (const TapAction& action : processor.process(step.event, Instant(Seconds(now_))))
        ++kinds[action.value.index()];
    }
    return kinds;
  }

  std::size_t allocationsOfPlaying(const std::vector<Step>& scene) {
    for (int warmUp = 0; warmUp < 3; ++warmUp)
      play(scene);
    return allocationsOf([&] {
      for (int i = 0; i < 100; ++i) {
        for (const Step& step : scene) {
          now_ += step.after;
          processor.process(step.event, Instant(Seconds(now_)));
        }
      }
    });
  }

  /// pass, suppress, rewrite, post, replay
  static std::vector<int> counts(int pass, int suppress, int rewrite, int post, int replay) {
    return {pass, suppress, rewrite, post, replay};
  }

  TapProcessor processor{Seconds(0.5)};
  double now_ = 0;
};

TEST_F(AllocationTest, anUnknownSenderAllocatesNothing) {
  const std::vector<Step> scene{{down("spacebar", stranger)}, {up("spacebar", stranger)}};
  EXPECT_EQ(play(scene), counts(2, 0, 0, 0, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, anUnboundKeyAllocatesNothing) {
  const std::vector<Step> scene{press("q"), release("q")};
  EXPECT_EQ(play(scene), counts(2, 0, 0, 0, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aSingleAllocatesNothing) {
  const std::vector<Step> scene{press("spacebar"), release("spacebar")};
  EXPECT_EQ(play(scene), counts(0, 2, 0, 1, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, autoRepeatAllocatesNothing) {
  std::vector<Step> scene(50, press("spacebar"));
  scene.push_back(release("spacebar"));
  EXPECT_EQ(play(scene), counts(0, 51, 0, 1, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aSwallowedKeyAllocatesNothing) {
  const std::vector<Step> scene{press("swallowed"), release("swallowed")};
  EXPECT_EQ(play(scene), counts(0, 2, 0, 0, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aChordOfTwoAllocatesNothing) {
  const std::vector<Step> scene{press("left_control"), press("f"), release("f"),
                                release("left_control")};
  EXPECT_EQ(play(scene), counts(0, 4, 0, 1, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aChordOfThreeAmongTwentyAllocatesNothing) {
  const std::vector<Step> scene{press("left_shift"), press("left_option"),  press("k19"),
                                release("k19"),      release("left_shift"), release("left_option")};
  EXPECT_EQ(play(scene), counts(0, 6, 0, 1, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aMemberOfAChordTappedAloneAllocatesNothing) {
  const std::vector<Step> scene{press("f"), release("f")};
  EXPECT_EQ(play(scene), counts(0, 2, 0, 0, 1));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aHoldThatAnUnboundKeyEndsAllocatesNothing) {
  const std::vector<Step> scene{press("left_shift"), press("left_option"),  press("q"),
                                release("q"),        release("left_shift"), release("left_option")};
  EXPECT_EQ(play(scene), counts(3, 3, 0, 0, 1));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, anOverdueHoldBeforeASingleAllocatesNothing) {
  const std::vector<Step> scene{press("f"), {down("spacebar", sender), 0.6}, release("spacebar")};
  EXPECT_EQ(play(scene), counts(0, 3, 0, 1, 1));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, aNormalizedModifierAllocatesNothing) {
  const std::vector<Step> scene{press("right_command"), release("right_command")};
  EXPECT_EQ(play(scene), counts(0, 0, 2, 0, 0));
  EXPECT_EQ(allocationsOfPlaying(scene), 0U);
}

TEST_F(AllocationTest, flushingAHeldKeyAllocatesNothing) {
  const TapEvent held = down("f", sender);
  const TapEvent released = up("f", sender);
  std::size_t replays = 0;
  const auto scene = [&] {
    now_ += 1;
    processor.process(held, Instant(Seconds(now_)));
    now_ += 0.5;
    replays += processor.flush(Instant(Seconds(now_))).size();
    processor.process(released, Instant(Seconds(now_)));
  };
  for (int warmUp = 0; warmUp < 3; ++warmUp)
    scene();
  EXPECT_EQ(replays, 3U);
  EXPECT_EQ(allocationsOf([&] {
              for (int i = 0; i < 100; ++i)
                scene();
            }),
            0U);
}

TEST_F(AllocationTest, askingForTheDeadlineAllocatesNothing) {
  bool isSet = false;
  EXPECT_EQ(allocationsOf([&] { isSet = processor.nextDeadline().has_value(); }), 0U);
  EXPECT_FALSE(isSet);
  play({press("f")});
  EXPECT_EQ(allocationsOf([&] { isSet = processor.nextDeadline().has_value(); }), 0U);
  EXPECT_TRUE(isSet);
}

} // namespace
} // namespace trellivar
