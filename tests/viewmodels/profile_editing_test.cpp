#include "tests/support/generators.h"
#include "viewmodels/profile_editing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using Mappings = std::vector<KeyMapping>;
using Label = std::optional<std::string>;

Output typing(std::string_view name) {
  return {Output::Sequence{{{KeyName(name), Key::Kind::keyCode}}}};
}

Profile profileOf(Mappings mappings) { return {UUID::random(), "Work", std::move(mappings)}; }

TEST(MappingOf, isTheFirstBindingOfTheKey) {
  const Profile profile =
      profileOf({{2, typing("a"), {}}, {1, typing("b"), {}}, {1, typing("c"), {}}});
  EXPECT_EQ(mappingOf(profile, 1), &profile.mappings[1]);
  EXPECT_EQ(mappingOf(profile, 2), &profile.mappings[0]);
}

TEST(MappingOf, isNothingForAKeyWithoutABinding) {
  EXPECT_EQ(mappingOf(profileOf({}), 1), nullptr);
  EXPECT_EQ(mappingOf(profileOf({{2, typing("a"), {}}}), 1), nullptr);
}

TEST(BindKey, appendsTheBindingOfAnUnboundKey) {
  Profile profile = profileOf({{2, typing("a"), "A"}});
  const Profile before = profile;
  bindKey(profile, 1, typing("b"));
  EXPECT_EQ(profile.mappings, (Mappings{{2, typing("a"), "A"}, {1, typing("b"), {}}}));
  EXPECT_EQ(profile.id, before.id);
  EXPECT_EQ(profile.name, "Work");
}

TEST(BindKey, movesABoundKeyToTheEndAndKeepsItsLabel) {
  Profile profile = profileOf({{1, typing("a"), "One"}, {2, typing("b"), "Two"}});
  bindKey(profile, 1, typing("c"));
  EXPECT_EQ(profile.mappings, (Mappings{{2, typing("b"), "Two"}, {1, typing("c"), "One"}}));
}

TEST(BindKey, replacesEveryBindingOfTheKeyAndKeepsTheFirstLabel) {
  Profile profile = profileOf({{1, typing("a"), "first"},
                               {2, typing("b"), {}},
                               {1, typing("c"), "second"},
                               {1, typing("d"), {}}});
  bindKey(profile, 1, typing("e"));
  EXPECT_EQ(profile.mappings, (Mappings{{2, typing("b"), {}}, {1, typing("e"), "first"}}));
}

TEST(BindKey, takesNoLabelFromALaterBinding) {
  Profile profile = profileOf({{1, typing("a"), {}}, {1, typing("b"), "second"}});
  bindKey(profile, 1, typing("c"));
  EXPECT_EQ(profile.mappings, (Mappings{{1, typing("c"), {}}}));
}

TEST(BindKey, takesAnOutputOutOfTheProfileItself) {
  Profile profile = profileOf({{1, typing("a long name of a key"), {}}, {2, typing("b"), {}}});
  bindKey(profile, 1, profile.mappings[0].output);
  EXPECT_EQ(profile.mappings,
            (Mappings{{2, typing("b"), {}}, {1, typing("a long name of a key"), {}}}));
}

TEST(UnbindKey, removesEveryBindingOfTheKeyAndNoOther) {
  Profile profile =
      profileOf({{1, typing("a"), {}}, {2, typing("b"), "Two"}, {1, typing("c"), {}}});
  EXPECT_TRUE(unbindKey(profile, 1));
  EXPECT_EQ(profile.mappings, (Mappings{{2, typing("b"), "Two"}}));
  EXPECT_FALSE(unbindKey(profile, 1));
  EXPECT_EQ(profile.mappings.size(), 1U);
}

TEST(LabelKey, labelsTheFirstBindingWhereItStands) {
  Profile profile =
      profileOf({{2, typing("a"), {}}, {1, typing("b"), {}}, {1, typing("c"), "kept"}});
  EXPECT_TRUE(labelKey(profile, 1, "One"));
  EXPECT_EQ(profile.mappings,
            (Mappings{{2, typing("a"), {}}, {1, typing("b"), "One"}, {1, typing("c"), "kept"}}));
}

TEST(LabelKey, trimsBothEndsOnly) {
  Profile profile = profileOf({{1, typing("a"), {}}});
  labelKey(profile, 1, " \t\r\n two  words \u00A0\u2028");
  EXPECT_EQ(profile.mappings[0].label, "two  words");
}

TEST(LabelKey, clearsTheLabelWhenNothingIsLeft) {
  for (const char* text : {"", "   ", "\n", "\t \u3000\r\n"}) {
    Profile profile = profileOf({{1, typing("a"), "One"}});
    EXPECT_TRUE(labelKey(profile, 1, text));
    EXPECT_EQ(profile.mappings[0].label, std::nullopt);
  }
}

TEST(LabelKey, takesATextOutOfTheLabelItself) {
  Profile profile = profileOf({{1, typing("a"), "  a label that needs memory of its own  "}});
  labelKey(profile, 1, *profile.mappings[0].label);
  EXPECT_EQ(profile.mappings[0].label, "a label that needs memory of its own");
}

TEST(LabelKey, leavesAProfileWithoutABindingOfTheKey) {
  Profile profile = profileOf({{2, typing("a"), "Two"}});
  const Profile before = profile;
  EXPECT_FALSE(labelKey(profile, 1, "One"));
  EXPECT_EQ(profile, before);
}

rc::Gen<Profile> profileWithFewKeys() {
  return rc::gen::map(rc::gen::arbitrary<Profile>(), [](Profile profile) {
    for (KeyMapping& mapping : profile.mappings)
      mapping.fromKeyId = mapping.fromKeyId & 3;
    return profile;
  });
}

/// The bindings of all keys but one.
Mappings without(const Profile& profile, int keyId) {
  Mappings rest;
  std::ranges::copy_if(profile.mappings, std::back_inserter(rest),
                       [&](const KeyMapping& mapping) { return mapping.fromKeyId != keyId; });
  return rest;
}

RC_GTEST_PROP(BindKeyProperty, leavesOneBindingOfTheKeyAtTheEndAndTheRestAsItIs, ()) {
  Profile profile = *profileWithFewKeys();
  const Profile before = profile;
  const int keyId = *generate::range(0, 3);
  const auto output = *rc::gen::arbitrary<Output>();
  bindKey(profile, keyId, output);
  const KeyMapping* old = mappingOf(before, keyId);
  Mappings expected = without(before, keyId);
  expected.push_back({keyId, output, old ? old->label : Label()});
  RC_ASSERT(profile.mappings == expected);
}

RC_GTEST_PROP(LabelKeyProperty, changesNothingButTheLabelOfTheFirstBinding, ()) {
  Profile profile = *profileWithFewKeys();
  const Profile before = profile;
  const int keyId = *generate::range(0, 3);
  const bool isBound = labelKey(profile, keyId, *generate::text());
  RC_ASSERT(isBound == (mappingOf(before, keyId) != nullptr));
  if (const auto* mapping = mappingOf(profile, keyId)) {
    RC_ASSERT(mapping->label != Label(""));
    const auto index = static_cast<std::size_t>(mapping - profile.mappings.data());
    profile.mappings[index].label = before.mappings[index].label;
  }
  RC_ASSERT(profile == before);
}

} // namespace
} // namespace trellivar
