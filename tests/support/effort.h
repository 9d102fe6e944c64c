#pragma once

namespace trellivar {

/// How often to repeat what is to happen this often: with a sanitizer each time takes about six
/// times as long.
constexpr int effort(int times) { return TRELLIVAR_SANITIZED ? times / 5 : times; }

} // namespace trellivar
