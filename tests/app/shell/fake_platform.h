#pragma once

#include "app/platform/platform_services.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace trellivar {

/// Remembers what it is asked for, in order.
struct FakePlatform final : PlatformServices {
  std::vector<std::string> calls;
  bool refusesLoginItem = false;

  void activate() override { calls.emplace_back("activate"); }
  void setLoginItem(bool enabled) override {
    calls.emplace_back(enabled ? "register" : "unregister");
    if (refusesLoginItem) throw std::runtime_error("not permitted");
  }
  void setAppearance(AppAppearance /*appearance*/) override {}
  bool isDark() const override { return false; }
  void onAppearanceChanged(std::function<void()> /*callback*/) override {}
  bool isMotionReduced() const override { return false; }
  void promptForAccessibility() override {}
  void openSettings(Page /*page*/) override {}
};

} // namespace trellivar
