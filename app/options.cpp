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

} // namespace

Options parseOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Turns the keys of the pad into anything.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption simulate("simulate",
                                    "Run on a simulated desk, with a pad to play with.");
  const QCommandLineOption dataFolder(
      "data-dir", "Keep profiles, learned keys and settings in this folder.", "folder");
  const QCommandLineOption language("language", "Speak this language: en or zh-Hans.", "language");
  parser.addOptions({simulate, dataFolder, language});
  parser.process(arguments);
  if (!parser.positionalArguments().isEmpty())
    refuse("unexpected: " + parser.positionalArguments().first());

  Options options;
  options.simulate = parser.isSet(simulate);
  options.isDataFolderGiven = parser.isSet(dataFolder);
  if (options.isDataFolderGiven && parser.value(dataFolder).isEmpty())
    refuse("--data-dir: expected a folder, found \"\"");
  const QString folder = options.isDataFolderGiven
                             ? parser.value(dataFolder)
                             : QDir::homePath() + "/Library/Application Support/Trellivar";
  options.dataFolder = folder.toStdString();
  if (parser.isSet(language)) {
    options.language = AppLanguage::fromRawValue(parser.value(language).toStdString());
    if (!options.language)
      refuse("--language: expected en or zh-Hans, found \"" + parser.value(language) + '"');
  }
  return options;
}

} // namespace trellivar
