#pragma once

#include "core/key_event.h"
#include "core/output.h"

#include <optional>
#include <span>

namespace trellivar::RecordingClassifier {

/// What somebody meant by pressing these keys: modifiers alone, one key under modifiers, or keys
/// one after the other (a roll-over of several keys too is a sequence, never a chord of several
/// keys). Events may come in any order; those of equal time keep theirs. None when nothing usable
/// was pressed.
std::optional<Output> classify(std::span<const KeyEvent> events);

} // namespace trellivar::RecordingClassifier
