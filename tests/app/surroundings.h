#pragma once

namespace trellivar {

/// Makes windows look the same on every machine: painted by software, one dot a pixel, known
/// letters. Before there is an application object.
void useKnownSurroundings();
/// Windows need no display: they are painted in memory. The same.
void paintInMemory();

} // namespace trellivar
