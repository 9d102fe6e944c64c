#include "core/l10n.h"
#include "tests/viewmodels/language_change.h"
#include "viewmodels/settings_store.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Lines = std::vector<std::string>;

/// Notes what is written, in order.
struct NotingDefaults final : UserDefaults {
  MemoryUserDefaults values;
  Lines& notes;

  NotingDefaults(Lines& into, std::vector<std::string> languages)
      : values(std::move(languages)), notes(into) {}

  std::optional<std::string> string(std::string_view key) const override {
    return values.string(key);
  }
  bool boolean(std::string_view key) const override { return values.boolean(key); }
  void setString(std::string_view key, std::string_view value) override {
    notes.push_back(std::string(key) + " = " + std::string(value));
    values.setString(key, value);
  }
  void setBoolean(std::string_view key, bool value) override {
    notes.push_back(std::string(key) + (value ? " = true" : " = false"));
    values.setBoolean(key, value);
  }
  std::vector<std::string> preferredLanguages() const override {
    return values.preferredLanguages();
  }
};

struct SettingsStoreTest : testing::Test {
  const LanguageChange english{AppLanguage::en};
  Lines notes;
  std::shared_ptr<NotingDefaults> defaults = defaultsOf({});

  std::shared_ptr<NotingDefaults> defaultsOf(std::vector<std::string> languages) {
    return std::make_shared<NotingDefaults>(notes, std::move(languages));
  }
};

// What it reads at first

TEST_F(SettingsStoreTest, hasADefaultForEverySetting) {
  const SettingsStore settings(defaults);
  EXPECT_EQ(*settings.language(), AppLanguage::en);
  EXPECT_EQ(*settings.appearance(), AppAppearance::system);
  EXPECT_FALSE(*settings.startAtLogin());
  EXPECT_EQ(notes, Lines{}) << "a default is not kept";
}

TEST_F(SettingsStoreTest, readsWhatIsKept) {
  for (const AppLanguage language : AppLanguage::allCases) {
    for (const AppAppearance appearance : allAppearances) {
      for (const bool startAtLogin : {false, true}) {
        defaults->values.setString("appLanguage", language.rawValue());
        defaults->values.setString("appAppearance", rawValue(appearance));
        defaults->values.setBoolean("startAtLogin", startAtLogin);
        const SettingsStore settings(defaults);
        EXPECT_EQ(*settings.language(), language);
        EXPECT_EQ(*settings.appearance(), appearance);
        EXPECT_EQ(*settings.startAtLogin(), startAtLogin);
      }
    }
  }
  EXPECT_EQ(notes, Lines{}) << "reading writes nothing";
}

TEST_F(SettingsStoreTest, fallsBackToTheLanguageThatTheUserPrefersElsewhere) {
  for (const char* kept : {"", "zh", "EN", "zh-hans", "fr"}) {
    defaults = defaultsOf({"zh-Hant-TW", "en"});
    defaults->values.setString("appLanguage", kept);
    EXPECT_EQ(*SettingsStore(defaults).language(), AppLanguage::zhHans) << kept;
    defaults = defaultsOf({"fr", "zh-Hans"});
    defaults->values.setString("appLanguage", kept);
    EXPECT_EQ(*SettingsStore(defaults).language(), AppLanguage::en) << kept;
  }
  EXPECT_EQ(*SettingsStore(defaultsOf({"zh-Hans"})).language(), AppLanguage::zhHans);
}

TEST_F(SettingsStoreTest, prefersTheLanguageThatIsKept) {
  defaults = defaultsOf({"zh-Hans"});
  defaults->values.setString("appLanguage", "en");
  EXPECT_EQ(*SettingsStore(defaults).language(), AppLanguage::en);
}

TEST_F(SettingsStoreTest, fallsBackToTheAppearanceOfTheSystem) {
  for (const char* kept : {"", "Dark", "blue"}) {
    defaults->values.setString("appAppearance", kept);
    EXPECT_EQ(*SettingsStore(defaults).appearance(), AppAppearance::system) << kept;
  }
}

TEST_F(SettingsStoreTest, takesATextForNoWishToStartAtLogin) {
  defaults->values.setString("startAtLogin", "true");
  EXPECT_FALSE(*SettingsStore(defaults).startAtLogin());
}

TEST_F(SettingsStoreTest, makesItsLanguageThatOfTheProcess) {
  defaults->values.setString("appLanguage", "zh-Hans");
  const SettingsStore chinese(defaults);
  EXPECT_EQ(L10n::current(), AppLanguage::zhHans);
  EXPECT_EQ(L10n::t(L10n::Key::refresh), "刷新");
  const SettingsStore other(defaultsOf({"en-GB"}));
  EXPECT_EQ(L10n::current(), AppLanguage::en);
  const SettingsStore preferred(defaultsOf({"zh"}));
  EXPECT_EQ(L10n::current(), AppLanguage::zhHans);
}

// What changes

TEST_F(SettingsStoreTest, keepsALanguageAndMakesItThatOfTheProcess) {
  SettingsStore settings(defaults);
  settings.setLanguage(AppLanguage::zhHans);
  EXPECT_EQ(*settings.language(), AppLanguage::zhHans);
  EXPECT_EQ(L10n::current(), AppLanguage::zhHans);
  settings.setLanguage(AppLanguage::en);
  EXPECT_EQ(L10n::current(), AppLanguage::en);
  EXPECT_EQ(notes, (Lines{"appLanguage = zh-Hans", "appLanguage = en"}));
}

