#include "simulator/desk/registry.h"

#include <gtest/gtest.h>

#include <utility>

namespace trellivar::desk {
namespace {

Entry entry(std::vector<std::string> classes, std::map<std::string, Property> properties = {}) {
  Entry result;
  result.classes = std::move(classes);
  result.properties = std::move(properties);
  return result;
}

class DeskRegistryTest : public testing::Test {
protected:
  Registry registry;
  EntryId root = registry.add(0, entry({"Root", "Service"}));
  EntryId left = registry.add(root, entry({"Left", "Service"}, {{"Name", std::string("left")}}));
  EntryId right = registry.add(root, entry({"Right", "Service"}));
  EntryId leaf = registry.add(left, entry({"Leaf", "Left", "Service"}));
};

TEST_F(DeskRegistryTest, anEntryIsOfItsClassAndOfThoseThatItDerivesFrom) {
  EXPECT_TRUE(registry.find(leaf)->isA("Leaf"));
  EXPECT_TRUE(registry.find(leaf)->isA("Service"));
  EXPECT_FALSE(registry.find(leaf)->isA("Right"));
  EXPECT_EQ(registry.ofClass("Left"), (std::vector{left, leaf}));
  EXPECT_EQ(registry.all(), (std::vector{root, left, right, leaf}));
}

TEST_F(DeskRegistryTest, entriesKnowTheirParentsAndChildren) {
  EXPECT_EQ(registry.find(root)->parent, 0U);
  EXPECT_EQ(registry.find(leaf)->parent, left);
  EXPECT_EQ(registry.find(root)->children, (std::vector{left, right}));
  EXPECT_EQ(registry.descendants(root), (std::vector{left, leaf, right}));
  EXPECT_TRUE(registry.descendants(leaf).empty());
  EXPECT_TRUE(registry.descendants(leaf + 100).empty());
}

TEST_F(DeskRegistryTest, propertiesAreThoseOfTheEntryItself) {
  ASSERT_NE(registry.property(left, "Name"), nullptr);
  EXPECT_EQ(std::get<std::string>(*registry.property(left, "Name")), "left");
  EXPECT_EQ(registry.property(leaf, "Name"), nullptr);
  EXPECT_EQ(registry.property(leaf + 100, "Name"), nullptr);
}

TEST_F(DeskRegistryTest, anEntryGoesWithAllBelowIt) {
  registry.remove(left);
  EXPECT_EQ(registry.find(left), nullptr);
  EXPECT_EQ(registry.find(leaf), nullptr);
  EXPECT_EQ(registry.find(root)->children, (std::vector{right}));
  registry.remove(left);
}

TEST_F(DeskRegistryTest, idsAreNotUsedAgain) {
  registry.remove(leaf);
  EXPECT_GT(registry.add(left, entry({"Leaf"})), leaf);
}

using Seen = std::vector<std::pair<Registry::Change, EntryId>>;

TEST_F(DeskRegistryTest, observersHearOfEveryEntryTheLeavesFirst) {
  Seen seen;
  const auto handle = registry.observe([&](Registry::Change change, const Entry& changed) {
    seen.emplace_back(change, changed.id);
    EXPECT_EQ(registry.find(changed.id) != nullptr, change == Registry::Change::appeared);
  });
  const EntryId added = registry.add(right, entry({"Leaf"}));
  registry.remove(left);
  EXPECT_EQ(seen, (Seen{{Registry::Change::appeared, added},
                        {Registry::Change::disappeared, leaf},
                        {Registry::Change::disappeared, left}}));
}

TEST_F(DeskRegistryTest, whatDisappearsComesWithItsLastState) {
  std::string name;
  const auto handle = registry.observe([&](Registry::Change, const Entry& gone) {
    if (gone.id == left) name = std::get<std::string>(gone.properties.at("Name"));
  });
  registry.remove(left);
  EXPECT_EQ(name, "left");
}

TEST_F(DeskRegistryTest, anObserverEndsWithItsHandle) {
  int calls = 0;
  auto handle = registry.observe([&](Registry::Change, const Entry&) { ++calls; });
  registry.add(0, entry({"Root"}));
  handle.reset();
  registry.add(0, entry({"Root"}));
  EXPECT_EQ(calls, 1);
}

TEST_F(DeskRegistryTest, anObserverMayEndAnotherOne) {
  int calls = 0;
  std::shared_ptr<void> second;
  const auto first = registry.observe([&](Registry::Change, const Entry&) { second.reset(); });
  second = registry.observe([&](Registry::Change, const Entry&) { ++calls; });
  registry.add(0, entry({"Root"}));
  EXPECT_EQ(calls, 0);
}

TEST_F(DeskRegistryTest, everyChangeMakesANewGeneration) {
  const auto before = registry.generation();
  const EntryId added = registry.add(0, entry({"Root"}));
  const auto between = registry.generation();
  EXPECT_NE(between, before);
  registry.remove(added);
  EXPECT_NE(registry.generation(), between);
}

} // namespace
} // namespace trellivar::desk
