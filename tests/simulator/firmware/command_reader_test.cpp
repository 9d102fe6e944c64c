#include "engine/orlo3_protocol.h"
#include "simulator/firmware/command_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar::firmware {
namespace {

using Commands = std::vector<std::string>;

const std::string query = R"({"o":"get","t":"firmware"})";

/// A command of a given length, at least 30 bytes.
std::string commandOf(std::size_t size, char filling = 'x') {
  const std::string head = R"({"o":"set","k":")";
  return head + std::string(size - head.size() - 2, filling) + "\"}";
}

Commands framesOf(const std::string& command, int seq) {
  return Orlo3Protocol::frame(command, seq);
}

class CommandReaderTest : public testing::Test {
protected:
  Commands receive(const std::string& bytes) { return reader_.receive(bytes); }
  Commands receiveAll(const Commands& pieces) {
    Commands commands;
    for (const std::string& piece : pieces) {
      for (std::string& command : reader_.receive(piece))
        commands.push_back(std::move(command));
    }
    return commands;
  }
  /// Whatever happened before, a command that begins now is understood.
  void expectUnderstanding() {
    const std::string command = commandOf(150, 'u');
    EXPECT_EQ(receiveAll(framesOf(command, 8)), Commands{command});
    EXPECT_EQ(receive(query), Commands{query});
  }
  int dropped() const { return reader_.dropped(); }

  CommandReader reader_;
};

TEST_F(CommandReaderTest, readsShortCommandsWhole) {
  for (const std::size_t size : {30U, 55U, 56U, 63U}) {
    EXPECT_EQ(receive(commandOf(size)), Commands{commandOf(size)}) << size;
  }
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, putsFramesTogether) {
  for (const std::size_t size : {64U, 109U, 110U, 111U, 165U, 166U, 1000U, 5500U}) {
    const std::string command = commandOf(size);
    EXPECT_EQ(receiveAll(framesOf(command, 3)), Commands{command}) << size;
  }
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, findsTheBoundariesOfWhatArrivesGluedTogether) {
  Commands sent;
  std::string bytes;
  for (int seq = 1; seq <= 9; ++seq) {
    sent.push_back(commandOf(50 + 20 * static_cast<std::size_t>(seq)));
    for (const std::string& frame : framesOf(sent.back(), seq))
      bytes += frame;
    sent.push_back(query);
    bytes += query;
  }
  EXPECT_EQ(receive(bytes), sent);
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, readsSplintersAsWell) {
  const std::string command = commandOf(200);
  Commands bytes;
  for (const std::string& frame : framesOf(command, 4)) {
    for (const char byte : frame)
      bytes.emplace_back(1, byte);
  }
  EXPECT_EQ(receiveAll(bytes), Commands{command});
}

TEST_F(CommandReaderTest, lineEndsBetweenCommandsAreNothing) {
  EXPECT_EQ(receive("\r\n" + query + "\n\n " + query + "\r\n"), (Commands{query, query}));
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, bracesInTextsAndHeadersInTextsAreNoBoundaries) {
  const std::string tricky =
      R"({"o":"set","k":"}{\"}S1[1/2]{\\","v":"S2[2/3]S2[1/2]{","x":"}}}}}}}}}}}}}}}}}}}}}}}}}}"})";
  ASSERT_GT(tricky.size(), 63U);
  EXPECT_EQ(receiveAll(framesOf(tricky, 2)), Commands{tricky});
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, everyLostFrameCostsItsCommandAndNoOther) {
  const std::string command = commandOf(55 * 5);
  const Commands frames = framesOf(command, 3);
  for (std::size_t lost = 0; lost < frames.size(); ++lost) {
    reader_ = {};
    Commands sent = framesOf(commandOf(100), 2);
    for (std::size_t i = 0; i < frames.size(); ++i) {
      if (i != lost) sent.push_back(frames[i]);
    }
    for (const std::string& frame : framesOf(commandOf(101), 4))
      sent.push_back(frame);
    EXPECT_EQ(receiveAll(sent), (Commands{commandOf(100), commandOf(101)})) << lost;
    EXPECT_EQ(dropped(), 1) << lost;
    expectUnderstanding();
  }
}

TEST_F(CommandReaderTest, aFrameThatComesTwiceSpoilsItsCommand) {
  const Commands frames = framesOf(commandOf(200), 3);
  EXPECT_EQ(receiveAll({frames[0], frames[1], frames[1], frames[2], frames[3]}), Commands{});
  EXPECT_EQ(dropped(), 1);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, framesOutOfOrderSpoilTheirCommand) {
  const Commands frames = framesOf(commandOf(200), 3);
  EXPECT_EQ(receiveAll({frames[0], frames[2], frames[1], frames[3]}), Commands{});
  EXPECT_EQ(dropped(), 1);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aFirstFrameAlwaysBeginsAnew) {
  const Commands frames = framesOf(commandOf(200), 3);
  EXPECT_EQ(receiveAll({frames[0], frames[1], frames[0], frames[1], frames[2], frames[3]}),
            Commands{commandOf(200)});
  EXPECT_EQ(dropped(), 1);
}