TEST_F(SettingsStoreTest, keepsAnAppearance) {
  SettingsStore settings(defaults);
  for (const AppAppearance appearance : allAppearances) {
    settings.setAppearance(appearance);
    EXPECT_EQ(*settings.appearance(), appearance);
  }
  EXPECT_EQ(notes,
            (Lines{"appAppearance = dark", "appAppearance = light", "appAppearance = system"}));
  EXPECT_EQ(L10n::current(), AppLanguage::en);
}

TEST_F(SettingsStoreTest, keepsTheWishToStartAtLoginAndTellsOfItAfterwards) {
  SettingsStore settings(defaults);
  settings.onStartAtLoginChanged([&](bool value) {
    EXPECT_EQ(*settings.startAtLogin(), value) << "it is stored by then";
    notes.emplace_back(value ? "told true" : "told false");
  });
  settings.setStartAtLogin(true);
  settings.setStartAtLogin(false);
  EXPECT_EQ(notes,
            (Lines{"startAtLogin = true", "told true", "startAtLogin = false", "told false"}));
}

TEST_F(SettingsStoreTest, keepsTheWishToStartAtLoginWithNobodyToTell) {
  SettingsStore settings(defaults);
  settings.setStartAtLogin(true);
  EXPECT_TRUE(*settings.startAtLogin());
  EXPECT_EQ(notes, Lines{"startAtLogin = true"});
}

TEST_F(SettingsStoreTest, tellsOfEqualValuesTooButNotOfTheOneItReads) {
  defaults->values.setBoolean("startAtLogin", true);
  SettingsStore settings(defaults);
  int told = 0;
  settings.onStartAtLoginChanged([&](bool) { ++told; });
  EXPECT_EQ(told, 0);
  settings.setStartAtLogin(true);
  EXPECT_EQ(told, 1);
}

TEST_F(SettingsStoreTest, tellsTheLastOneWhoAsked) {
  SettingsStore settings(defaults);
  Lines told;
  settings.onStartAtLoginChanged([&](bool) { told.emplace_back("first"); });
  settings.onStartAtLoginChanged([&](bool) { told.emplace_back("second"); });
  settings.setStartAtLogin(true);
  settings.onStartAtLoginChanged({});
  settings.setStartAtLogin(false);
  EXPECT_EQ(told, Lines{"second"});
}

TEST_F(SettingsStoreTest, announcesEverySetting) {
  SettingsStore settings(defaults);
  const Subscription seen[] = {settings.language().willChange([&](AppLanguage next) {
                                 notes.push_back("becomes " + std::string(next.rawValue()));
                               }),
                               settings.appearance().willChange([&](AppAppearance next) {
                                 notes.push_back("becomes " + std::string(rawValue(next)));
                               }),
                               settings.startAtLogin().willChange([&](bool next) {
                                 notes.emplace_back(next ? "becomes true" : "becomes false");
                               })};
  settings.setLanguage(AppLanguage::zhHans);
  settings.setAppearance(AppAppearance::dark);
  settings.setStartAtLogin(true);
  EXPECT_EQ(notes, (Lines{"becomes zh-Hans", "appLanguage = zh-Hans", "becomes dark",
                          "appAppearance = dark", "becomes true", "startAtLogin = true"}));
}

TEST_F(SettingsStoreTest, readsBackWhatItKept) {
  {
    SettingsStore settings(defaults);
    settings.setLanguage(AppLanguage::zhHans);
    settings.setAppearance(AppAppearance::light);
    settings.setStartAtLogin(true);
  }
  const SettingsStore settings(defaults);
  EXPECT_EQ(*settings.language(), AppLanguage::zhHans);
  EXPECT_EQ(*settings.appearance(), AppAppearance::light);
  EXPECT_TRUE(*settings.startAtLogin());
}

// The first start

TEST_F(SettingsStoreTest, remembersThatTheFirstStartIsFinished) {
  SettingsStore settings(defaults);
  EXPECT_FALSE(settings.hasFinishedOnboarding());
  settings.finishOnboarding();
  EXPECT_TRUE(settings.hasFinishedOnboarding());
  EXPECT_TRUE(SettingsStore(defaults).hasFinishedOnboarding());
  EXPECT_EQ(notes, Lines{"hasFinishedOnboarding = true"});
}

// Starting at login for the first time

TEST_F(SettingsStoreTest, switchesStartAtLoginOnTheFirstTime) {
  SettingsStore settings(defaults);
  settings.onStartAtLoginChanged([&](bool value) { notes.emplace_back(value ? "told" : "off"); });
  settings.autoEnableLoginItemIfFirstTime();
  EXPECT_TRUE(*settings.startAtLogin());
  EXPECT_EQ(notes, (Lines{"didAutoEnableLoginItem = true", "startAtLogin = true", "told"}));
}

TEST_F(SettingsStoreTest, doesSoOnlyOnceEver) {
  SettingsStore settings(defaults);
  settings.autoEnableLoginItemIfFirstTime();
  settings.setStartAtLogin(false);
  notes.clear();
  settings.autoEnableLoginItemIfFirstTime();
  SettingsStore(defaults).autoEnableLoginItemIfFirstTime();
  EXPECT_FALSE(*settings.startAtLogin());
  EXPECT_EQ(notes, Lines{});
}

TEST_F(SettingsStoreTest, doesSoAlsoForSomeoneWhoSwitchedItOffBefore) {
  defaults->values.setBoolean("didAutoEnableLoginItem", false);
  SettingsStore settings(defaults);
  settings.setStartAtLogin(false);
  settings.autoEnableLoginItemIfFirstTime();
  EXPECT_TRUE(*settings.startAtLogin());
}

} // namespace
} // namespace trellivar
