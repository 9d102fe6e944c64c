#include "tests/cli/cli_fixture.h"
#include "tests/cli/documents.h"

#include <algorithm>

namespace trellivar::cli {
namespace {

using namespace documents;

/// Every way to give a file to a command: the arguments before and after it.
struct Reader {
  std::vector<std::string> before, after;
  bool readsLines;
  std::string root; ///< of a document that is right up to its end
};

const Reader readers[] = {
    {{"compile"}, {}, false, "{"},
    {{"replay", "--sets"}, {"/dev/null"}, false, "{"},
    {{"expand"}, {}, false, "{"},
    {{"macro"}, {}, false, "{"},
    {{"profiles", "import"}, {}, false, "["},
    {{"write", "--dry-run", "--profiles"}, {}, false, "["},
    {{"classify"}, {}, true, "{"},
    {{"signature", "--vendor", "1", "--product", "2"}, {}, true, "{"},
    {{"recorded-output", "--vendor", "1", "--product", "2"}, {}, true, "{"},
};

class BadInputTest : public CliTest {
protected:
  Answer read(const Reader& reader, const std::string& name, const std::string& input = "") const {
    Arguments arguments{"--data-dir", path("data")};
    arguments.insert(arguments.end(), reader.before.begin(), reader.before.end());
    arguments.push_back(name);
    arguments.insert(arguments.end(), reader.after.begin(), reader.after.end());
    return run(arguments, input);
  }

  /// Expects one line that begins with "trellivarctl: FILE" and `where`, code 2, and nothing else
  /// anywhere, for the file and for standard input.
  void expectBad(const Reader& reader, const std::string& content, const std::string& where) const {
    const std::string name = file("input", content);
    const auto before = tree();
    const std::pair<Answer, std::string> answers[] = {{read(reader, name), name},
                                                      {read(reader, "-", content), "-"}};
    for (const auto& [answer, source] : answers) {
      EXPECT_EQ(answer.code, 2) << reader.before[0] << '\n' << answer.err;
      EXPECT_EQ(answer.out, "");
      EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + source + ":" + where)) << answer.err;
      EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1) << answer.err;
      EXPECT_TRUE(answer.err.ends_with('\n'));
    }
    EXPECT_EQ(tree(), before);
  }
};

TEST_F(BadInputTest, aDocumentThatIsCutOffEndsInItsLastLine) {
  for (const Reader& reader : readers) {
    if (reader.readsLines) continue;
    expectBad(reader, "", "1: ");
    expectBad(reader, reader.root, "1: ");
    expectBad(reader, reader.root + "\n", "1: ");
    expectBad(reader, reader.root + "\n\n", "2: ");
    expectBad(reader, reader.root + "\r\n\r\n ", "3: ");
  }
  expectBad(readers[0], "{\"sets\":[\n{\"device\":\n{\"name\":\"P", "3: ");
}

TEST_F(BadInputTest, aSyntaxErrorIsReportedWithItsLine) {
  for (const Reader& reader : readers) {
    if (reader.readsLines) continue;
    expectBad(reader, "\n\n" + reader.root + "\n:\n\n\n", "4: ");
    expectBad(reader, "{}\n{}", "2: ");
    expectBad(reader, "\n01", "2: ");
    expectBad(reader, "\"a\nb\"", "1: ");
  }
}

TEST_F(BadInputTest, aRecordIsReportedWithItsLine) {
  for (const Reader& reader : readers) {
    if (!reader.readsLines) continue;
    expectBad(reader, "{", "1: ");
    expectBad(reader, "\n \t\r\n\r\n{\"key\"", "4: ");
    expectBad(reader, "\r\n{}\r\n", "2: phase: missing\n");
    expectBad(reader, "[]\n{}", "1: ");
    expectBad(reader, "{\n}", "1: ");
    expectBad(reader, "{} {}", "1: ");
  }
}

