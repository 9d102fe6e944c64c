#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <map>
#include <ostream>
#include <string>

namespace trellivar {

/// What a program has said, and how it ended.
struct Ending {
  int code = -1; ///< minus the number of the signal that ended it
  std::string out;
  std::string err;

  friend bool operator==(const Ending&, const Ending&) = default;
};

inline void PrintTo(const Ending& ending, std::ostream* out) {
  *out << "exit code " << ending.code << "\nout: " << ending.out << "\nerr: " << ending.err;
}

/// The application as a process of its own, killed at the latest when the object goes. Its home,
/// configuration and runtime folders are below `home`.
class Program {
public:
  Program(const std::filesystem::path& home, const QStringList& arguments,
          const std::map<QString, QString>& environment = {},
          const QString& program = TRELLIVAR_PROGRAM) {
    const QString folder = QString::fromStdString(home.string());
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    all.insert("HOME", folder);
    all.insert("XDG_CONFIG_HOME", folder + "/config");
    all.insert("XDG_RUNTIME_DIR", folder);
    all.insert("LC_ALL", "C.UTF-8");
    all.insert("QT_QPA_PLATFORM", "offscreen");
    all.insert("QT_QUICK_BACKEND", "software");
    for (const auto& [name, value] : environment)
      all.insert(name, value);
    process_.setProcessEnvironment(all);
    process_.setWorkingDirectory(folder);
    process_.start(program, arguments);
    EXPECT_TRUE(process_.waitForStarted()) << process_.errorString().toStdString();
  }
  ~Program() { kill(); }

  bool isRunning() const { return process_.state() != QProcess::NotRunning; }

  /// What it has written to standard error since it was asked last.
  std::string errors() {
    process_.waitForReadyRead(0);
    return process_.readAllStandardError().toStdString();
  }

  /// Waits for the end.
  Ending ending() {
    EXPECT_TRUE(!isRunning() || process_.waitForFinished(20000)) << "it goes on";
    if (isRunning()) return {};
    const bool wasKilled = process_.exitStatus() == QProcess::CrashExit;
    return {wasKilled ? -process_.exitCode() : process_.exitCode(),
            process_.readAllStandardOutput().toStdString(),
            process_.readAllStandardError().toStdString()};
  }

  /// At once, as a crash would.
  void kill() {
    process_.kill();
    process_.waitForFinished();
  }

private:
  QProcess process_;
};

/// Of a program that is expected to end by itself.
inline Ending endingOf(const std::filesystem::path& home, const QStringList& arguments,
                       const std::map<QString, QString>& environment = {}) {
  return Program(home, arguments, environment).ending();
}

} // namespace trellivar