TEST_F(CommandReaderTest, interleavedSequencesSpoilEachOther) {
  const Commands a = framesOf(commandOf(100, 'a'), 1);
  const Commands b = framesOf(commandOf(100, 'b'), 2);
  EXPECT_EQ(receiveAll({a[0], b[0], a[1], b[1]}), Commands{});
  EXPECT_EQ(dropped(), 2);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aWrongCountSpoilsTheCommand) {
  const std::string command = commandOf(100);
  for (const std::string total : {"3", "4", "10", "999"}) {
    reader_ = {};
    EXPECT_EQ(receiveAll({"S1[1/" + total + "]" + command.substr(0, 55),
                          "S1[2/" + total + "]" + command.substr(55)}),
              Commands{})
        << total;
    EXPECT_EQ(dropped(), 1) << total;
    expectUnderstanding();
  }
  reader_ = {};
  EXPECT_EQ(receiveAll({"S1[1/2]" + command.substr(0, 55), "S1[2/3]" + command.substr(55)}),
            Commands{});
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aCommandThatGoesOnAfterItsLastFrameIsSpoilt) {
  const std::string command = commandOf(165);
  EXPECT_EQ(receiveAll({"S1[1/2]" + command.substr(0, 55), "S1[2/2]" + command.substr(55, 55)}),
            Commands{});
  EXPECT_EQ(dropped(), 1);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aWholeCommandEndsTheOneWhoseFramesAreMissing) {
  const Commands frames = framesOf(commandOf(200), 3);
  EXPECT_EQ(receiveAll({frames[0], frames[1], query}), Commands{query});
  EXPECT_EQ(dropped(), 1);
  EXPECT_EQ(receiveAll({frames[2], frames[3]}), Commands{});
  expectUnderstanding();
}

TEST_F(CommandReaderTest, noiseIsCountedOnceAndPassedOver) {
  for (const std::string noise :
       {"x",       "hello",   "S",       "S1",       "S1[",      "S1[1/2",   "S0[1/2]",
        "S1[0/2]", "S1[3/2]", "S1[1/1]", "S1[01/2]", "S1[1/02]", "S12[1/2]", "S1[1000/1000]",
        "S1[/2]",  "s1[1/2]", "S1(1/2)", "}",        "\xFF\xFE", "]]"}) {
    reader_ = {};
    EXPECT_EQ(receive(noise + query), Commands{query}) << noise;
    EXPECT_EQ(dropped(), 1) << noise;
  }
}

TEST_F(CommandReaderTest, noiseBetweenFramesSpoilsTheCommand) {
  const Commands frames = framesOf(commandOf(100), 3);
  EXPECT_EQ(receiveAll({frames[0], "x", frames[1]}), Commands{});
  EXPECT_EQ(dropped(), 1);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aWholeCommandOfMoreThan63BytesIsRefused) {
  EXPECT_EQ(receive(commandOf(64)), Commands{});
  EXPECT_EQ(dropped(), 1);
  expectUnderstanding();
}

TEST_F(CommandReaderTest, aLostTailCostsNoMoreThanItsCommandOnceTheLineHasBeenQuiet) {
  const Commands frames = framesOf(commandOf(200), 3);
  for (std::size_t size = 1; size < frames[3].size(); ++size) {
    reader_ = {};
    EXPECT_EQ(receiveAll({frames[0], frames[1], frames[2], frames[3].substr(0, size)}), Commands{});
    reader_.dropUnfinished();
    EXPECT_EQ(dropped(), 1) << size;
    expectUnderstanding();
  }
}

TEST_F(CommandReaderTest, aQuietLineWithNothingUnfinishedDropsNothing) {
  reader_.dropUnfinished();
  receive(query);
  reader_.dropUnfinished();
  receiveAll(framesOf(commandOf(100), 1));
  reader_.dropUnfinished();
  EXPECT_EQ(dropped(), 0);
}

TEST_F(CommandReaderTest, aQuietLineEndsHalfACommand) {
  receive(query.substr(0, 10));
  reader_.dropUnfinished();
  EXPECT_EQ(dropped(), 1);
  EXPECT_EQ(receive(query), Commands{query});
}

TEST_F(CommandReaderTest, aCountThatChangesOnTheWaySpoilsTheCommand) {
  const std::string command = commandOf(165);
  EXPECT_EQ(receiveAll({"S1[1/2]" + command.substr(0, 55), "S1[2/3]" + command.substr(55, 55),
                        "S1[3/3]" + command.substr(110)}),
            Commands{});
  EXPECT_EQ(dropped(), 2) << "what had two frames, and what has three";
  expectUnderstanding();
}

TEST_F(CommandReaderTest, countsAnewAfterAWholeCommand) {
  const Commands frames = framesOf(commandOf(200), 3);
  receiveAll({frames[1], frames[2]});
  EXPECT_EQ(dropped(), 1);
  receive(query);
  receiveAll({frames[1], frames[2]});
  EXPECT_EQ(dropped(), 2);
}

TEST_F(CommandReaderTest, countsAnewWhenASequenceNumberComesAgain) {
  const Commands frames = framesOf(commandOf(200), 3);
  receiveAll({frames[0], frames[2]});
  receiveAll({frames[0], frames[2]});
  EXPECT_EQ(dropped(), 2);
}

} // namespace
} // namespace trellivar::firmware
