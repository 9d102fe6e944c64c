#include "core/inline_vector.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Numbers = InlineVector<int, 3>;

std::vector<int> contents(const Numbers& numbers) { return {numbers.begin(), numbers.end()}; }

/// The numbers 1 to `count`.
Numbers counted(int count) {
  Numbers numbers;
  for (int i = 1; i <= count; ++i)
    numbers.push_back(i);
  return numbers;
}

std::vector<int> expected(int count) {
  std::vector<int> numbers;
  for (int i = 1; i <= count; ++i)
    numbers.push_back(i);
  return numbers;
}

template <class List> bool livesInsideItself(const List& list) {
  const auto begin = reinterpret_cast<std::uintptr_t>(&list);
  const auto data = reinterpret_cast<std::uintptr_t>(list.begin());
  return data >= begin && data < begin + sizeof(list);
}

/// On both sides of the inline capacity of three, and of the first two growths.
constexpr int sizes[] = {0, 1, 2, 3, 4, 6, 7, 12, 13};

TEST(InlineVector, startsEmpty) {
  const Numbers numbers;
  EXPECT_TRUE(numbers.empty());
  EXPECT_EQ(numbers.size(), 0U);
  EXPECT_EQ(numbers.begin(), numbers.end());
}

TEST(InlineVector, takesTheItemsOfAnInitializerListInOrder) {
  EXPECT_EQ(contents({}), expected(0));
  EXPECT_EQ(contents({1, 2, 3}), expected(3));
  EXPECT_EQ(contents({1, 2, 3, 4, 5}), expected(5));
}

TEST(InlineVector, keepsItemsInOrderBeyondItsInlineCapacity) {
  for (const int size : sizes) {
    const Numbers numbers = counted(size);
    EXPECT_EQ(contents(numbers), expected(size));
    EXPECT_EQ(numbers.size(), static_cast<std::size_t>(size));
    EXPECT_EQ(numbers.empty(), size == 0);
  }
}

TEST(InlineVector, givesItemsByIndexAndTheLastOne) {
  for (const int size : {1, 3, 4, 13}) {
    Numbers numbers = counted(size);
    for (int i = 0; i < size; ++i) {
      EXPECT_EQ(numbers[static_cast<std::size_t>(i)], i + 1);
      EXPECT_EQ(std::as_const(numbers)[static_cast<std::size_t>(i)], i + 1);
    }
    EXPECT_EQ(numbers.back(), size);
    numbers.back() = 99;
    EXPECT_EQ(numbers[static_cast<std::size_t>(size - 1)], 99);
  }
}

TEST(InlineVector, leavesTheInsideOfItselfOnlyForMoreThanItsCapacity) {
  EXPECT_TRUE(livesInsideItself(counted(0)));
  EXPECT_TRUE(livesInsideItself(counted(3)));
  EXPECT_FALSE(livesInsideItself(counted(4)));
}

TEST(InlineVector, keepsWhatItHasGrownToWhenCleared) {
  Numbers numbers = counted(7);
  const int* const grown = numbers.begin();
  numbers.clear();
  EXPECT_TRUE(numbers.empty());
  for (int i = 1; i <= 7; ++i)
    numbers.push_back(i);
  EXPECT_EQ(numbers.begin(), grown);
  EXPECT_EQ(contents(numbers), expected(7));
}

TEST(InlineVector, appendsAnyRange) {
  Numbers numbers{1, 2};
  numbers.append(std::vector{3, 4, 5});
  numbers.append(std::vector<int>{});
  numbers.append(Numbers{6});
  EXPECT_EQ(contents(numbers), expected(6));
}

TEST(InlineVector, takesACopyOfItsOwnItemEvenWhileItGrows) {
  InlineVector<std::string, 2> texts{"the first text, too long to be kept inside a string",
                                     "second"};
  texts.push_back(texts[0]);
  EXPECT_EQ(texts[2], "the first text, too long to be kept inside a string");
  EXPECT_EQ(texts[0], texts[2]);
}

TEST(InlineVector, copiesAreIndependent) {
  for (const int size : sizes) {
    Numbers original = counted(size);
    Numbers copy(original);
    EXPECT_EQ(contents(copy), expected(size));
    original.push_back(-1);
    EXPECT_EQ(contents(copy), expected(size));
    copy.clear();
    EXPECT_EQ(original.size(), static_cast<std::size_t>(size) + 1);
  }
}

