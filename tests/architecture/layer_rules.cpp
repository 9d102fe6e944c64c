#include "tests/architecture/layer_rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

namespace trellivar::architecture {

namespace {

using Platform = Layer::Platform;

constexpr std::array<std::string_view, 1> belowCore{"files"};
constexpr std::array<std::string_view, 2> belowEngine{"core", "files"};
constexpr std::array<std::string_view, 3> aboveEngine{"engine", "core", "files"};
constexpr std::array<std::string_view, 4> belowSimulator{"simulator/firmware", "engine", "core",
                                                         "files"};
// The double implements what the engine's Objective-C++ does on a Mac.
constexpr std::array<std::string_view, 5> belowSimulatedPlatform{"simulator", "engine/darwin",
                                                                 "engine", "core", "files"};
constexpr std::array<std::string_view, 7> belowSimulatedMachine{
    "simulator", "simulator/darwin", "simulator/firmware", "engine", "engine/darwin", "core",
    "files"};
constexpr std::array<std::string_view, 10> belowPrograms{"viewmodels",
                                                         "simulator",
                                                         "simulator/darwin",
                                                         "simulator/machine",
                                                         "simulator/firmware",
                                                         "engine",
                                                         "engine/darwin",
                                                         "engine/linux",
                                                         "core",
                                                         "files"};

constexpr std::array<Layer, 12> allLayers{{
    {"files", {}, Platform::inSourcesOnly},
    {"core", belowCore, Platform::nowhere},
    {"engine", belowEngine},
    {"engine/darwin", aboveEngine},
    {"engine/linux", aboveEngine},
    {"viewmodels", aboveEngine, Platform::nowhere},
    {"simulator/firmware", aboveEngine},
    {"simulator", belowSimulator},
    {"simulator/darwin", belowSimulatedPlatform},
    {"simulator/machine", belowSimulatedMachine},
    {"cli", belowPrograms},
    {"app", belowPrograms},
}};

/// A library that one layer alone may use; an empty layer stands for tests only.
struct Library {
  std::string_view name;
  std::string_view prefix; ///< of its headers
  std::string_view layer;
};

constexpr std::array<Library, 5> libraries{{
    {"Qt", "Qt", "app"},
    {"CLI11", "CLI/", "cli"},
    {"GoogleTest", "gtest/", ""},
    {"RapidCheck", "rapidcheck", ""},
    {"Google Benchmark", "benchmark/", ""},
}};

constexpr std::array<std::string_view, 96> standardHeaders{"algorithm",
                                                           "any",
                                                           "array",
                                                           "atomic",
                                                           "barrier",
                                                           "bit",
                                                           "bitset",
                                                           "cassert",
                                                           "cctype",
                                                           "cerrno",
                                                           "cfenv",
                                                           "cfloat",
                                                           "charconv",
                                                           "chrono",
                                                           "cinttypes",
                                                           "climits",
                                                           "clocale",
                                                           "cmath",
                                                           "compare",
                                                           "complex",
                                                           "concepts",
                                                           "condition_variable",
                                                           "coroutine",
                                                           "csetjmp",
                                                           "csignal",
                                                           "cstdarg",
                                                           "cstddef",
                                                           "cstdint",
                                                           "cstdio",
                                                           "cstdlib",
                                                           "cstring",
                                                           "ctime",
                                                           "cuchar",
                                                           "cwchar",
                                                           "cwctype",
                                                           "deque",
                                                           "exception",
                                                           "execution",
                                                           "filesystem",
                                                           "format",
                                                           "forward_list",
                                                           "fstream",
                                                           "functional",
                                                           "future",
                                                           "initializer_list",
                                                           "iomanip",
                                                           "ios",
                                                           "iosfwd",
                                                           "iostream",
                                                           "istream",
                                                           "iterator",
                                                           "latch",
                                                           "limits",
                                                           "list",
                                                           "locale",
                                                           "map",
                                                           "memory",
                                                           "memory_resource",
                                                           "mutex",
                                                           "new",
                                                           "numbers",
                                                           "numeric",
                                                           "optional",
                                                           "ostream",
                                                           "queue",
                                                           "random",
                                                           "ranges",
                                                           "ratio",
                                                           "regex",
                                                           "scoped_allocator",
                                                           "semaphore",
                                                           "set",
                                                           "shared_mutex",
                                                           "source_location",
                                                           "span",
                                                           "sstream",
                                                           "stack",
                                                           "stdexcept",
                                                           "stop_token",
                                                           "streambuf",
                                                           "string",
                                                           "string_view",
                                                           "syncstream",
                                                           "system_error",
                                                           "thread",
                                                           "tuple",
                                                           "type_traits",
                                                           "typeindex",
                                                           "typeinfo",
                                                           "unordered_map",
                                                           "unordered_set",
                                                           "utility",
                                                           "valarray",
                                                           "variant",
                                                           "vector",
                                                           "version"};

constexpr std::array<std::string_view, 8> foldersWithoutProductCode{
    "bench", "build", "cmake", "docs", "fuzz", "samples", "script", "tests"};

constexpr std::array<std::string_view, 13> sourceExtensions{
    ".c", ".cc", ".cpp", ".cxx", ".h", ".hh", ".hpp", ".hxx", ".inc", ".ipp", ".m", ".mm", ".tpp"};

bool contains(std::span<const std::string_view> names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\v\f";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isHeader(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot != std::string_view::npos && path.substr(dot).starts_with(".h");
}

/// What stands between the quotes or brackets of an include.
struct Target {
  std::string name;
  bool isQuoted = false;
};

/// A line of code with the lines that backslashes append to it, and the number of its first line.
struct LogicalLine {
  int number = 0;
  std::string text;
};

std::vector<LogicalLine> logicalLines(std::string_view content) {
  std::vector<LogicalLine> result;
  bool continues = false;
  int number = 0;
  while (!content.empty()) {
    const std::size_t end = std::min(content.find('\n'), content.size());
    std::string_view line = content.substr(0, end);
    content.remove_prefix(std::min(end + 1, content.size()));
    ++number;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!continues) result.push_back({number, {}});
    continues = line.ends_with('\\');
    if (continues) line.remove_suffix(1);
    result.back().text += line;
  }
  return result;
}

/// What follows the word of an include directive; none for any other line.
std::optional<std::string_view> includeOperand(std::string_view line) {
  line = trimmed(line);
  if (!line.starts_with('#')) return std::nullopt;
  line = trimmed(line.substr(1));
  for (const std::string_view word : {"include_next", "include", "import"}) {
    if (line.starts_with(word)) return trimmed(line.substr(word.size()));
  }
  return std::nullopt;
}

/// None when the operand is a macro, whose value is not known here.
std::optional<Target> target(std::string_view operand) {
  if (operand.empty()) return std::nullopt;
  const bool isQuoted = operand.front() == '"';
  if (!isQuoted && operand.front() != '<') return std::nullopt;
  const std::size_t end = operand.find(isQuoted ? '"' : '>', 1);
  if (end == std::string_view::npos) return std::nullopt;
  return Target{std::string(operand.substr(1, end - 1)), isQuoted};
}

/// Qt's folders and libraries (<QtCore/QObject>), classes (<QObject>) and files (<qobject.h>).
/// Other frameworks begin with a Q too, but have a folder (<QuartzCore/CALayer.h>).
bool isQt(std::string_view name) {
  if (name.starts_with("Qt")) return true;
  if (name.size() < 2 || name.find('/') != std::string_view::npos) return false;
  const bool isClass = name[0] == 'Q' && std::isupper(static_cast<unsigned char>(name[1])) != 0;
  return isClass || (name[0] == 'q' && name.ends_with(".h"));
}

const Library* libraryOf(std::string_view name) {
  if (isQt(name)) return libraries.data();
  const auto* found = std::ranges::find_if(
      libraries, [&](const Library& library) { return name.starts_with(library.prefix); });
  return found == libraries.end() ? nullptr : found;
}

bool isPortable(std::string_view name) {
  return contains(standardHeaders, name) ||
         (name.starts_with("nlohmann/json") && name.ends_with(".hpp"));
}

bool mayIncludePlatform(const Layer& layer, std::string_view path) {
  switch (layer.platform) {
  case Platform::inAllFiles:
    return true;
  case Platform::inSourcesOnly:
    return !isHeader(path);
  case Platform::nowhere:
    return false;
  }
  return false;
}

/// Why a file of a layer may not include the target; none when it may.
std::optional<std::string> objection(const Layer& layer, std::string_view path,
                                     const Target& included) {
  const std::string& name = included.name;
  if (name.find("..") != std::string::npos) return "is not written from the root";
  if (const Layer* other = layerOf(name)) {
    if (other == &layer || contains(layer.below, other->folder)) return std::nullopt;
    return std::string(layer.folder) + " may not include " + std::string(other->folder);
  }
  if (included.isQuoted) return "is not written from the root, or in no layer";
  if (const Library* library = libraryOf(name)) {
    if (library->layer == layer.folder) return std::nullopt;
    return std::string(layer.folder) + " may not use " + std::string(library->name);
  }
  if (!isPortable(name) && !mayIncludePlatform(layer, path))
    return std::string(layer.folder) + " may not include platform headers here";
  return std::nullopt;
}

} // namespace

