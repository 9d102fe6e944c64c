#include "tests/viewmodels/language_change.h"
#include "tests/viewmodels/mapping_fixture.h"
#include "viewmodels/key_view.h"
#include "viewmodels/output_library.h"

namespace trellivar {
namespace {

class KeyViewTest : public MappingTest {
protected:
  KeyViewTest() {
    setup_.device = unknownPad();
    setup_.profile.mappings = {{1, typing("x"), "Copy"}, {2, typing("y"), std::nullopt}};
    make();
  }

  KeyView view(std::size_t index) const { return keyViews(*model_).at(index); }
};

TEST_F(KeyViewTest, followsTheKeysOfThePad) {
  std::vector<int> ids;
  for (const KeyView& each : keyViews(*model_))
    ids.push_back(each.id);
  EXPECT_EQ(ids, (std::vector<int>{1, 2, 3}));
}

TEST_F(KeyViewTest, isCaptionedByItsLabelElseByWhatItDoes) {
  EXPECT_EQ(view(0).caption, "Copy");
  EXPECT_EQ(view(0).legend, "X");
  EXPECT_EQ(view(0).label, "Copy");
  EXPECT_EQ(view(1).caption, "Y");
  EXPECT_EQ(view(1).label, "");
}

TEST_F(KeyViewTest, saysThatAnUnboundKeyIsEmpty) {
  EXPECT_EQ(view(2).caption, "Empty");
  EXPECT_EQ(view(2).legend, "");
  EXPECT_FALSE(view(2).isBound);
  EXPECT_TRUE(view(1).isBound);
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(view(2).caption, "未设置");
}

TEST_F(KeyViewTest, hasADrawingForWhatTheLibraryOffers) {
  model_->select(1);
  std::vector<std::string> glyphs;
  for (const Output& output : OutputLibrary::outputs()) {
    model_->assign(output);
    glyphs.push_back(view(0).glyph);
    EXPECT_NE(view(0).legend, "") << "which is what it is called";
  }
  EXPECT_EQ(glyphs, (std::vector<std::string>{"volume_increment", "volume_decrement", "mute",
                                              "play_or_pause", "button1", "button2", "button3"}));
}

TEST_F(KeyViewTest, hasNoDrawingForAnythingElse) {
  EXPECT_EQ(view(0).glyph, "") << "a letter";
  EXPECT_EQ(view(2).glyph, "") << "nothing";
  model_->select(1);
  Output::Chord held = std::get<Output::Chord>(OutputLibrary::outputs().front().value);
  held.modifiers = {Modifier::option};
  model_->assign({held});
  EXPECT_EQ(view(0).glyph, "") << "a media key with a modifier is more than the drawing says";
}

TEST_F(KeyViewTest, tellsWhichKeysHaveBeenLearned) {
  EXPECT_TRUE(view(0).isLearned);
  EXPECT_FALSE(view(2).isLearned);
}

TEST_F(KeyViewTest, tellsTheSelectedKeyAlone) {
  EXPECT_FALSE(view(1).isSelected);
  model_->select(2);
  EXPECT_TRUE(view(1).isSelected);
  EXPECT_FALSE(view(0).isSelected);
}

TEST_F(KeyViewTest, theTitleNamesTheSelectedKeyWithWhatItDoes) {
  EXPECT_EQ(selectionTitle(*model_), "No key selected");
  model_->select(1);
  EXPECT_EQ(selectionTitle(*model_), "Key 1 — Copy");
  model_->select(2);
  EXPECT_EQ(selectionTitle(*model_), "Key 2 — Y");
  model_->select(3);
  EXPECT_EQ(selectionTitle(*model_), "Key 3");
}

} // namespace
} // namespace trellivar
