#include "tests/viewmodels/language_change.h"
#include "tests/viewmodels/portable_write_fixture.h"

#include <set>
#include <stdexcept>

namespace trellivar {
namespace {

struct PortableWriteTest : PortableWriteFixture {
  using Modes = std::set<std::string>;

  template <class Case> void failWith(Case reason) {
    link->answer = [reason]() -> std::string { throw Orlo3Error(reason); };
  }
};

TEST_F(PortableWriteTest, beginsIdle) {
  EXPECT_EQ(*model->status(), idle);
  EXPECT_EQ(WriteStatus{}, idle);
  EXPECT_EQ(model->portableModes(), Modes{});
  EXPECT_TRUE(background.blocks.empty());
}

TEST_F(PortableWriteTest, isWritingAtOnceAndTalksToThePadInTheBackground) {
  model->writeAll(only("P"));
  EXPECT_EQ(*model->status(), writing);
  queue.run();
  EXPECT_EQ(*model->status(), writing);
  EXPECT_TRUE(link->writes.empty());
  background.runOldest();
  EXPECT_EQ(link->writes.size(), 1U);
}

TEST_F(PortableWriteTest, showsTheOutcomeOnTheMainQueueOnly) {
  int announced = 0;
  model->writeAll(only("P"));
  const Subscription seen = model->status().willChange([&](const WriteStatus&) { ++announced; });
  background.runOldest();
  EXPECT_EQ(*model->status(), writing);
  EXPECT_EQ(announced, 0);
  queue.run();
  EXPECT_EQ(*model->status(), done({"P"}));
  EXPECT_EQ(announced, 1);
}

// What is written

TEST_F(PortableWriteTest, writesEachBindingAsASingleClick) {
  EXPECT_EQ(write({{"M", {tap(2, "c")}}}), done({"M"}));
  EXPECT_EQ(link->writes,
            Writes{Lines{
                R"({"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":"down","k":"C","c":67},)"
                R"({"t":"wait","ms":30},{"t":"up","k":"C","c":67}],"r":1,"s":"M"})"}});
}

TEST_F(PortableWriteTest, writesTheKeysOfEachModeInAscendingOrder) {
  write({{"R", {tap(10, "a"), tap(2, "b"), tap(-1, "c"), tap(3, "d")}}});
  EXPECT_EQ(link->writes, Writes{(Lines{line(-1, "R", 'C'), line(2, "R", 'B'), line(3, "R", 'D'),
                                        line(10, "R", 'A')})});
}

TEST_F(PortableWriteTest, writesTheModesInTheOrderGivenAtOnce) {
  EXPECT_EQ(write({{"R", {tap(3, "a"), tap(1, "b")}}, {"P", {tap(2, "c")}}, {"M", {}}}),
            done({"R", "P", "M"}));
  EXPECT_EQ(link->writes, Writes{(Lines{line(1, "R", 'B'), line(3, "R", 'A'), line(2, "P", 'C')})});
}

TEST_F(PortableWriteTest, showsTheFirmwareThatThePadReports) {
  link->answer = [] { return "2.1 β"; };
  EXPECT_EQ(write(only("P")), done({"P"}, {}, "2.1 β"));
  link->answer = [] { return ""; };
  EXPECT_EQ(write(only("P")), done({"P"}, {}, ""));
}

TEST_F(PortableWriteTest, skipsWhatTheFirmwareCannotPlayAndWritesTheRest) {
  EXPECT_EQ(write({{"P", {unmappable(3), tap(2, "a"), unmappable(1)}},
                   {"M", {unmappable(2)}},
                   {"R", {tap(1, "b")}}}),
            done({"P", "M", "R"}, {{"P", {1, 3}}, {"M", {2}}}));
  EXPECT_EQ(link->writes, Writes{(Lines{line(2, "P", 'A'), line(1, "R", 'B')})});
  EXPECT_EQ(reports, Lines{}) << "that is no error";
}

TEST_F(PortableWriteTest, hasNothingToWriteWithoutABindingThatThePadCanPlay) {
  for (const auto& modes : std::vector<std::vector<ModeBindings>>{
           {},
           {{"P", {}}},
           {{"P", {}}, {"M", {}}, {"R", {}}},
           {{"P", {unmappable(1)}}},
           {{"P", {unmappable(1), unmappable(2)}}, {"M", {unmappable(1)}}}})
    EXPECT_EQ(write(modes), error("Nothing to write yet — record a key first."));
  EXPECT_TRUE(link->writes.empty());
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(write({}), error("还没有可写入的内容 — 请先录制一个按键。"));
}

// Failures

TEST_F(PortableWriteTest, needsThePadWhenThereIsNoPortOrNobodyAnswers) {
  failWith(Orlo3Error::NoPort{});
  EXPECT_EQ(write(only("P")), needPad);
  failWith(Orlo3Error::Dormant{});
  EXPECT_EQ(write(only("P")), needPad);
  EXPECT_EQ(reports, Lines{});
}

TEST_F(PortableWriteTest, saysThatThePadStoppedAnswering) {
  failWith(Orlo3Error::HealthCheckFailed{});
  EXPECT_EQ(write(only("P")), error("Pad stopped responding mid-write — reconnect (replug) the "
                                    "Orlo3 and try again."));
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(write(only("P")), error("写入过程中键盘停止响应 — 请重新插拔 Orlo3 后重试。"));
}

TEST_F(PortableWriteTest, showsAndReportsTheMessageOfAnyOtherFailure) {
  failWith(Orlo3Error::Io{"/dev/cu.pad: Resource busy"});
  EXPECT_EQ(write(only("P")), error("/dev/cu.pad: Resource busy"));
  link->answer = []() -> std::string { throw std::runtime_error("the cable is bitten through"); };
  EXPECT_EQ(write(only("P")), error("the cable is bitten through"));
  EXPECT_EQ(reports, (Lines{"/dev/cu.pad: Resource busy", "the cable is bitten through"}));
}

TEST_F(PortableWriteTest, triesNothingTwiceByItself) {
  failWith(Orlo3Error::Dormant{});
  write(only("P"));
  EXPECT_EQ(link->writes.size(), 1U);
  EXPECT_TRUE(background.blocks.empty());
  EXPECT_EQ(queue.pendingCount(), 0U);
}

TEST_F(PortableWriteTest, mayWriteAgainFromAnyStatus) {
  failWith(Orlo3Error::NoPort{});
  EXPECT_EQ(write(only("P")), needPad);
  failWith(Orlo3Error::HealthCheckFailed{});
  EXPECT_TRUE(write(only("P")).is<WriteStatus::Error>());
  link->answer = [] { return "1"; };
  for (int i = 0; i < 2; ++i) {
    model->writeAll(only("P"));
    EXPECT_EQ(*model->status(), writing);
    background.runOldest();
    queue.run();
    EXPECT_EQ(*model->status(), done({"P"}, {}, "1"));
  }
}

// A pad that is connected again

TEST_F(PortableWriteTest, isIdleAgainWhenThePadIsThere) {
  failWith(Orlo3Error::NoPort{});
  write(only("P"));
  model->clearNeedPad();
  EXPECT_EQ(*model->status(), idle);
}

TEST_F(PortableWriteTest, keepsEveryOtherStatusWhenThePadIsThere) {
  model->clearNeedPad();
  EXPECT_EQ(*model->status(), idle);
  model->writeAll(only("P"));
  model->clearNeedPad();
  EXPECT_EQ(*model->status(), writing);
  background.runOldest();
  queue.run();
  model->clearNeedPad();
  EXPECT_EQ(*model->status(), done({"P"}));
  write({});
  const WriteStatus failed = *model->status();
  model->clearNeedPad();
  EXPECT_EQ(*model->status(), failed);
}

// The modes that the pad has

TEST_F(PortableWriteTest, remembersTheModesOfTheLastWriteThatSucceeded) {
  write({{"R", {tap(1, "a")}}, {"P", {unmappable(1)}}});
  EXPECT_EQ(model->portableModes(), (Modes{"P", "R"}));
  write(only("M"));
  EXPECT_EQ(model->portableModes(), Modes{"M"});
  write({{"P", {}}});
  failWith(Orlo3Error::HealthCheckFailed{});
  write(only("R"));
  EXPECT_EQ(model->portableModes(), Modes{"M"});
}

TEST_F(PortableWriteTest, remembersTheModesBeforeItIsDone) {
  Modes seenThen;
  model->writeAll(only("R"));
  const Subscription seen =
      model->status().willChange([&](const WriteStatus&) { seenThen = model->portableModes(); });
  background.runOldest();
  EXPECT_EQ(model->portableModes(), Modes{});
  queue.run();
  EXPECT_EQ(seenThen, Modes{"R"});
}

TEST(WriteStatus, differsByCaseAndPayload) {
  const WriteStatus::Done done{"1", {"P"}, {{"P", {1}}}};
  EXPECT_EQ(WriteStatus{done}, WriteStatus{done});
  EXPECT_NE(WriteStatus{done}, (WriteStatus{WriteStatus::Done{"2", {"P"}, {{"P", {1}}}}}));
  EXPECT_NE(WriteStatus{done}, (WriteStatus{WriteStatus::Done{"1", {"M"}, {{"P", {1}}}}}));
  EXPECT_NE(WriteStatus{done}, (WriteStatus{WriteStatus::Done{"1", {"P"}, {}}}));
  EXPECT_NE(WriteStatus{WriteStatus::Error{"a"}}, WriteStatus{WriteStatus::Error{"b"}});
  EXPECT_NE(WriteStatus{WriteStatus::Idle{}}, WriteStatus{WriteStatus::Writing{}});
  EXPECT_NE(WriteStatus{WriteStatus::Idle{}}, WriteStatus{WriteStatus::NeedPad{}});
}

} // namespace
} // namespace trellivar
