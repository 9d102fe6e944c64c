#include "tests/architecture/layer_rules.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The rules held against files that do not exist, so that breaking each of them is seen to be
/// noticed.
namespace trellivar::architecture {
namespace {

bool accepts(std::string_view path, std::string_view content) {
  return violations(path, content).empty();
}

std::string include(std::string_view folder) {
  return "#include \"" + std::string(folder) + "/some.h\"\n";
}

/// Who may include whom, written a second time: row includes column.
constexpr std::array<std::string_view, 12> folders{"files",
                                                   "core",
                                                   "engine",
                                                   "engine/darwin",
                                                   "engine/linux",
                                                   "viewmodels",
                                                   "simulator/firmware",
                                                   "simulator",
                                                   "simulator/darwin",
                                                   "simulator/machine",
                                                   "cli",
                                                   "app"};
constexpr std::array<std::string_view, 12> allowed{
    "x...........", // files
    "xx..........", // core
    "xxx.........", // engine
    "xxxx........", // engine/darwin
    "xxx.x.......", // engine/linux
    "xxx..x......", // viewmodels
    "xxx...x.....", // simulator/firmware
    "xxx...xx....", // simulator
    "xxxx...xx...", // simulator/darwin
    "xxxx..xxxx..", // simulator/machine
    "xxxxxxxxxxx.", // cli
    "xxxxxxxxxx.x", // app
};

TEST(LayerRules, includesPointDownOnly) {
  for (std::size_t from = 0; from < folders.size(); ++from) {
    for (std::size_t to = 0; to < folders.size(); ++to) {
      EXPECT_EQ(accepts(std::string(folders[from]) + "/file.cpp", include(folders[to])),
                allowed[from][to] == 'x')
          << folders[from] << " includes " << folders[to];
    }
  }
}

TEST(LayerRules, namesExactlyTheLayersOfThePicture) {
  ASSERT_EQ(layers().size(), folders.size());
  for (std::size_t index = 0; index < folders.size(); ++index)
    EXPECT_EQ(layers()[index].folder, folders[index]);
}

TEST(LayerRules, aDeeperFolderBelongsToTheLayerThatHoldsIt) {
  EXPECT_FALSE(accepts("core/deep/er/file.h", include("engine")));
  EXPECT_TRUE(accepts("core/deep/er/file.h", include("core/other")));
  EXPECT_FALSE(accepts("engine/file.h", include("engine/darwin/deep")));
  EXPECT_TRUE(accepts("engine/darwin/deep/file.h", include("engine/darwin")));
}

TEST(LayerRules, aFolderThatOnlyBeginsLikeALayerIsNone) {
  EXPECT_FALSE(accepts("corex/file.h", ""));
  EXPECT_FALSE(accepts("engine/file.cpp", include("corex")));
}

TEST(LayerRules, reportsAFileOutsideEveryLayer) {
  EXPECT_EQ(violations("plugins/file.cpp", "int x;"),
            (std::vector<Violation>{{0, "", "this file is in no layer"}}));
  EXPECT_FALSE(accepts("main.cpp", ""));
}

TEST(LayerRules, tellsWhereAndWhat) {
  EXPECT_EQ(violations("core/file.cpp",
                       "#pragma once\n\n#include <vector>\n#include \"engine/x.h\"\n"
                       "#include <unistd.h>"),
            (std::vector<Violation>{
                {4, "engine/x.h", "core may not include engine"},
                {5, "unistd.h", "core may not include platform headers here"},
            }));
}

TEST(LayerRules, includesAreWrittenFromTheRoot) {
  EXPECT_FALSE(accepts("core/file.cpp", "#include \"file.h\"\n"));
  EXPECT_FALSE(accepts("core/file.cpp", "#include \"../engine/x.h\"\n"));
  EXPECT_FALSE(accepts("core/file.cpp", "#include \"core/../engine/x.h\"\n"));
  EXPECT_FALSE(accepts("core/file.cpp", "#include \"unistd.h\"\n"));
  EXPECT_FALSE(accepts("core/file.cpp", "#include \"tests/core/fixture.h\"\n"));
}

TEST(LayerRules, bracketsHideNothing) {
  EXPECT_FALSE(accepts("core/file.cpp", "#include <engine/x.h>\n"));
  EXPECT_FALSE(accepts("engine/file.cpp", "#include <../app/x.h>\n"));
  EXPECT_TRUE(accepts("engine/file.cpp", "#include <core/x.h>\n"));
}

class SpelledInclude : public testing::TestWithParam<std::string_view> {};

TEST_P(SpelledInclude, isFound) {
  EXPECT_EQ(violations("core/file.cpp", GetParam()).size(), 1U) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(LayerRules, SpelledInclude,
                         testing::Values("#include \"engine/x.h\"",           //
                                         "  #  include\t\"engine/x.h\"\n",    //
                                         "#include\"engine/x.h\" // why\r\n", //
                                         "#import \"engine/x.h\"\n",          //
                                         "#include_next \"engine/x.h\"\n",    //
                                         "#inc\\\nlude \"engine/x.h\"\n",     //
                                         "#include \\\n  \"engine/x.h\"\n",   //
                                         "#include ENGINE_HEADER\n",          //
                                         "#include \"engine/x.h\n",           //
                                         "#include\n",                        //
                                         "auto s = \"/*\";\n#include \"engine/x.h\"\n",
                                         "#if 0\n#include \"engine/x.h\"\n#endif\n"));

TEST(LayerRules, mentioningAnIncludeIsNone) {
  EXPECT_TRUE(accepts("core/file.cpp", "// #include \"engine/x.h\"\n"
                                       "auto s = \"#include <unistd.h>\";\n"
                                       "#define include <unistd.h>\n"
                                       "#pragma once\n"));
}

TEST(LayerRules, onlyTheApplicationUsesQt) {
  for (const std::string_view name :
       {"QObject", "QtCore/QObject", "QtQml/qqml.h", "QtGlobal", "qobject.h", "QQuickView"}) {
    const std::string content = "#include <" + std::string(name) + ">\n";
    for (const std::string_view folder : folders)
      EXPECT_EQ(accepts(std::string(folder) + "/file.cpp", content), folder == "app")
          << folder << " includes " << name;
  }
}

TEST(LayerRules, aFrameworkOfThePlatformIsNotQt) {
  EXPECT_TRUE(accepts("engine/darwin/file.mm", "#include <QuartzCore/QuartzCore.h>\n"));
}

TEST(LayerRules, onlyTheCommandLineUsesItsOptionParser) {
  for (const std::string_view folder : folders)
    EXPECT_EQ(accepts(std::string(folder) + "/file.cpp", "#include <CLI/CLI.hpp>\n"),
              folder == "cli")
        << folder;
}

TEST(LayerRules, productCodeUsesNoTestLibrary) {
  for (const std::string_view name :
       {"gtest/gtest.h", "rapidcheck.h", "rapidcheck/gtest.h", "benchmark/benchmark.h"}) {
    for (const std::string_view folder : folders)
      EXPECT_FALSE(
          accepts(std::string(folder) + "/file.cpp", "#include <" + std::string(name) + ">"))
          << folder << " includes " << name;
  }
}

class PlatformHeader : public testing::TestWithParam<std::string_view> {
protected:
  std::string content = "#include <" + std::string(GetParam()) + ">\n";
};

TEST_P(PlatformHeader, isKeptOutOfThePortableLayers) {
  for (const std::string_view file : {"core/file.h", "core/file.cpp", "viewmodels/file.h",
                                      "viewmodels/file.cpp", "files/file.h", "files/file.hpp"})
    EXPECT_FALSE(accepts(file, content)) << file;
}

TEST_P(PlatformHeader, isWelcomeWhereThePlatformIsSpokenTo) {
  for (const std::string_view file :
       {"files/file.cpp", "engine/file.cpp", "engine/darwin/file.h", "engine/linux/file.cpp",
        "simulator/darwin/file.cpp", "cli/file.cpp", "app/file.cpp"})
    EXPECT_TRUE(accepts(file, content)) << file;
}

INSTANTIATE_TEST_SUITE_P(LayerRules, PlatformHeader,
                         testing::Values("unistd.h", "fcntl.h", "sys/stat.h", "termios.h",
                                         "pthread.h", "dispatch/dispatch.h", "linux/uinput.h",
                                         "windows.h", "IOKit/hid/IOHIDLib.h",
                                         "CoreFoundation/CoreFoundation.h",
                                         "ApplicationServices/ApplicationServices.h", "stdio.h"));

TEST(LayerRules, standardLibraryAndJsonAreFreeToThePortableLayers) {
  const std::string content = "#include <vector>\n#include <filesystem>\n#include <cstdio>\n"
                              "#include <nlohmann/json.hpp>\n#include <nlohmann/json_fwd.hpp>\n";
  EXPECT_TRUE(accepts("core/file.h", content));
  EXPECT_TRUE(accepts("viewmodels/file.h", content));
  EXPECT_TRUE(accepts("files/file.h", content));
}

/// A folder of its own, removed in the end.
class Tree {
public:
  Tree() {
    std::string name = testing::TempDir() + "trellivar-layers-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    root_ = name;
  }
  ~Tree() { std::filesystem::remove_all(root_); }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  void add(const std::string& path) const {
    std::filesystem::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path) << "int x;\n";
  }
  const std::filesystem::path& root() const { return root_; }

private:
  std::filesystem::path root_;
};

TEST(LayerRules, aTreeIsSearchedForSourcesEverywhereButWhereProductCodeCannotBe) {
  const Tree tree;
  for (const char* path :
       {"core/a.h", "core/deep/b.cpp", "engine/darwin/c.mm", "unknown/d.cpp", "e.cpp",
        "core/tests/f.cpp", "core/CMakeLists.txt", "docs/g.h", "tests/core/h.cpp", "bench/i.cpp",
        "fuzz/j.cpp", "build/dev/k.cpp", ".cache/l.cpp", "out/CMakeCache.txt", "out/m.cpp"})
    tree.add(path);
  EXPECT_EQ(productFiles(tree.root()),
            (std::vector<std::string>{"core/a.h", "core/deep/b.cpp", "core/tests/f.cpp", "e.cpp",
                                      "engine/darwin/c.mm", "unknown/d.cpp"}));
}

} // namespace
} // namespace trellivar::architecture