TEST(InlineVector, movingLeavesAnEmptyListThatCanBeUsedAgain) {
  for (const int size : sizes) {
    Numbers original = counted(size);
    const Numbers moved(std::move(original));
    EXPECT_EQ(contents(moved), expected(size));
    EXPECT_TRUE(original.empty()); // NOLINT(bugprone-use-after-move): defined here
    EXPECT_TRUE(livesInsideItself(original));
    original.append(expected(5));
    EXPECT_EQ(contents(original), expected(5));
    EXPECT_EQ(contents(moved), expected(size));
  }
}

TEST(InlineVector, movingAGrownListHandsItsMemoryOn) {
  Numbers original = counted(4);
  const int* const grown = original.begin();
  const Numbers moved(std::move(original));
  EXPECT_EQ(moved.begin(), grown);
}

TEST(InlineVector, assignmentReplacesWhatWasThere) {
  for (const int from : sizes) {
    for (const int to : sizes) {
      SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
      const Numbers source = counted(from);
      Numbers copied = counted(to);
      copied = source;
      EXPECT_EQ(contents(copied), expected(from));
      EXPECT_EQ(contents(source), expected(from));

      Numbers gone = counted(from);
      Numbers moved = counted(to);
      moved = std::move(gone);
      EXPECT_EQ(contents(moved), expected(from));
      EXPECT_TRUE(gone.empty()); // NOLINT(bugprone-use-after-move): defined here
      moved.push_back(from + 1);
      EXPECT_EQ(contents(moved), expected(from + 1));
    }
  }
}

TEST(InlineVector, survivesAssignmentToItself) {
  for (const int size : sizes) {
    Numbers numbers = counted(size);
    Numbers& same = numbers;
    numbers = same;
    EXPECT_EQ(contents(numbers), expected(size));
    numbers = std::move(same);
    EXPECT_EQ(contents(numbers), expected(size));
  }
}

TEST(InlineVector, erasesAnItemByPuttingTheLastInItsPlace) {
  Numbers numbers = counted(5);
  numbers.eraseUnordered(numbers.begin() + 1);
  EXPECT_EQ(contents(numbers), (std::vector{1, 5, 3, 4}));
  numbers.eraseUnordered(numbers.end() - 1);
  EXPECT_EQ(contents(numbers), (std::vector{1, 5, 3}));
  numbers.eraseUnordered(numbers.begin());
  EXPECT_EQ(contents(numbers), (std::vector{3, 5}));
}

TEST(InlineVector, erasesWhatSatisfiesAConditionAndAsksOnceForEveryItem) {
  Numbers numbers = counted(6);
  std::vector<int> asked;
  numbers.eraseUnorderedIf([&](int number) {
    asked.push_back(number);
    return number == 1 || number == 6 || number == 3;
  });
  EXPECT_EQ(contents(numbers), (std::vector{5, 2, 4}));
  std::ranges::sort(asked);
  EXPECT_EQ(asked, expected(6));
}

TEST(InlineVector, erasesNothingOrEverythingAsTheConditionSays) {
  for (const int size : sizes) {
    Numbers numbers = counted(size);
    numbers.eraseUnorderedIf([](int) { return false; });
    EXPECT_EQ(contents(numbers), expected(size));
    numbers.eraseUnorderedIf([](int) { return true; });
    EXPECT_TRUE(numbers.empty());
    numbers.push_back(1);
    EXPECT_EQ(contents(numbers), expected(1));
  }
}

RC_GTEST_PROP(InlineVectorProperty, keepsExactlyWhatDoesNotSatisfyTheCondition,
              (std::vector<int> items, int divisor)) {
  const auto isUnwanted = [&](int item) { return divisor != 0 && item / 2 % divisor == 0; };
  Numbers numbers;
  numbers.append(items);
  numbers.eraseUnorderedIf(isUnwanted);
  std::erase_if(items, isUnwanted);
  std::vector<int> left = contents(numbers);
  std::ranges::sort(left);
  std::ranges::sort(items);
  RC_ASSERT(left == items);
}

TEST(InlineVector, isEqualWhenItsItemsAreWhereverTheyLive) {
  EXPECT_EQ(counted(3), counted(3));
  EXPECT_NE(counted(3), counted(2));
  EXPECT_NE(counted(2), counted(3));
  EXPECT_NE((Numbers{1, 2}), (Numbers{2, 1}));
  Numbers grown = counted(7);
  grown.clear();
  EXPECT_EQ(grown, Numbers{});
  grown.append(expected(2));
  EXPECT_EQ(grown, counted(2));
}

