#pragma once

#include <span>
#include <string_view>

namespace trellivar {

class Stage;

/// A screen in one of its states. The stage has begun; its language and appearance may have been
/// chosen.
struct Scene {
  std::string_view name;
  void (*arrange)(Stage&);
};

/// Every screen in every state that has a look of its own.
std::span<const Scene> scenes();
/// Throws std::invalid_argument without a scene of the name.
const Scene& scene(std::string_view name);

} // namespace trellivar
