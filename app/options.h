#pragma once

#include "core/app_language.h"

#include <QStringList>
#include <filesystem>
#include <optional>

namespace trellivar {

/// What the application is started with.
struct Options {
  bool simulate = false;            ///< on the simulated desk
  std::filesystem::path dataFolder; ///< the desk has its own, unless one is given
  bool isDataFolderGiven = false;
  std::optional<AppLanguage> language; ///< in place of the one that is set

  /// Otherwise they are where the user's other applications have theirs.
  bool areSettingsInDataFolder() const { return simulate || isDataFolderGiven; }
  /// What a start at login needs to come to the same data. None on the simulated desk, whose
  /// permissions switch start at login on as well: the user's own computer is not to start it.
  std::optional<QStringList> loginArguments() const;
};

/// Ends the process after --help, --version and mistakes, as command lines do.
Options parseOptions(const QStringList& arguments);

} // namespace trellivar
