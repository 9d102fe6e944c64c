#include "tests/architecture/layer_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// The rules held against this very checkout.
namespace trellivar::architecture {
namespace {

namespace fs = std::filesystem;

const fs::path root = TRELLIVAR_ROOT;

std::string contentOf(const std::string& path) {
  std::ifstream file(root / path, std::ios::binary);
  if (!file) ADD_FAILURE() << "cannot read " << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

bool holdsMoreThanItsBuildFile(const fs::path& folder) {
  if (!fs::is_directory(folder)) return false;
  return std::any_of(fs::directory_iterator(folder), fs::directory_iterator(),
                     [](const fs::directory_entry& entry) {
                       return entry.is_regular_file() &&
                              entry.path().filename() != "CMakeLists.txt";
                     });
}

TEST(Layers, everyFileKeepsToItsLayer) {
  for (const std::string& path : productFiles(root)) {
    for (const Violation& violation : violations(path, contentOf(path)))
      ADD_FAILURE() << path << ":" << violation.line << ": " << violation.include << ": "
                    << violation.reason;
  }
}

TEST(Layers, noFolderWithFilesIsOverlooked) {
  const std::vector<std::string> checked = productFiles(root);
  const auto isChecked = [&](const Layer& layer) {
    return std::ranges::any_of(checked,
                               [&](const std::string& path) { return layerOf(path) == &layer; });
  };
  for (const Layer& layer : layers()) {
    const bool isEmpty = !holdsMoreThanItsBuildFile(root / layer.folder);
    EXPECT_TRUE(isEmpty || isChecked(layer)) << layer.folder;
  }
  EXPECT_TRUE(std::ranges::binary_search(checked, "core/key.h"));
  EXPECT_TRUE(std::ranges::binary_search(checked, "files/durable_file.h"));
}

} // namespace
} // namespace trellivar::architecture
