#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rule behind the picture in docs/architecture.md: an arrow is an include, and nothing points
/// up.
namespace trellivar::architecture {

/// One folder of product code, and what its files may include.
struct Layer {
  /// Which files may include headers other than those of the standard library, JSON and the layers.
  enum class Platform { inAllFiles, inSourcesOnly, nowhere };

  std::string_view folder;
  /// The layers whose headers it may include, beside its own.
  std::span<const std::string_view> below;
  Platform platform = Platform::inAllFiles;
};

/// Every layer, each one after those it may include. A file belongs to the layer with the longest
/// folder that holds it, so "engine/darwin" is a layer apart from "engine".
std::span<const Layer> layers();

/// The layer of a file; null for one outside every layer.
const Layer* layerOf(std::string_view path);

/// An include that a rule forbids.
struct Violation {
  int line = 0; ///< counted from 1
  std::string include;
  std::string reason;

  friend bool operator==(const Violation&, const Violation&) = default;
};

/// Checks the includes of one product file. `path` is written from the root with slashes
/// ("core/key.h") and decides which rules hold; `content` is the whole file. A file outside every
/// layer is a violation of its own, on line 0. Lines inside block comments and raw strings count as
/// code: that can report too much, never too little.
std::vector<Violation> violations(std::string_view path, std::string_view content);

/// The files below `root` that the rules are for, written from the root and sorted: the C, C++ and
/// Objective-C++ files outside hidden folders, build trees and the top-level folders without
/// product code.
std::vector<std::string> productFiles(const std::filesystem::path& root);

} // namespace trellivar::architecture
