#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

class MappingConstruction : public MappingTest {};

TEST_F(MappingConstruction, startsIdleWithNothingSelected) {
  make();
  EXPECT_EQ(*model_->device(), unknownPad());
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_EQ(*model_->selectedKeyId(), std::nullopt);
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(MappingConstruction, touchesNobody) {
  make();
  queue_.advance(Seconds(60));
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(engine_->ignores.empty());
  EXPECT_TRUE(capturer_->started.empty());
  EXPECT_TRUE(edited_.empty());
  EXPECT_EQ(signatures_->saves, 0);
  model_.reset();
  EXPECT_TRUE(engine_->ignores.empty()) << "nothing was to be undone";
}

TEST_F(MappingConstruction, givesTheDeviceWhatWasLearnedAboutIt) {
  signatures_->records = {{pad.vendorId, 1, {{1, signatureOf("product")}}, {}},
                          {1, pad.productId, {{1, signatureOf("vendor")}}, {}},
                          {pad.vendorId, pad.productId, {{3, signatureOf("q")}}, "M"}};
  make();
  EXPECT_EQ(signature(0), signatureOf("a"));
  EXPECT_EQ(signature(2), signatureOf("q")) << "whatever the mode of the record";
}

TEST_F(MappingConstruction, takesTheDeviceAsItIsWithoutAStore) {
  setup_.signatures = nullptr;
  make();
  EXPECT_EQ(*model_->device(), unknownPad());
}

TEST_F(MappingConstruction, waitsLikeTheApplicationUnlessToldOtherwise) {
  const MappingViewModel::Setup plain{
      .queue = queue_, .device = {}, .profile = {}, .engine = engine_, .capturer = capturer_};
  EXPECT_EQ(plain.learnReleaseDelay, Seconds(0.1));
  EXPECT_EQ(plain.learnReleaseTimeout, Seconds(8));
}

TEST_F(MappingConstruction, selectingSetsTheSelectionAndNothingElse) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  const auto error = lastError();
  ASSERT_TRUE(error);
  for (const std::optional<int> keyId :
       {std::optional(2), std::optional(99), std::optional<int>()}) {
    model_->select(keyId);
    EXPECT_EQ(*model_->selectedKeyId(), keyId);
    EXPECT_EQ(lastError(), error);
  }
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_TRUE(engine_->applied.empty());
}

TEST_F(MappingConstruction, selectingDoesNotEndWhatIsUnderWay) {
  make();
  learn(1);
  model_->select(2);
  EXPECT_TRUE(*model_->isLearning());
  EXPECT_EQ(engine_->ignores, Texts{"+7:9"});
}

TEST_F(MappingConstruction, theMappingOfAKeyIsItsFirstOne) {
  setup_.profile.mappings = {{2, typing("a"), {}}, {1, typing("b"), "first"}, {1, typing("c"), {}}};
  make();
  EXPECT_EQ(model_->mapping(1), (KeyMapping{1, typing("b"), "first"}));
  EXPECT_EQ(model_->mapping(2), (KeyMapping{2, typing("a"), {}}));
  EXPECT_EQ(model_->mapping(3), std::nullopt);
}

TEST_F(MappingConstruction, onlyALearnedKeyHasASignature) {
  make();
  EXPECT_TRUE(model_->hasSignature(1));
  EXPECT_FALSE(model_->hasSignature(3));
  EXPECT_FALSE(model_->hasSignature(99));
}

TEST_F(MappingConstruction, alternativesDoNotMakeASignature) {
  setup_.device.layout.keys[2].altSignatures = {signatureOf("q")};
  setup_.device.layout.keys[2].signature.isChord = true;
  make();
  EXPECT_FALSE(model_->hasSignature(3));
}

TEST_F(MappingConstruction, ofKeysWithTheSameIdTheFirstCounts) {
  setup_.device.layout.keys[1].id = 3;
  std::swap(setup_.device.layout.keys[1], setup_.device.layout.keys[2]);
  make();
  EXPECT_FALSE(model_->hasSignature(3)) << "the learned one comes later";
}

} // namespace
} // namespace trellivar
