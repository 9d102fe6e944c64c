#include "bench/window/figures.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTextStream>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace trellivar {

namespace {

constexpr auto roleVariable = "TRELLIVAR_MEASURED_ROLE";
constexpr auto startVariable = "TRELLIVAR_MEASURED_START";

} // namespace

std::string role() { return qEnvironmentVariable(roleVariable).toStdString(); }

long long startOfRole() { return qEnvironmentVariable(startVariable).toLongLong(); }

void tell(const Figure& figure) {
  std::printf("%g\t%s\n", figure.value, figure.name.c_str());
  std::fflush(stdout);
}

std::vector<Figure> figuresOf(const std::string& role) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(roleVariable, QString::fromStdString(role));
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  environment.insert(startVariable, QString::number(std::chrono::nanoseconds(now).count()));
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), {});
  if (!process.waitForFinished(120'000) || process.exitCode() != 0) {
    std::fprintf(stderr, "the run \"%s\" failed\n", role.c_str());
    std::exit(1); // NOLINT(concurrency-mt-unsafe): no other thread
  }
  std::vector<Figure> figures;
  QTextStream told(&process);
  for (QString line = told.readLine(); !line.isNull(); line = told.readLine()) {
    const QStringList parts = line.split('\t');
    if (parts.size() == 2) figures.push_back({parts[1].toStdString(), parts[0].toDouble()});
  }
  return figures;
}

} // namespace trellivar
