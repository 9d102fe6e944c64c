#include "core/cg_keycode_map.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

TEST(CGKeycodeMap, findsModifierKeysThroughTheModifierTable) {
  EXPECT_EQ(CGKeycodeMap::keyCode("right_option"), 61);
}

} // namespace
} // namespace trellivar
