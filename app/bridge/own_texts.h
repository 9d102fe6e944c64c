#pragma once

#include "core/app_language.h"

#include <string_view>

/// What the table of texts has no words for: a computer without an engine of its own, and files
/// that could not be read or written.
namespace trellivar::OwnTexts {

struct Text {
  std::string_view english;
  std::string_view chinese;

  constexpr std::string_view in(AppLanguage language) const {
    return language == AppLanguage::zhHans ? chinese : english;
  }
};

inline constexpr Text noEngineTitle{"Keys can't be remapped on this computer",
                                    "这台电脑无法重映射按键"};
inline constexpr Text noEngineDetail{
    "There is no engine for this system. You can still edit and write to the pad over USB; start "
    "with --simulate to try everything on a simulated desk.",
    "此系统没有可用的引擎。仍可编辑并通过 USB 写入键盘；使用 --simulate "
    "启动可在模拟桌面上试用全部功能。"};
/// What exactly, and where, stands below it as in the log.
inline constexpr Text filesTitle{"A file could not be read or written", "有文件无法读取或写入"};

} // namespace trellivar::OwnTexts
