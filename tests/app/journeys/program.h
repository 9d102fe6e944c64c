#pragma once

#include <QProcess>
#include <QStringList>

namespace trellivar {

/// The executable of the application in a process of its own, with this environment. Killed, if it
/// still runs, when the object goes.
class Program {
public:
  explicit Program(const QStringList& arguments);
  ~Program() { kill(); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  bool isRunning();
  void kill();
  /// After it has ended: its exit code, or -1 if it was killed.
  int exitCode() const;
  /// What it has written to standard error so far.
  std::string complaints();

private:
  QProcess process_;
};

} // namespace trellivar
