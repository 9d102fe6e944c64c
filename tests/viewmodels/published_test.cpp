#include "viewmodels/published.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

TEST(Published, announcesAChangeBeforeItIsStored) {
  Published<int> count{1};
  Texts seen;
  const Subscription subscription = count.willChange([&](int next) {
    seen.push_back(std::to_string(*count) + " becomes " + std::to_string(next));
  });
  count.set(2);
  count.set(3);
  EXPECT_EQ(seen, (Texts{"1 becomes 2", "2 becomes 3"}));
  EXPECT_EQ(*count, 3);
}

TEST(Published, startsWithTheValueItIsGivenOrAnEmptyOne) {
  EXPECT_EQ(*Published<int>(7), 7);
  EXPECT_EQ(*Published<int>(), 0);
  EXPECT_EQ(*Published<std::optional<int>>(), std::nullopt);
}

TEST(Published, readsLikeAPointer) {
  const Published<std::string> text{"abc"};
  EXPECT_EQ(text->size(), 3U);
  EXPECT_EQ(*text, "abc");
}

TEST(Published, anEqualValueIsNoChange) {
  Published<std::string> text{"a"};
  int announcements = 0;
  const Subscription subscription =
      text.willChange([&](const std::string& /*next*/) { ++announcements; });
  text.set("a");
  EXPECT_EQ(announcements, 0);
  text.set("b");
  text.set("b");
  EXPECT_EQ(announcements, 1);
}

TEST(Published, aValueThatComesBackIsAChangeEachTime) {
  Published<bool> flag;
  Numbers seen;
  const Subscription subscription = flag.willChange([&](bool next) { seen.push_back(next); });
  for (const bool next : {true, false, true})
    flag.set(next);
  EXPECT_EQ(seen, (Numbers{1, 0, 1}));
}

TEST(Published, keepsAValueThatIsSetFromItself) {
  Published<std::vector<std::string>> texts{{"a", "b"}};
  texts.set(*texts);
  EXPECT_EQ(*texts, (Texts{"a", "b"}));
}

TEST(Published, tellsThoseWhoAskedEarlierEarlier) {
  Published<int> count;
  Numbers order;
  const auto first = count.willChange([&](int /*next*/) { order.push_back(1); });
  auto second = count.willChange([&](int /*next*/) { order.push_back(2); });
  const auto third = count.willChange([&](int /*next*/) { order.push_back(3); });
  count.set(1);
  second = count.willChange([&](int /*next*/) { order.push_back(4); });
  count.set(2);
  EXPECT_EQ(order, (Numbers{1, 2, 3, 1, 3, 4}));
}

TEST(Published, aSubscriptionEndsWithItsOwner) {
  Published<int> count;
  Numbers seen;
  {
    const auto subscription = count.willChange([&](int next) { seen.push_back(next); });
    count.set(1);
  }
  count.set(2);
  EXPECT_EQ(seen, Numbers{1});
}

TEST(Published, aSubscriptionLastsAsLongAsAnyOfItsOwners) {
  Published<int> count;
  Numbers seen;
  auto one = count.willChange([&](int next) { seen.push_back(next); });
  Subscription other = one;
  one.reset();
  count.set(1);
  other.reset();
  count.set(2);
  EXPECT_EQ(seen, Numbers{1});
}

TEST(Published, letsGoOfAnObserverWithItsSubscription) {
  Published<int> count;
  const auto held = std::make_shared<int>(1);
  auto subscription = count.willChange([held](int /*next*/) {});
  EXPECT_EQ(held.use_count(), 2);
  subscription.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(Published, aSubscriptionMayOutliveTheValue) {
  Subscription subscription;
  {
    const Published<int> count;
    subscription = count.willChange([](int /*next*/) {});
  }
  EXPECT_NO_THROW(subscription.reset());
}

TEST(Published, aConstantViewCanBeObserved) {
  Published<int> count;
  const Published<int>& view = count;
  int seen = 0;
  const auto subscription = view.willChange([&](int next) { seen = next; });
  count.set(5);
  EXPECT_EQ(seen, 5);
  EXPECT_EQ(*view, 5);
}

TEST(Published, whoSubscribesDuringAnAnnouncementHearsOfTheNextChange) {
  Published<int> count;
  Numbers seen;
  std::vector<Subscription> added;
  const auto subscription = count.willChange([&](int /*next*/) {
    if (added.empty()) added.push_back(count.willChange([&](int next) { seen.push_back(next); }));
  });
  count.set(1);
  EXPECT_EQ(seen, Numbers{});
  count.set(2);
  EXPECT_EQ(seen, Numbers{2});
}

TEST(Published, manyMaySubscribeDuringAnAnnouncement) {
  Published<int> count;
  std::vector<Subscription> added;
  int later = 0;
  const auto first = count.willChange([&](int /*next*/) {
    for (int i = 0; i < 100; ++i)
      added.push_back(count.willChange([](int /*next*/) {}));
  });
  const auto last = count.willChange([&](int /*next*/) { ++later; });
  count.set(1);
  EXPECT_EQ(later, 1) << "those who come before are told all the same";
}

TEST(Published, whoIsUnsubscribedDuringAnAnnouncementHearsNothingMore) {
  Published<int> count;
  Numbers seen;
  Subscription second;
  const auto first = count.willChange([&](int /*next*/) { second.reset(); });
  second = count.willChange([&](int next) { seen.push_back(next); });
  const auto third = count.willChange([&](int next) { seen.push_back(10 * next); });
  count.set(1);
  EXPECT_EQ(seen, Numbers{10});
}

TEST(Published, anObserverMayEndItsOwnSubscription) {
  Published<int> count;
  Texts seen;
  Subscription own;
  own = count.willChange([&own, &seen, kept = std::string("still there")](int next) {
    own.reset();
    seen.push_back(kept + " at " + std::to_string(next));
  });
  count.set(1);
  count.set(2);
  EXPECT_EQ(seen, Texts{"still there at 1"});
}

TEST(Published, anObserverMaySetAnotherValue) {
  Published<int> count;
  Published<int> twice;
  Numbers seen;
  const auto doubling = count.willChange([&](int next) { twice.set(2 * next); });
  const auto noting = twice.willChange([&](int next) { seen.push_back(next + *count); });
  count.set(1);
  count.set(2);
  EXPECT_EQ(seen, (Numbers{2, 5})) << "the first value is still the old one";
}

} // namespace
} // namespace trellivar
