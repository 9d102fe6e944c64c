#include "core/mode_profiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar {
namespace {

TEST(ModeProfiles, areNamedInTheOrderOfTheSwitch) {
  EXPECT_EQ((std::vector<std::string>{modeNames.begin(), modeNames.end()}),
            (std::vector<std::string>{"P", "M", "R"}));
}

} // namespace
} // namespace trellivar