std::span<const Layer> layers() { return allLayers; }

const Layer* layerOf(std::string_view path) {
  const Layer* longest = nullptr;
  for (const Layer& layer : allLayers) {
    const bool holds = path.starts_with(layer.folder) && path.size() > layer.folder.size() &&
                       path[layer.folder.size()] == '/';
    if (holds && (longest == nullptr || layer.folder.size() > longest->folder.size()))
      longest = &layer;
  }
  return longest;
}

std::vector<Violation> violations(std::string_view path, std::string_view content) {
  const Layer* layer = layerOf(path);
  if (layer == nullptr) return {{0, {}, "this file is in no layer"}};

  std::vector<Violation> result;
  for (const LogicalLine& line : logicalLines(content)) {
    const auto operand = includeOperand(line.text);
    if (!operand) continue;
    const auto included = target(*operand);
    if (!included) {
      result.push_back({line.number, std::string(*operand), "names no header"});
    } else if (const auto reason = objection(*layer, path, *included)) {
      result.push_back({line.number, included->name, *reason});
    }
  }
  return result;
}

std::vector<std::string> productFiles(const std::filesystem::path& root) {
  namespace fs = std::filesystem;
  std::vector<std::string> result;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
    const std::string name = entry->path().filename().string();
    if (entry->is_directory()) {
      const bool isLeftOut = name.starts_with('.') ||
                             fs::exists(entry->path() / "CMakeCache.txt") ||
                             (entry.depth() == 0 && contains(foldersWithoutProductCode, name));
      if (isLeftOut) entry.disable_recursion_pending();
    } else if (contains(sourceExtensions, entry->path().extension().string())) {
      result.push_back(entry->path().lexically_relative(root).generic_string());
    }
  }
  std::ranges::sort(result);
  return result;
}

} // namespace trellivar::architecture
