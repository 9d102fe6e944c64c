#include "app/options.h"

#include <QCommandLineParser>
#include <QDir>
#include <cstdio>
#include <cstdlib>

namespace trellivar {

namespace {

[[noreturn]] void refuse(const QString& what) {
  std::fprintf(stderr, "trellivar: %s\n", qPrintable(what));
  std::exit(2); // NOLINT(concurrency-mt-unsafe): before any thread
}

/// Options that the window system's own programs pass, as a session manager does.
QCommandLineOption ofToolkit(const QString& name) {
  QCommandLineOption option(name, {}, "value");
  option.setFlags(QCommandLineOption::HiddenFromHelp);
  return option;
}

QString defaultFolder(bool simulate) {
  if (qEnvironmentVariableIsEmpty("HOME"))
    refuse("HOME is not set; name the data folder with --data-dir");
  return QDir::homePath() + "/Library/Application Support/Trellivar" + (simulate ? " Desk" : "");
}

} // namespace

std::optional<QStringList> Options::loginArguments() const {
  if (simulate) return std::nullopt;
  if (!isDataFolderGiven) return QStringList();
  return QStringList{"--data-dir", QString::fromStdString(dataFolder.string())};
}

Options parseOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Turns the keys of the pad into anything.");
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  const QCommandLineOption simulate("simulate",
                                    "Run on a simulated desk, with a pad to play with.");
  const QCommandLineOption dataFolder(
      "data-dir", "Keep profiles, learned keys and settings in this folder.", "folder");
  const QCommandLineOption language("language", "Switch to this language: en or zh-Hans.",
                                    "language");
  parser.addOptions({simulate, dataFolder, language, ofToolkit("platform"), ofToolkit("session")});
  if (!parser.parse(arguments)) refuse(parser.errorText());
  if (parser.isSet(help)) parser.showHelp();
  if (parser.isSet(version)) parser.showVersion();
  if (!parser.positionalArguments().isEmpty())
    refuse("unexpected: " + parser.positionalArguments().first());

  Options options;
  options.simulate = parser.isSet(simulate);
  options.isDataFolderGiven = parser.isSet(dataFolder);
  if (options.isDataFolderGiven && parser.value(dataFolder).isEmpty())
    refuse("--data-dir: expected a folder, found \"\"");
  const QString folder =
      options.isDataFolderGiven ? parser.value(dataFolder) : defaultFolder(options.simulate);
  options.dataFolder = QDir::cleanPath(QDir().absoluteFilePath(folder)).toStdString();
  if (parser.isSet(language)) {
    options.language = AppLanguage::fromRawValue(parser.value(language).toStdString());
    if (!options.language)
      refuse("--language: expected en or zh-Hans, found \"" + parser.value(language) + '"');
  }
  return options;
}

} // namespace trellivar
