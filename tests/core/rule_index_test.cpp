#include "core/rule_index.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using words::tapOf;
using SingleAction = MappingTable::SingleAction;

MappingTable::ChordTrigger trigger(std::initializer_list<std::string_view> names,
                                   std::string_view output) {
  MappingTable::ChordTrigger result{{}, CompiledOutput(tapOf(output))};
  for (const std::string_view name : names)
    result.members.insert(KeyName(name));
  return result;
}

/// A candidate as its members' names and the name that it taps.
using Candidates = std::vector<std::pair<std::set<std::string>, std::string>>;
Candidates candidatesOf(const NameRules& rules) {
  Candidates result;
  for (const NameRules::Candidate& candidate : rules.candidates) {
    std::set<std::string> names;
    for (const KeyName member : candidate.members)
      names.insert(member.text());
    EXPECT_EQ(names.size(), candidate.members.size());
    result.emplace_back(names, (*candidate.events)->front().name.text());
  }
  return result;
}

TEST(RuleIndex, knowsNothingOfNamesThatTheIdentityDoesNotMention) {
  const MappingTable::CompiledIdentity nothing;
  const RuleIndex index(nothing);
  for (const char* name : {"", "a", "left_shift"}) {
    const NameRules& rules = index.of(KeyName(name));
    EXPECT_TRUE(rules.candidates.empty());
    EXPECT_EQ(rules.single, nullptr);
    EXPECT_EQ(rules.normalized, std::nullopt);
  }
}

TEST(RuleIndex, listsTheChordsOfEachNameInTheirOrder) {
  MappingTable::CompiledIdentity identity;
  identity.chords = {trigger({"b", "c"}, "1"), trigger({"a", "b"}, "2"),
                     trigger({"a", "b", "c"}, "3"), trigger({"b", "c"}, "4")};
  const RuleIndex index(identity);
  EXPECT_EQ(candidatesOf(index.of(KeyName("a"))),
            (Candidates{{{"a", "b"}, "2"}, {{"a", "b", "c"}, "3"}}));
  EXPECT_EQ(candidatesOf(index.of(KeyName("b"))),
            (Candidates{
                {{"b", "c"}, "1"}, {{"a", "b"}, "2"}, {{"a", "b", "c"}, "3"}, {{"b", "c"}, "4"}}));
  EXPECT_EQ(candidatesOf(index.of(KeyName("c"))),
            (Candidates{{{"b", "c"}, "1"}, {{"a", "b", "c"}, "3"}, {{"b", "c"}, "4"}}));
  EXPECT_TRUE(index.of(KeyName("d")).candidates.empty());
}

TEST(RuleIndex, joinsAllThatConcernsAName) {
  MappingTable::CompiledIdentity identity;
  identity.chords = {trigger({"right_shift", "a"}, "1")};
  identity.singles.emplace(KeyName("right_shift"),
                           SingleAction{SingleAction::Fire{CompiledOutput(tapOf("2"))}});
  identity.singles.emplace(KeyName("b"), SingleAction{SingleAction::Swallow{}});
  identity.normalization.emplace(KeyName("right_shift"), KeyName("left_shift"));
  const RuleIndex index(identity);

  const NameRules& shift = index.of(KeyName("right_shift"));
  EXPECT_EQ(candidatesOf(shift), (Candidates{{{"a", "right_shift"}, "1"}}));
  ASSERT_NE(shift.single, nullptr);
  EXPECT_EQ(*shift.single, identity.singles.at(KeyName("right_shift")));
  EXPECT_EQ(shift.normalized, KeyName("left_shift"));

  ASSERT_NE(index.of(KeyName("b")).single, nullptr);
  EXPECT_EQ(*index.of(KeyName("b")).single, (SingleAction{SingleAction::Swallow{}}));
  EXPECT_EQ(index.of(KeyName("a")).single, nullptr);
  EXPECT_EQ(index.of(KeyName("a")).normalized, std::nullopt);
}

TEST(RuleIndex, sharesTheExpandedEventsOfTheTable) {
  MappingTable::CompiledIdentity identity;
  identity.chords = {trigger({"a", "b"}, "1")};
  const RuleIndex index(identity);
  EXPECT_EQ(index.of(KeyName("a")).candidates.front().events,
            &identity.chords.front().output.events());
}

} // namespace
} // namespace trellivar
