#include "tests/viewmodels/profile_folder.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using namespace words;

struct ProfileListTest : ProfileFolderTest {
  ProfileListViewModel list{store, report};

  const Profile& at(std::size_t index) const { return list.profiles()->at(index); }

  /// From now on every save fails; the file is gone.
  std::string breakTheStore() const {
    fs::remove(store.profilesFile());
    fs::create_directory(store.profilesFile());
    return store.profilesFile().string() + ": Is a directory";
  }
};

TEST_F(ProfileListTest, findsAProfileByItsName) {
  EXPECT_EQ(list.profile("M"), &at(1));
  EXPECT_EQ(list.profile("m"), nullptr);
  EXPECT_EQ(list.profile(""), nullptr);
  list.add("M");
  EXPECT_EQ(list.profile("M"), &at(1)) << "the first of two";
}

// Adding

TEST_F(ProfileListTest, appendsAnEmptyProfileWithAFreshIdAndSavesAll) {
  const Profiles before = *list.profiles();
  list.add("Games");
  EXPECT_EQ(namesOf(*list.profiles()), (Names{"P", "M", "R", "Games"}));
  EXPECT_EQ(at(3).mappings, std::vector<KeyMapping>{});
  EXPECT_EQ(Profiles(list.profiles()->begin(), list.profiles()->begin() + 3), before);
  EXPECT_EQ(std::set({UUID(), at(0).id, at(1).id, at(2).id, at(3).id}).size(), 5U);
  EXPECT_EQ(store.load(), *list.profiles());
  EXPECT_EQ(*list.activeId(), at(0).id) << "the active one stays";
}

TEST_F(ProfileListTest, addsProfilesOfAnyNameAndOfOneThatIsTakenToo) {
  for (const char* name : {"P", "", " "})
    list.add(name);
  EXPECT_EQ(namesOf(*list.profiles()), (Names{"P", "M", "R", "P", "", " "}));
  EXPECT_EQ(store.load(), *list.profiles());
}

// Updating

TEST_F(ProfileListTest, replacesTheProfileWithTheSameIdAndSavesAll) {
  Profile changed = at(1);
  changed.name = "Renamed";
  changed.mappings = {copy, tapA};
  const Profiles expected{at(0), changed, at(2)};
  list.update(changed);
  EXPECT_EQ(*list.profiles(), expected);
  EXPECT_EQ(store.load(), expected);
  EXPECT_EQ(reports, Names{});
}

TEST_F(ProfileListTest, showsTheUpdatedActiveProfile) {
  Profile changed = at(0);
  changed.mappings = {tapA};
  list.update(changed);
  EXPECT_EQ(*list.active(), changed);
  EXPECT_EQ(*list.activeId(), changed.id);
}

TEST_F(ProfileListTest, leavesTheListAloneWhenNoProfileHasTheId) {
  const Profiles before = *list.profiles();
  const FileVersion file(store.profilesFile());
  Profile stranger = at(1);
  stranger.id = UUID::random();
  stranger.mappings = {copy};
  list.update(stranger);
  EXPECT_EQ(*list.profiles(), before);
  EXPECT_EQ(FileVersion(store.profilesFile()), file);
}

TEST_F(ProfileListTest, savesAnEqualProfileWithoutAnnouncingIt) {
  int announced = 0;
  const Subscription seen = list.profiles().willChange([&](const Profiles&) { ++announced; });
  fs::remove(store.profilesFile());
  list.update(at(0));
  EXPECT_EQ(announced, 0);
  EXPECT_EQ(store.load(), *list.profiles());
}

TEST_F(ProfileListTest, writesTheWholeListEvenIfTheFileHasBeenChangedMeanwhile) {
  store.save(Profiles{profile("Intruder")});
  list.update(at(2));
  EXPECT_EQ(store.load(), *list.profiles());
}

TEST_F(ProfileListTest, survivesARestart) {
  Profile changed = at(2);
  changed.mappings = {tapA};
  list.update(changed);
  list.add("Own");
  EXPECT_EQ(start(), *list.profiles());
}

// The active profile

TEST_F(ProfileListTest, activatesAProfileOfTheList) {
  list.setActive(at(2).id);
  EXPECT_EQ(*list.activeId(), at(2).id);
  EXPECT_EQ(list.active(), &at(2));
}

TEST_F(ProfileListTest, ignoresAnIdThatNoProfileHas) {
  list.setActive(at(1).id);
  list.setActive(UUID::random());
  list.setActive(UUID());
  EXPECT_EQ(*list.activeId(), at(1).id);
}

TEST_F(ProfileListTest, keepsTheActiveProfileToItself) {
  const FileVersion file(store.profilesFile());
  list.setActive(at(2).id);
  EXPECT_EQ(FileVersion(store.profilesFile()), file);
  EXPECT_EQ(*ProfileListViewModel(store, report).activeId(), at(0).id);
}

TEST_F(ProfileListTest, announcesEachChange) {
  Names announced;
  const Subscription seen[] = {list.profiles().willChange([&](const Profiles& next) {
                                 announced.push_back(std::to_string(next.size()));
                               }),
                               list.activeId().willChange([&](const std::optional<UUID>& next) {
                                 announced.push_back(next->text());
                               })};
  list.add("Own");
  list.setActive(at(3).id);
  list.setActive(at(3).id);
  EXPECT_EQ(announced, (Names{"4", at(3).id.text()}));
}

// Saves that fail

TEST_F(ProfileListTest, reportsAnUpdateThatCannotBeSavedAndKeepsIt) {
  const std::string reason = breakTheStore();
  Profile changed = at(0);
  changed.mappings = {copy};
  list.update(changed);
  EXPECT_EQ(*list.active(), changed);
  EXPECT_EQ(reports, Names{reason});
}

TEST_F(ProfileListTest, reportsAnAdditionThatCannotBeSavedAndKeepsIt) {
  const std::string reason = breakTheStore();
  list.add("Own");
  EXPECT_EQ(namesOf(*list.profiles()), (Names{"P", "M", "R", "Own"}));
  EXPECT_EQ(reports, Names{reason});
}

TEST_F(ProfileListTest, savesEverythingAsSoonAsThatIsPossibleAgain) {
  breakTheStore();
  list.add("Own");
  fs::remove(store.profilesFile());
  list.add("Other");
  EXPECT_EQ(namesOf(store.load()), (Names{"P", "M", "R", "Own", "Other"}));
  EXPECT_EQ(reports.size(), 1U);
}

} // namespace
} // namespace trellivar
