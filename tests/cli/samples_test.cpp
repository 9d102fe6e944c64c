#include "tests/cli/cli_fixture.h"

#include <set>

namespace trellivar::cli {
namespace {

const std::filesystem::path samplesFolder = TRELLIVAR_SAMPLES;

std::vector<std::string> sampleNames() {
  std::vector<std::string> names;
  for (const Json& sample : Json::parse(contentOf(samplesFolder / "samples.json")))
    names.push_back(sample.at("name"));
  return names;
}

using Samples = CliTest;

TEST_F(Samples, replayAsExpected) {
  for (const std::string& name : sampleNames()) {
    const auto part = [&](const char* end) { return (samplesFolder / (name + end)).string(); };
    EXPECT_EQ(run({"replay", "--sets", part(".sets.json"), part(".events.jsonl")}),
              printed(contentOf(part(".expected.jsonl"))))
        << name;
  }
}

TEST_F(Samples, areAllListedAndAtLeastSix) {
  std::set<std::string> listed{"samples.json", "README.md"};
  for (const std::string& name : sampleNames())
    for (const char* end : {".sets.json", ".events.jsonl", ".expected.jsonl"})
      listed.insert(name + end);
  std::set<std::string> present;
  for (const auto& entry : std::filesystem::directory_iterator(samplesFolder))
    present.insert(entry.path().filename().string());
  EXPECT_EQ(present, listed);
  EXPECT_GE(sampleNames().size(), 6u);
}

TEST_F(Samples, sayWhatTheyShow) {
  for (const Json& sample : Json::parse(contentOf(samplesFolder / "samples.json")))
    EXPECT_FALSE(sample.at("shows").get<std::string>().empty()) << sample;
}

} // namespace
} // namespace trellivar::cli
