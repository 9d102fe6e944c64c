#include "tests/journeys/user.h"

#include <ostream>

/// Whatever is under way, the models may go at any moment, and so may the process.
namespace trellivar {
namespace {

/// The person, and what is open besides the window.
struct Scene {
  User user;
  std::shared_ptr<DiscoveryViewModel> sheet;
  std::jthread writing;
  int begun = 0; ///< activities that tell of their end

  void learn() {
    user.learn(1);
    ++begun;
  }
  void record() {
    user.record(1);
    ++begun;
  }
  void listen() {
    if (!sheet) sheet = user.root().discover("P");
    sheet->checkPresence();
    sheet->captureKey(1, [this] { ++user.completed; });
    user.machine.desk.queue().run();
    ++begun;
  }
};

struct Moment {
  const char* name;
  void (*reach)(Scene&);
};
void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

const Moment moments[] = {
    {"nothing", [](Scene&) {}},
    {"aPadThatIsNotNoticedYet",
     [](Scene& s) { s.user.machine.pad.connect(User::Link::bluetooth); }},
    {"aPermissionThatIsNotNoticedYet", [](Scene& s) { s.user.machine.desk.setTrusted(false); }},
    {"aRemappedKeyThatIsHeld", [](Scene& s) { s.user.hold(1); }},
    {"aKeyThatIsHeld", [](Scene& s) { s.user.hold(2); }},
    {"aLearnThatDoesNotListenYet",
     [](Scene& s) {
       s.user.select(1);
       s.user.mapping().learnKey([&s] { ++s.user.completed; });
       ++s.begun;
     }},
    {"aLearn", [](Scene& s) { s.learn(); }},
    {"aLearnWithTheKeyHeld",
     [](Scene& s) {
       s.learn();
       s.user.hold(1);
     }},
    {"aLearnThatHasHeardTheKey",
     [](Scene& s) {
       s.learn();
       s.user.press(1);
     }},
    {"aLearnBetweenTwoPeriods",
     [](Scene& s) {
       s.learn();
       s.user.pass(12);
     }},
    {"aLearnInItsLastPeriod",
     [](Scene& s) {
       s.learn();
       s.user.pass(30);
     }},
    {"aLearnWithoutThePad",
     [](Scene& s) {
       s.learn();
       s.user.unplug();
     }},
    {"aLearnThatMayNotListen",
     [](Scene& s) {
       s.user.permit(true, false);
       s.learn();
     }},
    {"twoLearnsAtOnce",
     [](Scene& s) {
       s.learn();
       s.learn();
     }},
    {"aRecording", [](Scene& s) { s.record(); }},
    {"aRecordingWithAKeyHeld",
     [](Scene& s) {
       s.record();
       s.user.machine.desk.press(s.user.machine.keyboard, KeyName("x"));
       s.user.pass(0.1);
     }},
    {"aRecordingInItsLastPeriod",
     [](Scene& s) {
       s.record();
       s.user.pass(20);
     }},
    {"aLearnAndARecording",
     [](Scene& s) {
       s.learn();
       s.record();
     }},
    {"aSheet", [](Scene& s) { s.sheet = s.user.root().discover("P"); }},
    {"aSheetThatListens", [](Scene& s) { s.listen(); }},
    {"aSheetThatListensWithTheKeyHeld",
     [](Scene& s) {
       s.listen();
       s.user.hold(1);
     }},
    {"aSheetThatListensTwice",
     [](Scene& s) {
       s.listen();
       s.listen();
     }},
    {"aSheetThatWasClosedWhileItListened",
     [](Scene& s) {
       s.listen();
       s.sheet.reset();
     }},
    {"aSheetThatIsSaved",
     [](Scene& s) {
       s.listen();
       s.user.press(1);
       s.user.pass(0.6);
       s.sheet->save();
     }},
    {"aWriteThatHasNotBegun", [](Scene& s) { s.user.root().writeToPad(); }},
    {"aWrite",
     [](Scene& s) {
       s.user.root().writeToPad();
       s.writing = s.user.background.begin();
     }},
    {"aWriteWhoseEndIsNotNoticedYet",
     [](Scene& s) {
       s.user.root().writeToPad();
       s.user.background.run();
     }},
};

class Destruction : public testing::TestWithParam<Moment> {
protected:
  Destruction() {
    scene.user.start();
    scene.user.connect(User::Link::usb);
    scene.user.assign(1, chordOutput({Modifier::command}, "v"));
    GetParam().reach(scene);
  }

