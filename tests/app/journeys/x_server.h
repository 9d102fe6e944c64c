#pragma once

namespace trellivar {

/// Starts a display in memory and makes it the one of this process. The server ends with its last
/// client.
void startDisplay();

} // namespace trellivar
