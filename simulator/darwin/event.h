#pragma once

#include "simulator/darwin/object.h"
#include "simulator/desk/input_event.h"

namespace trellivar::darwin_double {

class Event final : public Object {
public:
  static constexpr Kind ownKind = Kind::event;
  Event() : Object(ownKind) {}
  /// Copied once; to move it would be to copy it again.
  // NOLINTNEXTLINE(modernize-pass-by-value)
  explicit Event(const desk::InputEvent& like) : Object(ownKind), input(like) {}
  std::string description() const override;

  desk::InputEvent input;
};

} // namespace trellivar::darwin_double
