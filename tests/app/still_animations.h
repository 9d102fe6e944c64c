#pragma once

#include <QAnimationDriver>

namespace trellivar {

/// The time of all animations in the process, which passes only when it is told to.
class StillAnimations final : public QAnimationDriver {
public:
  static StillAnimations& ofTheProcess() {
    static StillAnimations& animations = *new StillAnimations; // outlives the application
    return animations;
  }

  void pass(qint64 milliseconds) {
    now_ += milliseconds;
    if (isRunning()) advance();
  }

  qint64 elapsed() const override { return now_ - begin_; }

protected:
  void start() override {
    begin_ = now_;
    QAnimationDriver::start();
  }

private:
  StillAnimations() { install(); }

  qint64 now_ = 0;
  qint64 begin_ = 0; ///< when animations began after a time without any
};

} // namespace trellivar