TEST(InlineVector, holdsItemsThatCanOnlyBeMoved) {
  InlineVector<std::unique_ptr<int>, 2> owners;
  for (int i = 0; i < 5; ++i)
    owners.push_back(std::make_unique<int>(i));
  const InlineVector<std::unique_ptr<int>, 2> moved(std::move(owners));
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(*moved[static_cast<std::size_t>(i)], i);
}

TEST(InlineVector, keepsTheAlignmentOfItsItems) {
  struct alignas(64) Line {
    int number = 0;
  };
  InlineVector<Line, 2> lines;
  for (int i = 0; i < 5; ++i) {
    lines.push_back({i});
    for (const Line& line : lines)
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&line) % 64, 0U);
  }
}

/// Knows how many of its kind are alive, and holds a text on the heap so that a sanitizer sees any
/// item that is destroyed twice, never, or used afterwards.
class Counted {
public:
  explicit Counted(int number) : text_(std::to_string(number) + std::string(40, '.')) { ++alive; }
  Counted(const Counted& other) : text_(other.text_) { ++alive; }
  Counted(Counted&& other) noexcept : text_(std::move(other.text_)) { ++alive; }
  Counted& operator=(const Counted&) = default;
  Counted& operator=(Counted&&) = default;
  ~Counted() { --alive; }
  bool operator==(const Counted&) const = default;
  bool isOdd() const { return (text_.at(text_.size() - 41) - '0') % 2 != 0; }

  inline static int alive = 0;

private:
  std::string text_;
};

RC_GTEST_PROP(InlineVectorProperty, behavesLikeAnOrdinaryListAndEndsEveryItemOnce, ()) {
  const int before = Counted::alive;
  {
    InlineVector<Counted, 3> list;
    InlineVector<Counted, 3> other;
    std::vector<Counted> model;
    std::vector<Counted> otherModel;
    const auto steps = *rc::gen::container<std::vector<int>>(
        rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, 13)));
    int next = 0;
    for (const int step : steps) {
      switch (step) {
      case 6:
        list.clear();
        model.clear();
        break;
      case 7:
        if (model.empty()) break;
        list.eraseUnordered(list.begin() + static_cast<std::ptrdiff_t>(model.size() / 2));
        std::swap(model[model.size() / 2], model.back());
        model.pop_back();
        break;
      case 8:
        other = list;
        otherModel = model;
        break;
      case 9:
        other = std::move(list);
        otherModel = std::exchange(model, {});
        list.clear();
        break;
      case 10:
        std::swap(list, other);
        std::swap(model, otherModel);
        break;
      case 11:
        list.append(other);
        model.insert(model.end(), otherModel.begin(), otherModel.end());
        if (model.size() > 200) {
          list.clear();
          model.clear();
        }
        break;
      case 12: {
        const auto isOdd = [](const Counted& each) { return each.isOdd(); };
        list.eraseUnorderedIf(isOdd);
        for (std::size_t i = 0; i < model.size();) {
          if (!model[i].isOdd()) {
            ++i;
            continue;
          }
          std::swap(model[i], model.back());
          model.pop_back();
        }
        break;
      }
      default:
        list.push_back(Counted(next));
        model.emplace_back(next);
        ++next;
      }
      RC_ASSERT(std::vector<Counted>(list.begin(), list.end()) == model);
      RC_ASSERT(std::vector<Counted>(other.begin(), other.end()) == otherModel);
      RC_ASSERT(Counted::alive - before ==
                static_cast<int>(2 * (model.size() + otherModel.size())));
    }
  }
  RC_ASSERT(Counted::alive == before);
}

TEST(InlineVector, endsTheItemsItHasCopiedWhenTheNextCopyFails) {
  struct Fragile {
    std::shared_ptr<int> tracker;
    bool isBroken = false;
    Fragile(std::shared_ptr<int> each, bool broken) : tracker(std::move(each)), isBroken(broken) {}
    Fragile(const Fragile& other) : tracker(other.tracker), isBroken(other.isBroken) {
      if (isBroken) throw std::runtime_error("broken");
    }
    Fragile(Fragile&&) noexcept = default;
  };
  const auto tracker = std::make_shared<int>();
  {
    InlineVector<Fragile, 2> original;
    for (const bool isBroken : {false, false, false, true})
      original.push_back(Fragile(tracker, isBroken));
    EXPECT_THROW((InlineVector<Fragile, 2>(original)), std::runtime_error);
    EXPECT_EQ(tracker.use_count(), 5);
  }
  EXPECT_EQ(tracker.use_count(), 1);
}

} // namespace
} // namespace trellivar
