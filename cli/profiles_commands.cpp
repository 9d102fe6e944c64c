#include "cli/commands.h"
#include "cli/data_folder.h"
#include "cli/input.h"
#include "cli/shortcut.h"
#include "core/json/coding.h"
#include "core/json/quoted.h"
#include "core/known_devices.h"
#include "core/mode_profiles.h"
#include "core/utf8.h"
#include "engine/log.h"
#include "files/durable_file.h"
#include "viewmodels/profile_editing.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <functional>
#include <iomanip>
#include <memory>
#include <optional>
#include <sstream>
#include <system_error>

namespace trellivar::cli {

namespace {

struct ProfileOptions {
  std::string mode;
  std::optional<std::string> shownMode; ///< none: all
  std::string key;
  std::string shortcut;
  std::string text;
  std::optional<std::string> label;
  std::string file;
  bool json = false;
};

void checkMode(const std::string& mode) {
  if (std::ranges::find(modeNames, mode) == modeNames.end())
    throw BadInput("MODE: expected P, M or R, found " + quotedJson(mode));
}

int parseKey(const std::string& text) {
  const int id = parseInteger("KEY", text);
  const KnownTransport& pad = KnownDevices::all().front().primaryMode()->transports.front();
  if (std::ranges::find(pad.layout.keys, id, &PhysicalKey::id) == pad.layout.keys.end())
    throw BadInput("KEY: the pad has no key " + std::to_string(id));
  return id;
}

void checkText(const std::string& text) {
  if (!utf8::isValid(text)) throw BadInput("the label is not valid UTF-8");
}

[[noreturn]] void failUnbound(const ProfileOptions& options) {
  throw Failure("key " + options.key + " of mode " + options.mode + " has no binding");
}

ProfileListViewModel profilesOf(const Context& context) {
  return openProfiles(ProfileStore(dataFolder(context)));
}

/// Applies `edit` to the profile of the mode. Throws Failure if it cannot be saved.
void editProfile(const Context& context, const ProfileOptions& options,
                 const std::function<void(Profile&)>& edit) {
  std::string failure;
  ProfileListViewModel profiles =
      openProfiles(ProfileStore(dataFolder(context)), [&failure](std::string_view what) {
        debugLog(what);
        failure = what;
      });
  Profile profile = *profiles.profile(options.mode);
  edit(profile);
  failure.clear(); // that of the start, which comes again if it matters
  profiles.update(profile);
  if (!failure.empty()) throw Failure(failure);
}

std::string countOf(std::size_t bindings) {
  if (bindings == 0) return "no bindings";
  return std::to_string(bindings) + (bindings == 1 ? " binding" : " bindings");
}

/// Text of the user's on a terminal: control characters, which could do anything there, become
/// U+FFFD.
std::string harmless(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isControl = byte < 0x20 || byte == 0x7F;
    result += isControl ? "\uFFFD" : std::string(1, c);
  }
  return result;
}

std::string describeProfile(const Profile& profile) {
  std::ostringstream text;
  text << harmless(profile.name) << '\n';
  auto mappings = profile.mappings;
  std::ranges::stable_sort(mappings, {}, &KeyMapping::fromKeyId);
  for (const KeyMapping& mapping : mappings) {
    text << "  " << mapping.fromKeyId << "  ";
    const std::string shortcut = harmless(shortcutText(mapping.output));
    if (mapping.label)
      text << std::left << std::setw(24) << shortcut << "  " << harmless(*mapping.label) << '\n';
    else
      text << shortcut << '\n';
  }
  if (mappings.empty()) text << "  " << countOf(0) << '\n';
  return text.str();
}

void runList(Context& context, const ProfileOptions&) {
  const ProfileListViewModel list = profilesOf(context);
  for (const Profile& profile : *list.profiles())
    context.out += harmless(profile.name) + "  " + countOf(profile.mappings.size()) + '\n';
}

void runShow(Context& context, const ProfileOptions& options) {
  const auto& mode = options.shownMode;
  if (mode) checkMode(*mode);
  const ProfileListViewModel list = profilesOf(context);
  if (options.json) {
    context.out = prettyPrinted(mode ? trellivar::encode(*list.profile(*mode))
                                     : encodeList(*list.profiles()));
  } else if (mode) {
    context.out = describeProfile(*list.profile(*mode));
  } else {
    for (const Profile& profile : *list.profiles())
      context.out += describeProfile(profile);
  }
}

void runBind(Context& context, const ProfileOptions& options) {
  checkMode(options.mode);
  const int keyId = parseKey(options.key);
  const Output output = parseShortcut(options.shortcut);
  if (options.label) checkText(*options.label);
  editProfile(context, options, [&](Profile& profile) {
    bindKey(profile, keyId, output);
    if (options.label) labelKey(profile, keyId, *options.label);
  });
}

void runUnbind(Context& context, const ProfileOptions& options) {
  checkMode(options.mode);
  const int keyId = parseKey(options.key);
  editProfile(context, options, [&](Profile& profile) {
    if (!unbindKey(profile, keyId)) failUnbound(options);
  });
}

void runLabel(Context& context, const ProfileOptions& options) {
  checkMode(options.mode);
  const int keyId = parseKey(options.key);
  checkText(options.text);
  editProfile(context, options, [&](Profile& profile) {
    if (!labelKey(profile, keyId, options.text)) failUnbound(options);
  });
}

/// A pipe or a terminal cannot be replaced.
void writeInto(const std::string& device, const std::string& text) {
  std::ofstream stream(device, std::ios::binary);
  if (!(stream << text).flush())
    throw Failure(device + ": " + std::generic_category().message(errno));
}

void runExport(Context& context, const ProfileOptions& options) {
  const std::string text = prettyPrinted(encodeList(*profilesOf(context).profiles()));
  if (options.file == "-") {
    context.out = text;
    return;
  }
  std::error_code unreachable; // replaceFile says why
  const auto status = std::filesystem::status(options.file, unreachable);
  if (!std::filesystem::exists(status) || std::filesystem::is_regular_file(status))
    replaceFile(options.file, text);
  else
    writeInto(options.file, text);
}

void runImport(Context& context, const ProfileOptions& options) {
  const auto imported = readProfiles(context, options.file);
  const ProfileStore store(dataFolder(context));
  openProfiles(store);
  const auto old = readFile(store.profilesFile());
  if (old) replaceFile(store.directory() / "profiles.json.bak", *old);
  store.save(imported);
  openProfiles(store); // a list from before there were modes shows at once what it became
}

using Run = void (*)(Context&, const ProfileOptions&);

struct Declared {
  CLI::App* command;
  std::shared_ptr<ProfileOptions> options;
};

Declared declare(CLI::App& group, Context& context, const std::string& name,
                 const std::string& help, Run run) {
  auto options = std::make_shared<ProfileOptions>();
  CLI::App* command = group.add_subcommand(name, help);
  command->callback([&context, options, run] { run(context, *options); });
  return {command, options};
}

void addModeAndKey(const Declared& declared) {
  declared.command->add_option("MODE", declared.options->mode, "P, M or R")->required();
  declared.command->add_option("KEY", declared.options->key, "The pad key: 1, 2 or 3")->required();
}

void addEditing(CLI::App& group, Context& context) {
  const Declared bind = declare(group, context, "bind", "Bind a pad key to a shortcut", runBind);
  addModeAndKey(bind);
  bind.command
      ->add_option("SHORTCUT", bind.options->shortcut,
                   "cmd+shift+c, right_option, play_or_pause, button3, or a sequence h,e,l,l,o")
      ->required();
  bind.command->add_option("--label", bind.options->label, "The key's caption");

  addModeAndKey(declare(group, context, "unbind", "Remove the binding of a pad key", runUnbind));

  const Declared label = declare(group, context, "label", "Caption a bound pad key", runLabel);
  addModeAndKey(label);
  label.command->add_option("TEXT", label.options->text, "The caption; empty to remove it")
      ->required();
}

} // namespace

void addProfiles(CLI::App& app, Context& context) {
  CLI::App& group = *app.add_subcommand("profiles", "Read and edit the profiles");
  group.require_subcommand(1);
  declare(group, context, "list", "List the profiles", runList);

  const Declared show = declare(group, context, "show", "Print one profile or all", runShow);
  show.command->add_option("MODE", show.options->shownMode, "P, M or R");
  show.command->add_flag("--json", show.options->json, "Print JSON");

  addEditing(group, context);

  const Declared exported =
      declare(group, context, "export", "Write the profiles to a file", runExport);
  exported.command->add_option("FILE", exported.options->file)->required();
  const Declared imported =
      declare(group, context, "import", "Replace the profiles by those of a file", runImport);
  imported.command->add_option("FILE", imported.options->file)->required();
}

} // namespace trellivar::cli
