#pragma once

#include "cli/run.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli {

using Json = nlohmann::ordered_json;

/// What a command answered.
struct Answer {
  int code;
  std::string out;
  std::string err;

  friend bool operator==(const Answer&, const Answer&) = default;
  friend void PrintTo(const Answer& answer, std::ostream* stream) {
    *stream << "code " << answer.code << "\nout: " << answer.out << "\nerr: " << answer.err;
  }
};

inline Answer printed(const std::string& out) { return {0, out, ""}; }
inline Answer failure(const std::string& message) {
  return {1, "", "trellivarctl: " + message + "\n"};
}
inline Answer badInput(const std::string& message) {
  return {2, "", "trellivarctl: " + message + "\n"};
}

inline void put(const std::filesystem::path& file, std::string_view content) {
  std::ofstream stream(file, std::ios::binary);
  if (!(stream << content).flush()) throw std::runtime_error("cannot write " + file.string());
}

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot open " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Every file below a folder with its bytes; folders have no bytes and end in a slash.
inline std::map<std::string, std::string> treeOf(const std::filesystem::path& folder) {
  std::map<std::string, std::string> tree;
  if (!std::filesystem::exists(folder)) return tree;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const std::string name = std::filesystem::relative(entry.path(), folder).string();
    if (entry.is_directory())
      tree[name + '/'];
    else
      tree[name] = contentOf(entry.path());
  }
  return tree;
}

/// Runs commands within the test program, in a folder of their own.
class CliTest : public testing::Test {
protected:
  CliTest() { ::setenv("HOME", (folder_ / "home").c_str(), 1); }

  using Arguments = std::vector<std::string>;

  Answer run(const Arguments& arguments, const std::string& input = "") const {
    std::vector<const char*> argv{"trellivarctl"};
    for (const std::string& argument : arguments)
      argv.push_back(argument.c_str());
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int code = cli::run(static_cast<int>(argv.size()), argv.data(),
                              {in, out, err, errIsTerminal_, discoverPort_});
    return {code, out.str(), err.str()};
  }

  /// The command's output, which has to be one JSON document and the only thing printed.
  Json json(const Arguments& arguments, const std::string& input = "") const {
    const Answer answer = run(arguments, input);
    EXPECT_EQ(answer.code, 0) << answer.err;
    EXPECT_EQ(answer.err, "");
    EXPECT_TRUE(answer.out.ends_with('\n'));
    return Json::parse(answer.out);
  }

  /// A path in the test's own folder.
  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  std::string file(const std::string& name, std::string_view content) const {
    put(path(name), content);
    return path(name);
  }

  std::map<std::string, std::string> tree() const { return treeOf(folder_.path()); }

  bool errIsTerminal_ = false;
  /// No test ever writes into a pad that lies on the table.
  std::function<std::optional<std::string>()> discoverPort_ = [] { return std::nullopt; };

private:
  TemporaryFolder folder_;
};

} // namespace trellivar::cli
