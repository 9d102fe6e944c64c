#pragma once

#include "viewmodels/mapping_view_model.h"

#include <string>
#include <vector>

namespace trellivar {

/// What a key of the drawn pad shows. Texts are in the current language.
struct KeyView {
  int id = 0;
  std::string legend;  ///< what the key does; empty without a binding
  std::string glyph;   ///< the drawing to show for the legend; empty where there is only text
  std::string caption; ///< its label, else its legend, else that it is empty
  std::string label;   ///< as the user gave it; empty without one
  bool isBound = false;
  bool isLearned = false;
  bool isSelected = false;

  friend bool operator==(const KeyView&, const KeyView&) = default;
};

/// The keys of the pad, from left to right.
std::vector<KeyView> keyViews(const MappingViewModel& of);

/// What stands above the controls for the selected key: "Key 2 — ⌘ C".
std::string selectionTitle(const MappingViewModel& of);

} // namespace trellivar
