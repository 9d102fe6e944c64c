#include "tests/support/eventually.h"
#include "tests/viewmodels/portable_write_fixture.h"

#include <atomic>
#include <set>
#include <thread>

namespace trellivar {
namespace {

using Modes = std::set<std::string>;

struct PortableWriteOverlapTest : PortableWriteFixture {};

TEST_F(PortableWriteOverlapTest, showsNothingOfAnOlderWrite) {
  model->writeAll(only("P"));
  model->writeAll(only("M"));
  background.runOldest();
  queue.run();
  EXPECT_EQ(*model->status(), writing);
  EXPECT_EQ(model->portableModes(), Modes{"P"}) << "it has happened, though";
  background.runOldest();
  queue.run();
  EXPECT_EQ(*model->status(), done({"M"}));
  EXPECT_EQ(model->portableModes(), Modes{"M"});
  EXPECT_EQ(link->writes, (Writes{Lines{line(1, "P", 'A')}, Lines{line(1, "M", 'A')}}));
}

TEST_F(PortableWriteOverlapTest, showsNoFailureOfAnOlderWrite) {
  link->answer = []() -> std::string { throw Orlo3Error(Orlo3Error::Io{"too early"}); };
  model->writeAll(only("P"));
  model->writeAll(only("M"));
  background.runOldest();
  link->answer = [] { return "1.0.7"; };
  background.runOldest();
  Lines seenThen;
  const Subscription seen = model->status().willChange(
      [&](const WriteStatus& next) { seenThen.push_back(testing::PrintToString(next)); });
  queue.run();
  EXPECT_EQ(seenThen, Lines{"done: 1.0.7 M"});
  EXPECT_EQ(reports, Lines{"too early"}) << "which is not lost";
}

TEST_F(PortableWriteOverlapTest, writesInTheOrderAskedForWhicheverBlockRunsFirst) {
  model->writeAll(only("P"));
  model->writeAll(only("M"));
  model->writeAll(only("R"));
  background.runNewest();
  background.runNewest();
  background.runOldest();
  queue.run();
  EXPECT_EQ(link->writes,
            (Writes{Lines{line(1, "P", 'A')}, Lines{line(1, "M", 'A')}, Lines{line(1, "R", 'A')}}))
      << "else older bindings would stay in the pad";
  EXPECT_EQ(*model->status(), done({"R"}));
  EXPECT_EQ(model->portableModes(), Modes{"R"});
}

// A model that goes

TEST_F(PortableWriteOverlapTest, finishesItsWriteWithoutTheModel) {
  const std::weak_ptr weak = model;
  const std::weak_ptr weakLink = link;
  model->writeAll(only("P"));
  model.reset();
  EXPECT_TRUE(weak.expired());
  background.runOldest();
  EXPECT_EQ(link->writes.size(), 1U);
  queue.run();
  link.reset();
  EXPECT_TRUE(weakLink.expired());
}

TEST_F(PortableWriteOverlapTest, mayGoBetweenTheWriteAndItsOutcome) {
  link->answer = []() -> std::string { throw Orlo3Error(Orlo3Error::Io{"no"}); };
  model->writeAll(only("P"));
  background.runOldest();
  model.reset();
  queue.run();
  EXPECT_EQ(reports, Lines{});
}

TEST_F(PortableWriteOverlapTest, mayGoDuringTheWrite) {
  link->answer = [this] {
    model.reset();
    return "1";
  };
  model->writeAll(only("P"));
  background.runOldest();
  queue.run();
  EXPECT_EQ(model, nullptr);
}

TEST_F(PortableWriteOverlapTest, mayGoWithinAnObserver) {
  const std::weak_ptr weak = model;
  model->writeAll(only("P"));
  background.runOldest();
  const Subscription seen =
      model->status().willChange([this](const WriteStatus&) { model.reset(); });
  queue.run();
  EXPECT_EQ(model, nullptr);
  EXPECT_TRUE(weak.expired());
}

TEST_F(PortableWriteOverlapTest, letsGoOfTheLinkAfterItsLastWrite) {
  const std::weak_ptr weakLink = link;
  link.reset();
  write(only("P"));
  EXPECT_FALSE(weakLink.expired());
  model.reset();
  EXPECT_TRUE(weakLink.expired());
}

// Real threads

/// A thread for each block; waits for all of them in the end.
struct Threads final : BackgroundQueue {
  std::vector<std::thread> threads;
  void async(std::function<void()> block) override { threads.emplace_back(std::move(block)); }
  void join() {
    for (std::thread& each : threads)
      each.join();
    threads.clear();
  }
  ~Threads() override { join(); }
};

/// Gives others every chance to come in while it is in use.
struct CrowdedLink final : Orlo3Linking {
  std::atomic<int> users = 0;
  std::atomic<bool> wasShared = false;
  std::vector<std::string> written; // by one at a time, as the thread sanitizer sees

  std::optional<std::string> discoverPort() override { return std::nullopt; }
  std::optional<Orlo3Reply> query(std::string_view, double) override { return std::nullopt; }
  std::string writeMacros(const std::vector<std::string>& lines) override {
    ++users;
    written.push_back(lines.front());
    for (int i = 0; i < 200; ++i) {
      if (users != 1) wasShared = true;
      std::this_thread::yield();
    }
    --users;
    return lines.front();
  }
};

struct PortableWriteThreadTest : testing::Test {
  desk::ManualQueue queue;
  Threads threads;
  std::shared_ptr<CrowdedLink> link = std::make_shared<CrowdedLink>();
  std::shared_ptr<PortableWriteViewModel> model =
      PortableWriteViewModel::make({queue, threads, link, {}});

  static std::vector<ModeBindings> binding(int keyId) {
    return {{"P", {PortableWriteFixture::tap(keyId, "a")}}};
  }
};

TEST_F(PortableWriteThreadTest, handsTheOutcomeOverToTheMainThread) {
  const auto main = std::this_thread::get_id();
  std::vector<std::thread::id> announcers;
  const Subscription seen = model->status().willChange(
      [&](const WriteStatus&) { announcers.push_back(std::this_thread::get_id()); });
  model->writeAll(binding(7));
  EXPECT_TRUE(eventually([&] {
    queue.run();
    return !model->status()->is<WriteStatus::Writing>();
  }));
  EXPECT_EQ(*model->status(),
            PortableWriteFixture::done({"P"}, {}, PortableWriteFixture::line(7, "P", 'A')));
  EXPECT_EQ(announcers, (std::vector{main, main}));
}

TEST_F(PortableWriteThreadTest, usesTheLinkForOneWriteAtATimeAndShowsTheNewest) {
  constexpr int count = 8;
  std::vector<std::string> expected;
  for (int keyId = 1; keyId <= count; ++keyId) {
    expected.push_back(PortableWriteFixture::line(keyId, "P", 'A'));
    model->writeAll(binding(keyId));
  }
  EXPECT_TRUE(eventually([&] {
    queue.run();
    return !model->status()->is<WriteStatus::Writing>();
  }));
  EXPECT_EQ(*model->status(), PortableWriteFixture::done({"P"}, {}, expected.back()));
  threads.join();
  EXPECT_FALSE(link->wasShared);
  EXPECT_EQ(link->written, expected) << "in the order asked for";
}

TEST_F(PortableWriteThreadTest, mayGoWhileItsWritesAreUnderWay) {
  model->writeAll(binding(1));
  model->writeAll(binding(2));
  model.reset();
  threads.join();
  queue.run();
  EXPECT_EQ(queue.pendingCount(), 0U);
}

} // namespace
} // namespace trellivar
