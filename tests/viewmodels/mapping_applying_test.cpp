#include "core/known_devices.h"
#include "tests/viewmodels/mapping_fixture.h"

#include <set>
#include <stdexcept>

namespace trellivar {
namespace {

/// What the engine is given, and from where.
class MappingApplying : public MappingTest {
protected:
  using Sets = std::vector<MappingSet>;

  static Profile named(std::string name) { return {UUID::random(), std::move(name), {}}; }
  void offer(std::vector<Profile> profiles) {
    setup_.allProfiles = [profiles = std::move(profiles)] { return profiles; };
  }
  /// A pad that the registry knows, in mode P on its cable; key 1 has been learned as "q".
  static TrellivarDevice knownPad() {
    return {"Orlo3", 0x4C4A, 0x4155, {{{1, 0, 0, signatureOf("q"), {}}}}};
  }
  /// The last ones; none when there was nothing.
  Sets applied() const { return engine_->applied.empty() ? Sets() : engine_->applied.back(); }
  /// "P 19530:16725" for each set, with "portable" where it is.
  Texts outline() const {
    Texts result;
    for (const MappingSet& set : applied())
      result.push_back(set.profile.name + " " + std::to_string(set.device.vendorId) + ":" +
                       std::to_string(set.device.productId) + (set.portable ? " portable" : ""));
    return result;
  }
};

TEST_F(MappingApplying, withoutOtherProfilesTheEngineGetsTheEditedOne) {
  make();
  model_->reapply();
  EXPECT_EQ(engine_->applied, (std::vector<Sets>{{{unknownPad(), setup_.profile, false}}}));
}

TEST_F(MappingApplying, theEngineGetsAllProfilesInTheirOrder) {
  const std::vector profiles{named("M"), setup_.profile, named("P")};
  offer(profiles);
  make();
  model_->reapply();
  EXPECT_EQ(applied(), (Sets{{unknownPad(), profiles[0], false},
                             {unknownPad(), profiles[1], false},
                             {unknownPad(), profiles[2], false}}));
}

TEST_F(MappingApplying, theEditedProfileTakesThePlaceOfItsSavedForm) {
  const std::vector profiles{named("M"), setup_.profile, named("P")};
  offer(profiles);
  make();
  model_->select(1);
  model_->assign(typing("q"));
  EXPECT_EQ(applied(), (Sets{{unknownPad(), profiles[0], false},
                             {unknownPad(), *model_->profile(), false},
                             {unknownPad(), profiles[2], false}}));
}

TEST_F(MappingApplying, aProfileThatOnlySharesTheNameIsAnother) {
  const Profile sameName = named("Work");
  offer({sameName});
  make();
  model_->reapply();
  EXPECT_EQ(applied(), (Sets{{unknownPad(), sameName, false}})) << "nor is the edited one added";
}

TEST_F(MappingApplying, theEditedProfileCountsByTheNameItHasNow) {
  setup_.device = knownPad();
  setup_.profile.name = "P";
  Profile saved = setup_.profile;
  saved.name = "M";
  offer({saved});
  make();
  model_->reapply();
  EXPECT_EQ(applied(), (Sets{{knownPad(), setup_.profile, false}}));
}

TEST_F(MappingApplying, theProfileThatWasSwitchedToIsTheEditedOne) {
  const Profile other = named("Play");
  Profile unsaved = other;
  unsaved.mappings = {{1, typing("u"), {}}};
  offer({setup_.profile, other});
  make();
  model_->switchProfile(unsaved);
  model_->reapply();
  EXPECT_EQ(applied(),
            (Sets{{unknownPad(), setup_.profile, false}, {unknownPad(), unsaved, false}}));
}

TEST_F(MappingApplying, aListOfNoProfilesIsNotTheSameAsNone) {
  offer({});
  make();
  model_->reapply();
  EXPECT_EQ(engine_->applied, std::vector<Sets>{{}});
}

TEST_F(MappingApplying, aKnownPadGetsTheSetsOfAllItsModes) {
  setup_.device = knownPad();
  offer({named("P"), named("M"), named("R"), named("Games")});
  make();
  signatures_->records = {{0x05AC, 0x0220, {{1, signatureOf("m")}}, "M"},
                          {0x4C4A, 0x4155, {{1, signatureOf("stored")}}, "P"}};
  model_->reapply();
  ASSERT_EQ(outline(), (Texts{"P 19530:16725", "M 1452:544"}));
  EXPECT_EQ(applied()[0].device, knownPad()) << "as it is, not as it is stored";
  EXPECT_EQ(applied()[1].device.layout.keys[0].signature, signatureOf("m"))
      << "as the store knows it by now";
}

TEST_F(MappingApplying, withoutAStoreOtherModesAreAsTheRegistryHasThem) {
  setup_.device = knownPad();
  setup_.signatures = nullptr;
  offer({named("M")});
  make();
  model_->reapply();
  ASSERT_EQ(outline(), Texts{"M 1452:544"});
  EXPECT_EQ(applied()[0].device.layout,
            KnownDevices::all().front().mode("M")->transports.front().layout);
}

TEST_F(MappingApplying, whatWasLearnedCountsForItsOwnMode) {
  setup_.device = knownPad();
  offer({named("P"), named("M")});
  make();
  learn(1);
  learnFrom(tap(knownPad().identity(), "z"));
  ASSERT_EQ(outline(), (Texts{"P 19530:16725", "M 1452:544"}));
  EXPECT_EQ(applied()[0].device.layout.keys[0].signature, signatureOf("z"));
}

TEST_F(MappingApplying, portableModesAreLetThrough) {
  setup_.device = knownPad();
  offer({named("P"), named("M")});
  setup_.portableModes = [] { return std::set<std::string>{"M"}; };
  make();
  model_->reapply();
  EXPECT_EQ(outline(), (Texts{"P 19530:16725", "M 1452:544 portable", "M 1452:544"}));
}

TEST_F(MappingApplying, everythingIsAskedForEachTime) {
  setup_.device = knownPad();
  std::vector profiles{named("P")};
  std::set<std::string> portable;
  setup_.allProfiles = [&] { return profiles; };
  setup_.portableModes = [&] { return portable; };
  make();
  model_->reapply();
  EXPECT_EQ(outline(), Texts{"P 19530:16725"});
  profiles = {named("M")};
  portable = {"M"};
  model_->reapply();
  EXPECT_EQ(outline(), (Texts{"M 1452:544 portable", "M 1452:544"}));
}

TEST_F(MappingApplying, anErrorOfReapplyingIsOnlyReported) {
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  model_->reapply();
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(reports_, Texts{"no sense"});
}

TEST_F(MappingApplying, reapplyingKeepsTheLastErrorAndEditsNothing) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  model_->reapply();
  EXPECT_EQ(lastError(), "Learn this key first.");
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_TRUE(edited_.empty());
  EXPECT_EQ(signatures_->saves, 0);
}

TEST_F(MappingApplying, reapplyingDoesNotEndWhatIsUnderWay) {
  make();
  learn(3);
  model_->reapply();
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(signature(2), signatureOf("q"));
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingApplying, aListThatCannotBeHadIsLikeARefusalOfTheEngine) {
  setup_.allProfiles = []() -> std::vector<Profile> { throw std::runtime_error("no list"); };
  make();
  model_->reapply();
  EXPECT_EQ(lastError(), std::nullopt);
  model_->select(1);
  model_->assign(typing("q"));
  EXPECT_EQ(lastError(), "no list");
  EXPECT_EQ(reports_, (Texts{"no list", "no list"}));
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
  EXPECT_TRUE(engine_->applied.empty());
}

} // namespace
} // namespace trellivar
