#include "core/l10n.h"
#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

using Mappings = std::vector<KeyMapping>;

class MappingAssigning : public MappingTest {
protected:
  void assign(int keyId, const Output& output) {
    model_->select(keyId);
    model_->assign(output);
  }
  void expectNothingHappened() const {
    EXPECT_EQ(*model_->profile(), setup_.profile);
    EXPECT_TRUE(edited_.empty());
    EXPECT_TRUE(engine_->applied.empty());
    EXPECT_TRUE(reports_.empty());
  }
};

TEST_F(MappingAssigning, bindsTheSelectedKeyAtTheEndAndKeepsItsLabel) {
  make();
  assign(1, typing("q"));
  EXPECT_EQ(mappings(), (Mappings{{2, typing("c"), {}}, {1, typing("q"), "Cut"}}));
  EXPECT_EQ(model_->profile()->id, setup_.profile.id);
  EXPECT_EQ(model_->profile()->name, "Work");
  EXPECT_EQ(*model_->selectedKeyId(), 1);
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(MappingAssigning, bindsAKeyThatHadNoBinding) {
  setup_.profile.mappings = {{2, typing("c"), "Copy"}};
  make();
  assign(1, typing("q"));
  EXPECT_EQ(mappings(), (Mappings{{2, typing("c"), "Copy"}, {1, typing("q"), {}}}));
}

TEST_F(MappingAssigning, replacesEveryBindingOfTheKey) {
  setup_.profile.mappings = {{1, typing("x"), "first"}, {2, typing("c"), {}}, {1, typing("y"), {}}};
  make();
  assign(1, typing("q"));
  EXPECT_EQ(mappings(), (Mappings{{2, typing("c"), {}}, {1, typing("q"), "first"}}));
}

TEST_F(MappingAssigning, givesTheEditToItsOwnerAndThenToTheEngine) {
  std::size_t appliedBefore = 99;
  setup_.onProfileEdited = [&](const Profile& profile) {
    appliedBefore = engine_->applied.size();
    edited_.push_back(profile);
  };
  make();
  assign(1, typing("q"));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
  EXPECT_EQ(appliedBefore, 0U);
  ASSERT_EQ(engine_->applied.size(), 1U);
  EXPECT_EQ(engine_->applied[0],
            (std::vector{MappingSet{unknownPad(), *model_->profile(), false}}));
}

TEST_F(MappingAssigning, anOutputThatIsBoundAlreadyIsAnEditAllTheSame) {
  make();
  assign(2, typing("c"));
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_EQ(edited_, std::vector{setup_.profile});
  EXPECT_EQ(engine_->applied.size(), 1U);
}

TEST_F(MappingAssigning, withoutASelectedKeyNothingHappens) {
  make();
  assign(3, typing("q"));
  const auto error = lastError();
  model_->select(std::nullopt);
  model_->assign(typing("q"));
  expectNothingHappened();
  EXPECT_EQ(lastError(), error);
}

TEST_F(MappingAssigning, aKeyMustBeLearnedFirst) {
  for (const int keyId : {3, 99}) {
    make();
    assign(keyId, typing("q"));
    EXPECT_EQ(lastError(), "Learn this key first.");
    expectNothingHappened();
  }
}

TEST_F(MappingAssigning, theErrorIsInTheLanguageOfTheMoment) {
  make();
  L10n::setCurrent(AppLanguage::zhHans);
  assign(3, typing("q"));
  L10n::setCurrent(AppLanguage::en);
  EXPECT_EQ(lastError(), "请先学习此按键。");
}

TEST_F(MappingAssigning, aSuccessLeavesTheLastErrorOfAnotherKey) {
  make();
  assign(3, typing("q"));
  assign(1, typing("q"));
  EXPECT_EQ(lastError(), "Learn this key first.");
}

TEST_F(MappingAssigning, aKeyCanBeBoundOnceItHasBeenLearned) {
  make();
  learn(3);
  learnFrom(tap(pad, "z"));
  assign(3, typing("q"));
  EXPECT_EQ(model_->mapping(3), (KeyMapping{3, typing("q"), {}}));
}

TEST_F(MappingAssigning, whatTheEngineRefusesIsShownAndReportedAndTheEditStays) {
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  assign(1, typing("q"));
  EXPECT_EQ(lastError(), "no sense");
  EXPECT_EQ(reports_, Texts{"no sense"});
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
}

TEST_F(MappingAssigning, needsNobodyToReceiveTheEdit) {
  setup_.onProfileEdited = nullptr;
  make();
  assign(1, typing("q"));
  model_->rename(1, "Query");
  EXPECT_EQ(model_->mapping(1), (KeyMapping{1, typing("q"), "Query"}));
}

TEST_F(MappingAssigning, doesNotEndWhatIsUnderWay) {
  make();
  record(2);
  assign(1, typing("q"));
  EXPECT_TRUE(*model_->isRecording());
  capturer_->finish(tap(keyboard, "r"));
  EXPECT_EQ(mappings(), (Mappings{{2, typing("c"), {}}, {1, typing("r"), "Cut"}}));
  EXPECT_EQ(completed_, 1);
}

class MappingRenaming : public MappingAssigning {};

TEST_F(MappingRenaming, labelsTheBindingWhereItStandsWithTheTrimmedText) {
  make();
  model_->rename(1, " \t\n Snip it \r\n");
  EXPECT_EQ(mappings(), (Mappings{{1, typing("x"), "Snip it"}, {2, typing("c"), {}}}));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
}

TEST_F(MappingRenaming, blanksClearTheLabel) {
  make();
  model_->rename(1, "   ");
  EXPECT_EQ(mappings(), (Mappings{{1, typing("x"), {}}, {2, typing("c"), {}}}));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
}

TEST_F(MappingRenaming, ofSeveralBindingsOfTheKeyLabelsTheFirst) {
  setup_.profile.mappings = {{2, typing("c"), {}}, {1, typing("x"), {}}, {1, typing("y"), "kept"}};
  make();
  model_->rename(1, "First");
  EXPECT_EQ(mappings(),
            (Mappings{{2, typing("c"), {}}, {1, typing("x"), "First"}, {1, typing("y"), "kept"}}));
}

TEST_F(MappingRenaming, aKeyWithoutABindingCannotCarryALabel) {
  make();
  for (const int keyId : {3, 99}) {
    model_->rename(keyId, "Name");
    model_->rename(keyId, "");
  }
  expectNothingHappened();
}

TEST_F(MappingRenaming, doesNotConcernTheEngineNorTheSelection) {
  make();
  model_->select(2);
  model_->rename(1, "Snip");
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_EQ(*model_->selectedKeyId(), 2);
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(MappingRenaming, needsNoSignature) {
  setup_.profile.mappings = {{3, typing("c"), {}}};
  make();
  model_->rename(3, "Three");
  EXPECT_EQ(model_->mapping(3)->label, "Three");
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(MappingRenaming, theSameLabelIsAnEditAllTheSame) {
  make();
  model_->rename(1, "Cut");
  EXPECT_EQ(edited_, std::vector{setup_.profile});
}

TEST_F(MappingRenaming, takesATextOutOfTheProfileItself) {
  setup_.profile.mappings[0].label = "  a label that needs memory of its own  ";
  make();
  model_->rename(1, *model_->profile()->mappings[0].label);
  EXPECT_EQ(model_->mapping(1)->label, "a label that needs memory of its own");
}

} // namespace
} // namespace trellivar
