#include "tests/app/journeys/person.h"
#include "tests/app/journeys/program.h"

namespace trellivar {
namespace {

class Process : public testing::Test {
protected:
  bool isAlone() const { return person.display().windows("Trellivar").size() == 1; }
  void waitForWindows(Program& program) const {
    waitFor("both windows are there",
            [&] { return isAlone() && person.display().windows("Desk").size() == 1; });
    EXPECT_TRUE(program.isRunning());
  }
  static void waitForTheEnd(Program& program) {
    waitFor("the process has ended", [&] { return !program.isRunning(); });
  }

  mutable Person person;
};

TEST_F(Process, aSecondOneBringsTheWindowOfTheFirstForwardAndEnds) {
  Display& display = person.display();
  Program first(person.arguments());
  waitForWindows(first);
  const auto window = display.windows("Trellivar").front();
  const auto desk = display.windows("Desk").front();
  display.raise(desk);
  display.focus(desk);
  display.type("a"); // X ignores whoever has heard nothing since the focus moved
  ASSERT_FALSE(display.isInFront(window));
  ASSERT_FALSE(display.hasFocus(window));

  Program second(person.arguments());
  waitForTheEnd(second);
  EXPECT_EQ(second.exitCode(), 0);
  waitFor("the first one's window is in front", [&] { return display.isInFront(window); });
  waitFor("it has the keyboard", [&] { return display.hasFocus(window); });
  EXPECT_TRUE(isAlone());
  EXPECT_TRUE(first.isRunning());
  EXPECT_EQ(first.complaints() + second.complaints(), "");
}

TEST_F(Process, aSecondOneOpensTheWindowOfTheFirstThatWasClosed) {
  Display& display = person.display();
  Program first(person.arguments());
  waitForWindows(first);
  display.close(display.windows("Trellivar").front());
  waitFor("it is closed", [&] { return display.windows("Trellivar").empty(); });

  Program second(person.arguments());
  waitForTheEnd(second);
  EXPECT_EQ(second.exitCode(), 0);
  waitForWindows(first);
  EXPECT_EQ(first.complaints() + second.complaints(), "");
}

TEST_F(Process, thatIsKilledShowsAndKeepsWhatWasThere) {
  Surface& window = person.window;
  person.start();
  person.goOnToThePad();
  person.bind(1, Text::mute);
  window.click(button("SETTINGS"));
  window.click(choice("Dark"));
  window.click(choice("简体中文"));
  window.expect(heading("设置"));
  person.restart();
  const QImage before = person.pictureOfTheWindow();
  EXPECT_EQ(person.quit(), 0);

  Program program(person.arguments());
  waitForWindows(program);
  for (Surface* surface : {&window, &person.desk})
    person.display().place(surface->id().value(), surface->place());
  waitFor("it looks as before", [&] { return person.pictureOfTheWindow() == before; });
  program.kill();

  person.start();
  window.expect(button("1 静音"));
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media");
}

} // namespace
} // namespace trellivar
