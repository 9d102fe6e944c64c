#include "app/bridge/texts.h"

#include "app/bridge/text.h"
#include "core/l10n.h"

namespace trellivar {

#define TRELLIVAR_STRING(name, english, chinese)                                                   \
  QString Texts::name() const { return qtText(L10n::t(L10n::Key::name)); }
#include "core/strings.def"

} // namespace trellivar
