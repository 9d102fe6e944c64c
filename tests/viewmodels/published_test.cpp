#include "viewmodels/published.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar {
namespace {

TEST(Published, announcesAChangeBeforeItIsStored) {
  Published<int> count{1};
  std::vector<std::string> seen;
  const Subscription subscription = count.willChange([&](int next) {
    seen.push_back(std::to_string(*count) + " becomes " + std::to_string(next));
  });
  count.set(2);
  count.set(3);
  EXPECT_EQ(seen, (std::vector<std::string>{"1 becomes 2", "2 becomes 3"}));
  EXPECT_EQ(*count, 3);
}

} // namespace
} // namespace trellivar
