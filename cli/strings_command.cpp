#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "core/l10n.h"

#include <memory>

namespace trellivar::cli {

namespace {

OrderedJson allTexts(AppLanguage language) {
  OrderedJson texts = OrderedJson::object();
  for (const L10n::Key key : L10n::allKeys)
    texts[std::string(L10n::rawValue(key))] = L10n::text(key, language);
  return texts;
}

} // namespace

void addStrings(CLI::App& app, Context& context) {
  auto languageText = std::make_shared<std::string>("en");
  CLI::App* command = app.add_subcommand("strings", "Print every text of the application");
  command->add_option("--language", *languageText, "en or zh-Hans");
  command->callback([&context, languageText] {
    const auto language = AppLanguage::fromRawValue(*languageText);
    if (!language) throw BadInput("--language: expected en or zh-Hans");
    context.out = allTexts(*language).dump(2) + '\n';
  });
}

} // namespace trellivar::cli
