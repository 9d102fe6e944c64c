#pragma once

#include "tests/viewmodels/mapping_fixture.h"

#include <array>
#include <ostream>
#include <string>

namespace trellivar {

/// The moments at which learning or recording waits for something.
enum class Moment {
  engineHasNotLetGo,
  pauseBeforeTheCapture,
  firstPadCapture,
  pauseAfterOnePeriod,
  secondPadCapture,
  pauseAfterTwoPeriods,
  lastPadCapture,
  firstShortcutCapture,
  secondShortcutCapture,
  lastShortcutCapture,
};

inline constexpr std::array allMoments{
    Moment::engineHasNotLetGo,   Moment::pauseBeforeTheCapture, Moment::firstPadCapture,
    Moment::pauseAfterOnePeriod, Moment::secondPadCapture,      Moment::pauseAfterTwoPeriods,
    Moment::lastPadCapture,      Moment::firstShortcutCapture,  Moment::secondShortcutCapture,
    Moment::lastShortcutCapture,
};

inline std::string nameOf(Moment moment) {
  constexpr std::array names{
      "engineHasNotLetGo",     "pauseBeforeTheCapture", "firstPadCapture", "pauseAfterOnePeriod",
      "secondPadCapture",      "pauseAfterTwoPeriods",  "lastPadCapture",  "firstShortcutCapture",
      "secondShortcutCapture", "lastShortcutCapture",
  };
  return names.at(static_cast<std::size_t>(moment));
}
inline void PrintTo(Moment moment, std::ostream* out) { *out << nameOf(moment); }

/// A model that can be brought to each of those moments with key 1.
class MappingMoments : public MappingTest {
protected:
  static bool isLearning(Moment moment) { return moment < Moment::firstShortcutCapture; }

  void reach(Moment moment) {
    const int step = static_cast<int>(moment);
    if (!isLearning(moment)) {
      record(1);
      for (int i = static_cast<int>(Moment::firstShortcutCapture); i < step; ++i)
        capturer_->finish();
      return;
    }
    isReleased_ = moment != Moment::engineHasNotLetGo;
    learn(1);
    for (int i = static_cast<int>(Moment::firstPadCapture); i <= step; ++i) {
      const bool isCapture = i % 2 == 0;
      if (isCapture)
        nextCapture();
      else
        capturer_->finish();
    }
  }

  /// Lets all that is still under way come to its end, with keys that would be of use.
  void runOut() {
    isReleased_ = true;
    do {
      queue_.advance(Seconds(60));
      std::vector<DeviceKeyEvent> events = tap(pad, "q");
      for (const DeviceKeyEvent& event : tap(keyboard, "q"))
        events.push_back(event);
      while (!capturer_->running.empty())
        capturer_->finish(events);
    } while (queue_.pendingCount() > 0);
  }

  /// The exemption that learning brought about has been undone, once.
  Texts exemptions(Moment moment) const {
    return isLearning(moment) ? Texts{"+7:9", "-7:9"} : Texts{};
  }
};

} // namespace trellivar
