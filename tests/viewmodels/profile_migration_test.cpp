#include "tests/support/generators.h"
#include "tests/viewmodels/profile_words.h"
#include "viewmodels/profile_list_view_model.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace trellivar {
namespace {

using namespace words;

Profiles migrated(const Profiles& from) { return ProfileListViewModel::migrated(from); }

TEST(MigratedProfiles, areThreeEmptyOnesAtFirst) { expectModes(migrated({}), {}, {}); }

TEST(MigratedProfiles, takeOverTheMappingsOfTheOnlyOldProfile) {
  const Profiles old{profile("Default", {copy, tapA})};
  expectModes(migrated(old), {copy, tapA}, old);
}

TEST(MigratedProfiles, takeOverTheMappingsOfTheFirstOldProfileAlone) {
  const Profiles old{profile("Work", {tapA}), profile("Play", {copy}), profile("Else", {copy})};
  expectModes(migrated(old), {tapA}, old);
  const Profiles emptyFirst{profile("Work"), profile("Play", {copy})};
  expectModes(migrated(emptyFirst), {}, emptyFirst);
}

TEST(MigratedProfiles, replaceAListThatLacksOneOfThem) {
  for (const Names& names : std::vector<Names>{
           {"P", "M"}, {"P", "R"}, {"M", "R"}, {"M"}, {"M", "P", "X"}, {"P", "P", "M"}}) {
    Profiles old;
    for (const std::string& name : names)
      old.push_back(profile(name));
    old.front().mappings = {copy};
    old.back().mappings.push_back(tapA);
    expectModes(migrated(old), old.front().mappings, old);
  }
}

TEST(MigratedProfiles, areFoundByTheirExactNames) {
  const Profiles old{profile("p", {copy}), profile("m"), profile("r")};
  expectModes(migrated(old), {copy}, old);
  const Profiles padded{profile("P "), profile("M"), profile("R")};
  expectModes(migrated(padded), {}, padded);
}

TEST(MigratedProfiles, stayAsTheyAreInAnyOrderAmongOthers) {
  for (const Names& names : std::vector<Names>{{"P", "M", "R"},
                                               {"R", "M", "P"},
                                               {"M", "Own", "R", "P", "Other"},
                                               {"P", "P", "M", "R", "R"}}) {
    Profiles profiles;
    for (const std::string& name : names)
      profiles.push_back(profile(name, {tapA}));
    EXPECT_EQ(migrated(profiles), profiles);
  }
}

RC_GTEST_PROP(MigratedProfiles, needNoSecondMigration, ()) {
  Profiles profiles;
  for (const std::string& name :
       *generate::upTo(8, rc::gen::elementOf(Names{"P", "M", "R", "Own"})))
    profiles.push_back(profile(name));
  const bool isComplete = std::ranges::all_of(Names{"P", "M", "R"}, [&](const std::string& name) {
    return std::ranges::count(profiles, name, &Profile::name) > 0;
  });
  const Profiles once = migrated(profiles);
  RC_CLASSIFY(isComplete, "complete");
  RC_ASSERT((once == profiles) == isComplete);
  RC_ASSERT(migrated(once) == once);
}

} // namespace
} // namespace trellivar
