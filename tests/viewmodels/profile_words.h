#pragma once

#include "core/profile.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

/// The words in which tests speak about lists of profiles.
namespace trellivar::words {

using Names = std::vector<std::string>;
using Profiles = std::vector<Profile>;

inline const KeyMapping copy{1, {Output::Chord{{Modifier::command}, Key{KeyName("c")}}}, "Copy"};
inline const KeyMapping tapA{2, {Output::Sequence{{Key{KeyName("a")}}}}, std::nullopt};

inline Profile profile(std::string name, std::vector<KeyMapping> mappings = {}) {
  return {UUID::random(), std::move(name), std::move(mappings)};
}

inline Names namesOf(const Profiles& profiles) {
  Names names;
  for (const Profile& each : profiles)
    names.push_back(each.name);
  return names;
}

/// New profiles P, M and R, where P has these mappings.
inline void expectModes(const Profiles& profiles, const std::vector<KeyMapping>& mappingsOfP,
                        const Profiles& old) {
  ASSERT_EQ(namesOf(profiles), (Names{"P", "M", "R"}));
  EXPECT_EQ(profiles[0].mappings, mappingsOfP);
  EXPECT_TRUE(profiles[1].mappings.empty());
  EXPECT_TRUE(profiles[2].mappings.empty());
  std::set<UUID> ids{UUID()};
  for (const Profile& each : old)
    ids.insert(each.id);
  for (const Profile& each : profiles)
    EXPECT_TRUE(ids.insert(each.id).second) << "not a fresh id: " << each.id.text();
}

} // namespace trellivar::words
