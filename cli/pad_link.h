#pragma once

#include "cli/context.h"
#include "engine/orlo3_serial_link.h"

#include <optional>
#include <string>

namespace trellivar::cli {

/// The link to the pad at the port that --port names, else at the one that is discovered.
Orlo3SerialLink padLink(const Context& context, const std::optional<std::string>& port,
                        LinkClock& clock);

/// Says it as the application does.
Failure failureOf(const Orlo3Error& error);

} // namespace trellivar::cli
