#include "core/flat_map.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <utility>

namespace trellivar {
namespace {

struct Spread {
  std::uint64_t operator()(std::int64_t key) const noexcept {
    return static_cast<std::uint64_t>(key) * 0x9E3779B97F4A7C15U;
  }
};

/// Sends every key to the first slot.
struct AllFirst {
  std::uint64_t operator()(std::int64_t) const noexcept { return 0; }
};

/// Sends every key to the last slot, so that all probing wraps round.
struct AllLast {
  std::uint64_t operator()(std::int64_t) const noexcept { return UINT64_MAX; }
};

/// Sends keys to the first and the last slot.
struct TwoEnds {
  std::uint64_t operator()(std::int64_t key) const noexcept {
    return key % 2 == 0 ? 0 : UINT64_MAX;
  }
};

template <class Hash> class FlatMapTest : public testing::Test {};
using Hashes = testing::Types<Spread, AllFirst, AllLast, TwoEnds>;
TYPED_TEST_SUITE(FlatMapTest, Hashes);

TYPED_TEST(FlatMapTest, findsNothingWhileEmpty) {
  FlatMap<std::int64_t, std::string, TypeParam> map;
  EXPECT_EQ(map.find(0), nullptr);
  EXPECT_EQ(map.find(7), nullptr);
  EXPECT_EQ(std::as_const(map).find(-1), nullptr);
}

TYPED_TEST(FlatMapTest, makesAFreshValueForANewKey) {
  FlatMap<std::int64_t, int, TypeParam> map;
  EXPECT_EQ(map[5], 0);
  ASSERT_NE(map.find(5), nullptr);
  EXPECT_EQ(map.find(4), nullptr);
  EXPECT_EQ(map.find(0), nullptr);
}

TYPED_TEST(FlatMapTest, keepsOneValueForEachKey) {
  FlatMap<std::int64_t, std::string, TypeParam> map;
  map[1] = "one";
  map[2] = "two";
  map[1] = "uno";
  ASSERT_NE(map.find(1), nullptr);
  ASSERT_NE(map.find(2), nullptr);
  EXPECT_EQ(*map.find(1), "uno");
  EXPECT_EQ(*std::as_const(map).find(2), "two");
  *map.find(2) = "due";
  EXPECT_EQ(map[2], "due");
}

TYPED_TEST(FlatMapTest, findsEveryKeyAndNoOtherAtEverySize) {
  FlatMap<std::int64_t, std::int64_t, TypeParam> map;
  for (std::int64_t size = 1; size <= 70; ++size) {
    map[size * 3] = size;
    for (std::int64_t key = 1; key <= size; ++key) {
      ASSERT_NE(map.find(key * 3), nullptr) << key << " of " << size;
      EXPECT_EQ(*map.find(key * 3), key);
      EXPECT_EQ(map.find(key * 3 + 1), nullptr);
    }
    EXPECT_EQ(map.find(0), nullptr);
  }
}

TYPED_TEST(FlatMapTest, takesTheExtremeKeys) {
  FlatMap<std::int64_t, int, TypeParam> map;
  constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
  map[least] = 1;
  map[greatest] = 2;
  map[0] = 3;
  map[-1] = 4;
  EXPECT_EQ(*map.find(least), 1);
  EXPECT_EQ(*map.find(greatest), 2);
  EXPECT_EQ(*map.find(0), 3);
  EXPECT_EQ(*map.find(-1), 4);
}

TEST(FlatMap, givesKeysThatLookLikeAFreeSlotTheirOwnValue) {
  FlatMap<std::int64_t, int, Spread> map;
  EXPECT_EQ(map.find(0), nullptr);
  map[1] = 1;
  EXPECT_EQ(map.find(0), nullptr);
  map[0] = 2;
  ASSERT_NE(map.find(0), nullptr);
  EXPECT_EQ(*map.find(0), 2);
}

TEST(FlatMap, copiesAreIndependent) {
  FlatMap<std::int64_t, int, Spread> map;
  map[1] = 1;
  FlatMap<std::int64_t, int, Spread> copy = map;
  copy[1] = 2;
  copy[2] = 3;
  EXPECT_EQ(*map.find(1), 1);
  EXPECT_EQ(map.find(2), nullptr);
  EXPECT_EQ(*copy.find(1), 2);
}

/// A key that counts how often keys are compared.
struct CountingKey {
  std::int64_t number = 0;
  inline static int comparisons = 0;
  friend bool operator==(CountingKey a, CountingKey b) noexcept {
    ++comparisons;
    return a.number == b.number;
  }
};

struct SpreadCounting {
  std::uint64_t operator()(CountingKey key) const noexcept { return Spread{}(key.number); }
};

TEST(FlatMap, looksAtTwoNeighboursOnAverageHoweverManyKeysItHolds) {
  for (const int size : {10, 100, 1000, 16384}) {
    FlatMap<CountingKey, int, SpreadCounting> map;
    for (int i = 0; i < size; ++i)
      map[{i * std::int64_t{977}}] = i;
    CountingKey::comparisons = 0;
    for (int i = 0; i < size; ++i)
      EXPECT_EQ(*map.find({i * std::int64_t{977}}), i);
    EXPECT_LE(CountingKey::comparisons, 2 * size) << size;
    CountingKey::comparisons = 0;
    for (int i = 0; i < size; ++i)
      EXPECT_EQ(map.find({i * std::int64_t{977} + 1}), nullptr);
    EXPECT_LE(CountingKey::comparisons, 2 * size) << size;
  }
}

template <class Hash> void behavesLikeAnOrderedMap() {
  FlatMap<std::int64_t, int, Hash> map;
  std::map<std::int64_t, int> model;
  const auto keys = *rc::gen::container<std::vector<std::int64_t>>(
      rc::gen::oneOf(rc::gen::inRange<std::int64_t>(-5, 20), rc::gen::arbitrary<std::int64_t>()));
  int next = 0;
  for (const std::int64_t key : keys) {
    if (next % 3 == 2) {
      map[key] += 1;
      model[key] += 1;
    } else {
      map[key] = next;
      model[key] = next;
    }
    ++next;
  }
  for (const auto& [key, value] : model) {
    RC_ASSERT(map.find(key) != nullptr);
    RC_ASSERT(*map.find(key) == value);
  }
  for (std::int64_t key = -8; key < 24; ++key)
    RC_ASSERT((map.find(key) != nullptr) == model.contains(key));
}

RC_GTEST_PROP(FlatMapProperty, behavesLikeAnOrderedMap, ()) { behavesLikeAnOrderedMap<Spread>(); }
RC_GTEST_PROP(FlatMapProperty, behavesLikeAnOrderedMapWhenEveryKeyCollides, ()) {
  behavesLikeAnOrderedMap<TwoEnds>();
}

} // namespace
} // namespace trellivar
