#pragma once

#include "app/platform/platform_services.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <utility>

namespace trellivar {

/// A system that remembers what the application asked of it, and looks as it is told to.
class RecordingPlatform final : public PlatformServices {
public:
  QStringList calls; ///< but for the appearance

  void setSystemDark(bool dark) {
    isSystemDark_ = dark;
    if (changed_) changed_();
  }

  void setMotionReduced(bool reduced) {
    isMotionReduced_ = reduced;
    if (changed_) changed_();
  }

  void activate() override { calls += "activate"; }
  void setLoginItem(bool enabled) override { calls += enabled ? "login on" : "login off"; }
  void setAppearance(AppAppearance appearance) override { appearance_ = appearance; }
  bool isDark() const override {
    return appearance_ == AppAppearance::system ? isSystemDark_
                                                : appearance_ == AppAppearance::dark;
  }
  void onAppearanceChanged(std::function<void()> callback) override {
    changed_ = std::move(callback);
  }
  bool isMotionReduced() const override { return isMotionReduced_; }
  void promptForAccessibility() override { calls += "ask for accessibility"; }
  void openSettings(Page page) override {
    calls += page == Page::accessibility ? "settings: accessibility" : "settings: input monitoring";
  }

private:
  AppAppearance appearance_ = AppAppearance::system;
  bool isSystemDark_ = true;
  bool isMotionReduced_ = true;
  std::function<void()> changed_;
};

} // namespace trellivar