  /// Everything that a desk can do, with all that was held let go of.
  void goOn() {
    User& user = scene.user;
    if (scene.writing.joinable()) scene.writing.join();
    user.background.run();
    user.letGo(1);
    user.letGo(2);
    user.machine.desk.release(user.machine.keyboard, KeyName("x"));
    user.pass(1);
    EXPECT_EQ(user.held(), "");
    user.type({"left_shift", "b"});
    for (const auto link : {User::Link::away, User::Link::usb, User::Link::bluetooth}) {
      user.connect(link);
      user.press(1);
    }
    user.permit(false, false);
    user.permit(true, true);
    user.pass(60);
    EXPECT_EQ(user.held(), "");
  }

  Scene scene;
};

TEST_P(Destruction, theModelsGo) {
  scene.user.closeForGood();
  scene.sheet.reset();
  EXPECT_TRUE(scene.user.app().engine->exempted.empty());
  goOn();
  EXPECT_EQ(scene.user.completed, scene.begun) << "whoever waits for an end hears of it";
  EXPECT_TRUE(scene.user.app().engine->exempted.empty());
}

TEST_P(Destruction, theModelsGoBeforeTheSheet) {
  scene.user.closeForGood();
  goOn();
  EXPECT_EQ(scene.user.completed, scene.begun);
  EXPECT_TRUE(scene.user.app().engine->exempted.empty());
}

TEST_P(Destruction, theProcessGoes) {
  scene.sheet.reset();
  const auto before = scene.user.storedProfiles();
  scene.user.quit();
  goOn();
  EXPECT_LE(scene.user.completed, scene.begun);
  EXPECT_EQ(scene.user.storedProfiles(), before);
  scene.user.machine.pad.setMacros({}); // what may have been written plays no part
  scene.user.connect(User::Link::usb);
  scene.user.start();
  EXPECT_EQ(scene.user.heardOf(1),
            "*left_command+ *v+(left_command) *v-(left_command) *left_command-");
}

INSTANTIATE_TEST_SUITE_P(During, Destruction, testing::ValuesIn(moments),
                         [](const auto& each) { return std::string(each.param.name); });

class DestructionWithin : public testing::Test {
protected:
  DestructionWithin() {
    user.start();
    user.connect(User::Link::usb);
  }
  std::function<void()> goodbye() {
    return [this] {
      ++user.completed;
      user.closeForGood();
    };
  }

  User user;
};

TEST_F(DestructionWithin, theEndOfALearn) {
  user.select(1);
  user.mapping().learnKey(goodbye());
  user.pass(0.15);
  user.press(1);
  user.pass(0.6);
  EXPECT_EQ(user.completed, 1);
  EXPECT_EQ(user.storedSignatures().size(), 1U);
}

TEST_F(DestructionWithin, theEndOfARecording) {
  user.select(1);
  user.mapping().record(goodbye());
  user.type({"x"});
  user.pass(0.6);
  EXPECT_EQ(user.completed, 1);
  EXPECT_EQ(user.storedMappings("P").size(), 1U);
}

TEST_F(DestructionWithin, theEndOfACapture) {
  auto sheet = user.root().discover("P");
  sheet->checkPresence();
  sheet->captureKey(1, [&] {
    ++user.completed;
    sheet.reset();
    user.closeForGood();
  });
  user.press(1);
  user.pass(0.6);
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(user.app().engine->exempted.empty());
}

} // namespace
} // namespace trellivar
