#pragma once

#include "cli/context.h"

#include <CLI/CLI.hpp>

/// One function for each group of commands: it declares them, and their callbacks do the work.
/// `app` and `context` must outlive the parsing.
namespace trellivar::cli {

void addCompile(CLI::App& app, Context& context);
void addReplay(CLI::App& app, Context& context);
void addRecordings(CLI::App& app, Context& context);
void addOutputs(CLI::App& app, Context& context);
void addFrame(CLI::App& app, Context& context);
void addResolve(CLI::App& app, Context& context);
void addStrings(CLI::App& app, Context& context);
void addKeys(CLI::App& app, Context& context);
void addProfiles(CLI::App& app, Context& context);
void addDevices(CLI::App& app, Context& context);
void addWrite(CLI::App& app, Context& context);
void addQuery(CLI::App& app, Context& context);
void addMonitor(CLI::App& app, Context& context);
void addStatus(CLI::App& app, Context& context);
void addSimulate(CLI::App& app, Context& context);

} // namespace trellivar::cli
