#include "app/bridge/file_troubles.h"

#include "engine/log.h"

namespace trellivar {

void FileTroubles::report(std::string_view what) {
  debugLog(what);
  last_.set(std::string(what));
}

} // namespace trellivar
