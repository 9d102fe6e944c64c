#pragma once

#include "viewmodels/app_root.h"

namespace trellivar {

/// The services of the system that the process runs on. Where it has none, stubs and the real
/// serial port.
AppRoot::Setup localSetup(MainQueue& queue, BackgroundQueue& background,
                          std::shared_ptr<SignaturePersisting> signatures,
                          std::shared_ptr<SettingsStore> settings);

} // namespace trellivar
