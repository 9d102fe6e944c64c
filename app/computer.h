#pragma once

#include "viewmodels/app_root.h"

#include <memory>

class QQmlApplicationEngine;

namespace trellivar {

/// The computer that the application works on: the one that it runs on, or the simulated desk. Main
/// thread.
class Computer {
public:
  Computer(const Computer&) = delete;
  Computer& operator=(const Computer&) = delete;
  virtual ~Computer() = default;

  /// Its services. They end with it.
  virtual AppRoot::Setup setup(MainQueue& queue, BackgroundQueue& background,
                               std::shared_ptr<SignaturePersisting> signatures,
                               std::shared_ptr<SettingsStore> settings) = 0;
  /// Whether keys are remapped on it. Where not, stubs stand in for the services that would do it.
  virtual bool hasEngine() const { return true; }
  /// Shows what stands for its hardware, if that is not at hand.
  virtual void show(QQmlApplicationEngine& /*qml*/) {}

protected:
  Computer() = default;
};

/// The one that this program is for.
std::unique_ptr<Computer> computer(bool isSimulated);

/// Where a program cannot hold both computers, continues as the other one if the simulated desk is
/// asked for. Before a window is shown.
void continueOnTheDesk(char* argv[]);

} // namespace trellivar
