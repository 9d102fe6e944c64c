#pragma once

#include "core/instant.h"

namespace trellivar {

/// The time of the pad's serial link. The link waits only here, so a clock may also end what is
/// going on: what `sleep` throws passes through the link, which closes its port on the way.
class LinkClock {
public:
  virtual ~LinkClock() = default;

  /// Monotonic; the origin is the clock's own.
  virtual Instant now() = 0;
  /// Blocks the calling thread for all of the duration, unless it throws.
  virtual void sleep(Seconds duration) = 0;

protected:
  LinkClock() = default;
  LinkClock(const LinkClock&) = default;
  LinkClock& operator=(const LinkClock&) = default;
};

/// The clock of the system.
class SystemLinkClock : public LinkClock {
public:
  Instant now() override;
  void sleep(Seconds duration) override;

protected:
  /// Asked whenever a signal has interrupted `sleep`: whether to sleep for what remains.
  virtual bool sleepsOn() const { return true; }
};

} // namespace trellivar
