#include "core/key_layout.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

const Key control{KeyName("left_control")};
const Key f{KeyName("f")};

TEST(KeySignature, isASingleKeyWithoutCodesByDefault) {
  EXPECT_TRUE(KeySignature().codes.empty());
  EXPECT_FALSE(KeySignature().isChord);
}

TEST(KeySignature, differsByTheOrderOfKeys) {
  const KeySignature signature{{control, f}, true};
  EXPECT_EQ(signature, (KeySignature{{control, f}, true}));
  EXPECT_NE(signature, (KeySignature{{f, control}, true}));
}

TEST(KeySignature, differsByEveryField) {
  const KeySignature signature{{control, f}, true};
  EXPECT_NE(signature, (KeySignature{{control, f}, false}));
  EXPECT_NE(signature, (KeySignature{{control}, true}));
  EXPECT_NE(signature, (KeySignature{{control, {f.keyCode, Key::Kind::unmappable}}, true}));
}

TEST(PhysicalKey, hasNoAlternativeSignaturesByDefault) {
  const PhysicalKey key{1, 0, 0, {{f}, false}};
  EXPECT_TRUE(key.altSignatures.empty());
}

TEST(PhysicalKey, differsByEveryField) {
  const KeySignature single{{f}, false};
  const KeySignature chord{{control, f}, true};
  const PhysicalKey key{1, 2, 3, single, {single, chord}};
  EXPECT_EQ(key, (PhysicalKey{1, 2, 3, single, {single, chord}}));
  EXPECT_NE(key, (PhysicalKey{0, 2, 3, single, {single, chord}}));
  EXPECT_NE(key, (PhysicalKey{1, 0, 3, single, {single, chord}}));
  EXPECT_NE(key, (PhysicalKey{1, 2, 0, single, {single, chord}}));
  EXPECT_NE(key, (PhysicalKey{1, 2, 3, chord, {single, chord}}));
  EXPECT_NE(key, (PhysicalKey{1, 2, 3, single, {single}}));
  EXPECT_NE(key, (PhysicalKey{1, 2, 3, single, {chord, single}}));
}

TEST(KeyLayout, differsByTheOrderOfItsKeys) {
  const PhysicalKey first{1, 0, 0, {{f}, false}, {}};
  const PhysicalKey second{2, 0, 1, {{control}, false}, {}};
  EXPECT_EQ((KeyLayout{{first, second}}), (KeyLayout{{first, second}}));
  EXPECT_NE((KeyLayout{{first, second}}), (KeyLayout{{second, first}}));
  EXPECT_NE((KeyLayout{{first, second}}), (KeyLayout{{first}}));
}

} // namespace
} // namespace trellivar
