#pragma once

#include "simulator/darwin/values.h"
#include "simulator/desk/registry.h"

#include <string>
#include <vector>

/// What the entries of the registry look like to the program, and which of them it asks for.
namespace trellivar::darwin_double {

/// Whether the entry satisfies every key of the dictionary.
bool matches(const desk::Entry& entry, const Dictionary& wanted);
std::vector<desk::EntryId> matchingEntries(const desk::Registry& registry,
                                           const Dictionary& wanted);

/// The property of this one entry as a new object; nullptr: it has none of this name.
Object* makeProperty(const desk::Entry& entry, const std::string& key);

} // namespace trellivar::darwin_double
