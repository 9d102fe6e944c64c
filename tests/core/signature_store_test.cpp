#include "core/json/decoding_error.h"
#include "core/signature_store.h"
#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/generators.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Records = std::vector<StoredDeviceSignatures>;

/// Records of two modes of one device, and one from before modes were stored.
Records someRecords() {
  const Key z{KeyName("z")};
  const Key option{KeyName("left_option")};
  const Key louder{KeyName("volume_increment"), Key::Kind::consumerKeyCode};
  return {
      {1452, 556, {{2, {{z, option}, true}}, {1, {{louder}, false}}}, "P"},
      {1452, 556, {}, "M"},
      {-1, 0, {{3, {}}}, std::nullopt},
  };
}

constexpr auto textOfSomeRecords = R"([
  {
    "keySignatures": [
      {
        "keyId": 2,
        "signature": {
          "codes": [
            {
              "keyCode": "z"
            },
            {
              "keyCode": "left_option"
            }
          ],
          "isChord": true
        }
      },
      {
        "keyId": 1,
        "signature": {
          "codes": [
            {
              "keyCode": "volume_increment",
              "kind": "consumerKeyCode"
            }
          ],
          "isChord": false
        }
      }
    ],
    "modeId": "P",
    "productId": 556,
    "vendorId": 1452
  },
  {
    "keySignatures": [],
    "modeId": "M",
    "productId": 556,
    "vendorId": 1452
  },
  {
    "keySignatures": [
      {
        "keyId": 3,
        "signature": {
          "codes": [],
          "isChord": false
        }
      }
    ],
    "productId": 0,
    "vendorId": -1
  }
]
)";

struct SignatureStoreTest : testing::Test {
  TemporaryFolder folder;
  SignatureStore store{folder.path()};
};

TEST_F(SignatureStoreTest, keepsItsFileInItsDirectory) {
  EXPECT_EQ(store.directory(), folder.path());
  EXPECT_EQ(store.signaturesFile(), folder / "signatures.json");
}

