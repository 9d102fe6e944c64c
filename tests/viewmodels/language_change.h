#pragma once

#include "core/l10n.h"

namespace trellivar {

/// The language of the process for the length of a test; English again at the end.
class LanguageChange {
public:
  explicit LanguageChange(AppLanguage language) { L10n::setCurrent(language); }
  LanguageChange(const LanguageChange&) = delete;
  LanguageChange& operator=(const LanguageChange&) = delete;
  ~LanguageChange() { L10n::setCurrent(AppLanguage::en); }
};

} // namespace trellivar