TEST_F(BadInputTest, deepNestingIsRefused) {
  for (const Reader& reader : readers) {
    for (const int depth : {257, 100'000}) {
      const auto levels = static_cast<std::size_t>(depth);
      expectBad(reader, "\n" + std::string(levels, '['), "2: nested more than 256 levels deep\n");
      std::string objects = "\n";
      for (std::size_t i = 0; i < levels; ++i)
        objects += "{\"a\":";
      expectBad(reader, objects, "2: nested more than 256 levels deep\n");
    }
  }
}

TEST_F(BadInputTest, repeatedKeysAreRefusedWithTheirPlace) {
  for (const Reader& reader : readers) {
    if (reader.readsLines)
      expectBad(reader, "\n{\"x\":[0,{\"y\":1,\"y\":1}]}", "2: x[1].y: the key is there twice\n");
    else
      expectBad(reader, "\n{\"x\":[0,{\"y\":1,\"y\":1}]}", "x[1].y: the key is there twice\n");
  }
}

TEST_F(BadInputTest, invalidUtf8IsRefusedAndTheMessageIsValid) {
  for (const Reader& reader : readers)
    for (const std::string bytes : {"\xff", "\xc3\x28", "\xed\xa0\x80", "\xf5\x80\x80\x80"})
      expectBad(reader, "\n{\"x\":\"" + bytes + "\"}", "2: ");
  const Answer answer = run({"compile", "-"}, "\xff\xfe");
  EXPECT_NO_THROW((void)Json(answer.err).dump());
}

TEST_F(BadInputTest, zeroBytesAndControlCharactersAreRefusedInOneLine) {
  for (const Reader& reader : readers)
    for (const std::string& bytes :
         {std::string(1, '\0'), std::string("\x01"), std::string("\"\v\"")})
      expectBad(reader, bytes, "1: ");
}

TEST_F(BadInputTest, aSetsDocumentOfAnotherShapeIsReportedWithThePath) {
  struct Case {
    std::string document, where;
  };
  const std::string pad = device(R"("vendorId":7,"productId":9)", physicalKey(1, "", false));
  const Case cases[] = {
      {"[]", "1: expected an object, found a list\n"},
      {"null", "1: expected an object, found null\n"},
      {"{}", "sets: missing\n"},
      {R"({"sets":{}})", "sets: expected a list, found an object\n"},
      {R"({"sets":[7]})", "sets[0]: expected an object, found the number 7\n"},
      {R"({"sets":[{"device":{"name":null}}]})",
       "sets[0].device.name: expected a text, found null\n"},
      {sets(mappingSet(device(R"("vendorId":1.0,"productId":9)", ""), profile("P", ""))),
       "sets[0].device.vendorId: expected an integer from -2147483648 to 2147483647, found the "
       "number 1.0\n"},
      {sets(mappingSet(device(R"("vendorId":7,"productId":-2147483649)", ""), profile("P", ""))),
       "sets[0].device.productId: expected an integer from -2147483648 to 2147483647, found the "
       "number -2147483649\n"},
      {sets(mappingSet(device(R"("vendorId":7,"productId":99999999999999999999)", ""),
                       profile("P", ""))),
       "sets[0].device.productId: expected an integer from "},
      {sets(mappingSet(device(R"("vendorId":true,"productId":9)", ""), profile("P", ""))),
       "sets[0].device.vendorId: expected an integer from -2147483648 to 2147483647, found true\n"},
      {sets(mappingSet(device(R"("vendorId":7,"productId":9)", R"({"id":1,"row":0})"),
                       profile("P", ""))),
       "sets[0].device.layout.keys[0].col: missing\n"},
      {sets(mappingSet(pad, R"({"id":"5C1F7A52","name":"P","mappings":[]})")),
       "sets[0].profile.id: expected a UUID of 36 characters\n"},
      {sets(otherPadSet() + "," + mappingSet(pad, profile("P", mapping(1, "{}")))),
       "sets[1].profile.mappings[0].output: Invalid number of keys found, expected one.\n"},
      {sets(mappingSet(pad, profile("P", ""), R"(,"portable":1)")),
       "sets[0].portable: expected true or false, found the number 1\n"},
  };
  for (const auto& [document, where] : cases) {
    expectBad(readers[0], document, where);
    expectBad(readers[1], document, where);
  }
}

TEST_F(BadInputTest, aListOfProfilesOfAnotherShapeIsReportedWithThePath) {
  struct Case {
    std::string document, where;
  };
  const Case cases[] = {
      {"{}", "1: expected a list, found an object\n"},
      {"[1]", "[0]: expected an object, found the number 1\n"},
      {"[{}]", "[0].id: missing\n"},
      {"[" + profile("P", "") + R"(,{"id":"5C1F7A52-3B0E-4E0B-9C63-0D9B8C6A1E01","name":"M"}])",
       "[1].mappings: missing\n"},
      {"[" +
           profile("P", mapping(1, tap("a")) + "," + mapping(2, tap("a")) + "," +
                            mapping(3, R"({"chord":{},"sequence":{}})")) +
           "]",
       "[0].mappings[2].output: Invalid number of keys found, expected one.\n"},
      {"[" + profile("P", R"({"fromKeyId":1,"output":)" + tap("a") + R"(,"label":7})") + "]",
       "[0].mappings[0].label: expected a text, found the number 7\n"},
      {"[" + profile("P", R"({"fromKeyId":4294967297,"output":)" + tap("a") + "}") + "]",
       "[0].mappings[0].fromKeyId: expected an integer from -2147483648 to 2147483647, found the "
       "number 4294967297\n"},
  };
  for (const auto& [document, where] : cases) {
    expectBad(readers[4], document, where);
    expectBad(readers[5], document, where);
  }
}

TEST_F(BadInputTest, unknownMembersAndNullsForOptionalOnesAreNoErrors) {
  const std::string set = mappingSet(device(R"("vendorId":7,"productId":9,"x":{})", ""),
                                     profile("P", ""), R"(,"portable":null,"more":[1])");
  EXPECT_EQ(run({"compile", "-"}, R"({"sets":[)" + set + R"(],"y":1})"),
            printed("{\"identities\":[]}\n"));
}

TEST_F(BadInputTest, aMissingFileIsAFailureNotBadInput) {
  for (const Reader& reader : readers) {
    EXPECT_EQ(read(reader, path("none")), failure(path("none") + ": No such file or directory"));
    EXPECT_EQ(tree(), (std::map<std::string, std::string>{}));
  }
  EXPECT_EQ(run({"replay", "--sets", file("sets", sets("")), path("none")}),
            failure(path("none") + ": No such file or directory"));
}

TEST_F(BadInputTest, aFolderAsFileIsAFailureNotBadInput) {
  std::filesystem::create_directory(path("folder"));
  for (const Reader& reader : readers)
    EXPECT_EQ(read(reader, path("folder")), failure(path("folder") + ": Is a directory"));
  EXPECT_EQ(run({"replay", "--sets", file("sets", sets("")), path("folder")}),
            failure(path("folder") + ": Is a directory"));
}

TEST_F(BadInputTest, theMessageStaysOnOneLineWhateverTheFileIsCalled) {
  const Answer answer = run({"compile", path("a\nb")});
  EXPECT_EQ(answer, failure(path("a b") + ": No such file or directory"));
}

} // namespace
} // namespace trellivar::cli