TEST_F(SignatureStoreTest, isEmptyBeforeTheFirstSaveAndCreatesNothing) {
  EXPECT_EQ(store.load(), Records{});
  EXPECT_EQ(SignatureStore(folder / "not yet").load(), Records{});
  EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST_F(SignatureStoreTest, loadsWhatItSavedInTheSameOrder) {
  store.save(someRecords());
  EXPECT_EQ(store.load(), someRecords());
}

RC_GTEST_FIXTURE_PROP(SignatureStoreTest, loadsWhateverItSaved, ()) {
  const auto records = *generate::upTo<StoredDeviceSignatures>(3);
  store.save(records);
  RC_ASSERT(store.load() == records);
}

TEST_F(SignatureStoreTest, keepsSeveralRecordsOfOneAddress) {
  const Records records{{1, 2, {}, "P"}, {1, 2, {{1, {}}}, "P"}, {1, 2, {}, "P"}};
  store.save(records);
  EXPECT_EQ(store.load(), records);
}

TEST_F(SignatureStoreTest, writesPrettyTextWithSortedKeys) {
  store.save(someRecords());
  EXPECT_EQ(contentOf(store.signaturesFile()), textOfSomeRecords);
  EXPECT_EQ(namesIn(folder.path()), Names{"signatures.json"});
}

TEST_F(SignatureStoreTest, writesAnEmptyListAsAnEmptyArray) {
  store.save(someRecords());
  store.save({});
  EXPECT_EQ(contentOf(store.signaturesFile()), "[]\n");
  EXPECT_EQ(store.load(), Records{});
}

TEST_F(SignatureStoreTest, keepsARecordWithoutAModeAsItIs) {
  put(store.signaturesFile(), R"([{"vendorId":1,"productId":2,"keySignatures":[]}])");
  const Records loaded = store.load();
  EXPECT_EQ(loaded, (Records{{1, 2, {}, std::nullopt}}));
  store.save(loaded);
  EXPECT_EQ(contentOf(store.signaturesFile()).find("modeId"), std::string::npos);
  EXPECT_EQ(store.load(), loaded);
}

TEST_F(SignatureStoreTest, createsTheDirectoryWithItsParents) {
  const SignatureStore deep(folder / "Library" / "Application Support" / "Trellivar");
  deep.save(someRecords());
  EXPECT_EQ(deep.load(), someRecords());
  EXPECT_EQ(modeOf(deep.directory()), 0700U);
  EXPECT_EQ(modeOf(deep.signaturesFile()), 0600U);
}

TEST_F(SignatureStoreTest, takesAFileThatDoesNotDecodeForNoLearnedKeys) {
  for (const char* content :
       {"", "{}", "null", "1", "\"[]\"", "[", "[]]", "[1]", "[{}]", R"({"records":[]})",
        R"([{"vendorId":1,"productId":2}])",
        R"([{"vendorId":1.0,"productId":2,"keySignatures":[]}])",
        R"([{"vendorId":1,"productId":2,"keySignatures":[]},null])",
        R"([{"vendorId":1,"vendorId":1,"productId":2,"keySignatures":[]}])", "\xFF"}) {
    put(store.signaturesFile(), content);
    EXPECT_EQ(store.load(), Records{}) << content;
    EXPECT_EQ(contentOf(store.signaturesFile()), content);
  }
  put(store.signaturesFile(), std::string(100'000, '['));
  EXPECT_EQ(store.load(), Records{});
}

TEST_F(SignatureStoreTest, setsADamagedFileAsideWithTheNextSave) {
  put(store.signaturesFile(), "{damaged");
  store.save(someRecords());
  EXPECT_EQ(store.load(), someRecords());
  EXPECT_EQ(contentOf(store.signaturesFile().string() + ".unreadable"), "{damaged");
  EXPECT_EQ(namesIn(folder.path()), (Names{"signatures.json", "signatures.json.unreadable"}));
}

TEST_F(SignatureStoreTest, replacesAReadableFileWithoutKeepingIt) {
  put(store.signaturesFile(), R"([{"vendorId":1,"productId":2,"keySignatures":[],"later":1}])");
  store.save(someRecords());
  store.save({});
  EXPECT_EQ(namesIn(folder.path()), Names{"signatures.json"});
}

TEST_F(SignatureStoreTest, readsWhatItLoads) {
  EXPECT_EQ(store.read(), Records{});
  store.save(someRecords());
  EXPECT_EQ(store.read(), someRecords());
}

TEST_F(SignatureStoreTest, takesAFileThatCannotBeReadForNoLearnedKeys) {
  fs::create_directory(store.signaturesFile());
  EXPECT_EQ(store.load(), Records{});
  put(folder / "file", "not a folder");
  EXPECT_EQ(SignatureStore(folder / "file").load(), Records{});
}

TEST_F(SignatureStoreTest, saysNothingOfAFailureToSaveAndSetsAFolderInItsPlaceAside) {
  put(folder / "file", "not a folder");
  EXPECT_NO_THROW(SignatureStore(folder / "file").save(someRecords()));
  EXPECT_EQ(contentOf(folder / "file"), "not a folder");

  fs::create_directory(store.signaturesFile());
  EXPECT_NO_THROW(store.save(someRecords()));
  EXPECT_EQ(store.load(), someRecords());
  EXPECT_TRUE(fs::is_directory(store.signaturesFile().string() + ".unreadable"));
}

TEST_F(SignatureStoreTest, leavesThePreviousFileWhenWritingFails) {
  store.save(someRecords());
  const int status = exitStatusOf([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit few{10, 10};
    if (::setrlimit(RLIMIT_FSIZE, &few) != 0) return 2;
    store.save(Records{{1, 2, {}, "R"}});
    return 0;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(contentOf(store.signaturesFile()), textOfSomeRecords);
  EXPECT_EQ(namesIn(folder.path()), Names{"signatures.json"});
}

TEST_F(SignatureStoreTest, keepsASymbolicLinkAndReplacesItsTarget) {
  put(folder / "mine.json", "[]");
  fs::create_symlink("mine.json", store.signaturesFile());
  store.save(someRecords());
  EXPECT_TRUE(fs::is_symlink(store.signaturesFile()));
  EXPECT_EQ(contentOf(folder / "mine.json"), textOfSomeRecords);
}

// What is thrown

TEST_F(SignatureStoreTest, throwsOnlyWhenItReads) {
  const auto whereReadingFails = [&]() -> std::string {
    try {
      store.read();
    } catch (const DecodingError& error) {
      return error.where();
    }
    return "nowhere";
  };
  for (const auto& [content, where] : std::vector<std::pair<std::string, std::string>>{
           {"", "1"},
           {"[\n  1,\n]", "3"},
           {"{}", "1"},
           {"[{}]", "[0].vendorId"},
           {R"([{"vendorId":1,"productId":2,"keySignatures":{}}])", "[0].keySignatures"},
       }) {
    put(store.signaturesFile(), content);
    EXPECT_EQ(whereReadingFails(), where) << content;
    EXPECT_EQ(contentOf(store.signaturesFile()), content);
  }
  fs::remove(store.signaturesFile());
  fs::create_directory(store.signaturesFile());
  EXPECT_THROW(store.read(), FileError);
  EXPECT_EQ(namesIn(folder.path()), Names{"signatures.json"}) << "reading sets nothing aside";
}

// What is reported

struct SignatureReportTest : SignatureStoreTest {
  Names reports;
  const std::function<void(std::string_view)> report = [this](std::string_view what) {
    reports.emplace_back(what);
  };
  const SignatureStore reporting{folder.path(), report};
  const std::string file = reporting.signaturesFile().string();

  /// What is new since the last call.
  Names reported() { return std::exchange(reports, {}); }
};

TEST_F(SignatureReportTest, isNothingWhileAllGoesWell) {
  reporting.load();
  reporting.save(someRecords());
  reporting.load();
  EXPECT_EQ(reports, Names{});
}

TEST_F(SignatureReportTest, tellsWhereAFileIsDamaged) {
  put(file, "[\n  1,\n]");
  reporting.load();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].find("the learned keys cannot be read: " + file + ":3: "), 0U) << reports[0];
}

TEST_F(SignatureReportTest, tellsWhichMemberIsOfTheWrongShape) {
  put(file, R"([{"vendorId":1,"productId":2,"keySignatures":{}}])");
  reporting.load();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].find("the learned keys cannot be read: " + file + ":[0].keySignatures: "),
            0U)
      << reports[0];
}

TEST_F(SignatureReportTest, tellsWhyAFileCannotBeRead) {
  fs::create_directory(file);
  reporting.load();
  EXPECT_EQ(reported(), Names{"the learned keys cannot be read: " + file + ": Is a directory"});
  EXPECT_EQ(namesIn(folder.path()), Names{"signatures.json"}) << "loading sets nothing aside";
}

TEST_F(SignatureReportTest, tellsWhereAnUnreadableFileIsKept) {
  for (const std::string suffix : {".unreadable", ".unreadable-2"}) {
    put(file, "[1,]" + suffix);
    reporting.save(someRecords());
    EXPECT_EQ(reported(),
              Names{"the learned keys that cannot be read are kept as " + file + suffix});
    EXPECT_EQ(contentOf(file + suffix), "[1,]" + suffix);
    EXPECT_EQ(reporting.read(), someRecords());
  }
  EXPECT_EQ(contentOf(file + ".unreadable"), "[1,].unreadable");
}

TEST_F(SignatureReportTest, tellsWhyNothingCanBeSaved) {
  put(folder / "file", "not a folder");
  const SignatureStore blocked(folder / "file", report);
  blocked.save(someRecords());
  EXPECT_EQ(reported(), Names{"the learned keys cannot be saved: " +
                              blocked.signaturesFile().string() + ": Not a directory"});
}

TEST_F(SignatureReportTest, isGivenOnceForAFailureThatRepeats) {
  fs::create_directory(file);
  for (int i = 0; i < 3; ++i)
    reporting.load();
  EXPECT_EQ(reported().size(), 1U);
  put(folder / "file", "not a folder");
  const SignatureStore blocked(folder / "file", report);
  for (int i = 0; i < 3; ++i)
    blocked.save({});
  EXPECT_EQ(reported().size(), 1U);
}

TEST_F(SignatureReportTest, isGivenForEachFailureThatDiffersFromTheOneBefore) {
  for (int i = 0; i < 2; ++i) {
    for (const char* content : {"[", "{}"}) {
      put(file, content);
      reporting.load();
      EXPECT_EQ(reported().size(), 1U) << content;
    }
  }
}

TEST_F(SignatureReportTest, isGivenAgainAfterALoadOrASaveThatWentWell) {
  put(file, "[");
  reporting.load();
  fs::remove(file);
  reporting.load();
  put(file, "[");
  reporting.load();
  EXPECT_EQ(reported().size(), 2U);
  reporting.save({});
  EXPECT_EQ(reported().size(), 1U) << "what was set aside";
  put(file, "[");
  reporting.load();
  EXPECT_EQ(reported().size(), 1U);
}

TEST_F(SignatureReportTest, isNotNeeded) {
  put(file, "[");
  EXPECT_NO_THROW(SignatureStore(folder.path()).load());
  EXPECT_NO_THROW(SignatureStore(folder.path(), {}).load());
}

TEST_F(SignatureStoreTest, canBeReachedWithoutBeingKnown) {
  const SignaturePersisting& persisting = store;
  persisting.save(someRecords());
  EXPECT_EQ(persisting.load(), someRecords());
}

} // namespace
} // namespace trellivar
