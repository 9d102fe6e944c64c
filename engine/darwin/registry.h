#pragma once

#include "engine/darwin/io_object.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Reading the I/O registry.
namespace trellivar::darwin {

/// Every service of a class or of a class derived from it; empty as well when the look-up fails.
std::vector<IoObject> services(const char* className);

/// A property of this very entry, not of those above it; none when missing or of another type.
std::optional<std::int64_t> integerProperty(io_registry_entry_t entry, CFStringRef key);
std::optional<std::string> textProperty(io_registry_entry_t entry, CFStringRef key);

/// Identifies the entry until the next start of the system, in every process.
std::optional<std::uint64_t> entryId(io_registry_entry_t entry);

/// The entry and everything below it in the service plane.
std::vector<std::uint64_t> entryIdsOfSubtree(io_registry_entry_t entry);

/// The entry's parent in the service plane; none at the root.
IoObject parent(io_registry_entry_t entry);

} // namespace trellivar::darwin
