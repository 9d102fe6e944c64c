#include "app/single_instance.h"

#include "engine/log.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QThread>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace trellivar {

namespace {

constexpr QByteArrayView greeting = "here\n";
constexpr unsigned long pause = 20; // milliseconds

/// Of the socket. The name of the folder alone may be longer than an address can be.
QString addressFor(const std::filesystem::path& dataFolder) {
  const QByteArray name = QByteArray::fromStdString(canonical(dataFolder).string());
  const QByteArray digest =
      QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex().left(16);
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return (runtime.isEmpty() ? QDir::tempPath() : runtime) + "/trellivar-" +
         QString::fromLatin1(digest);
}

/// Whether somebody at the address has answered that it came forward.
bool call(const QString& address, const QDeadlineTimer& deadline) {
  QLocalSocket socket;
  socket.connectToServer(address);
  if (!socket.waitForConnected(static_cast<int>(deadline.remainingTime()))) return false;
  while (socket.bytesAvailable() < greeting.size()) {
    if (!socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) return false;
  }
  return socket.readAll() == greeting;
}

} // namespace

SingleInstance::SingleInstance(const std::filesystem::path& dataFolder,
                               std::chrono::milliseconds patience)
    : lock_(dataFolder), address_(addressFor(dataFolder)) {
  const QDeadlineTimer deadline(patience);
  // The other one may still be on its way to listening, or on its way out.
  while (!lock_.tryToTake() && !call(address_, deadline)) {
    if (deadline.hasExpired())
      throw std::runtime_error(dataFolder.string() +
                               ": Trellivar is running on this data folder and does not answer");
    QThread::msleep(pause);
  }
}

void SingleInstance::listen(std::function<void()> called) {
  called_ = std::move(called);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { answer(); });
  server_.setSocketOptions(QLocalServer::UserAccessOption); // replaces what a crash has left
  if (!server_.listen(address_))
    debugLog("a second start will not be noticed: " + server_.errorString().toStdString());
}

void SingleInstance::answer() {
  while (QLocalSocket* const caller = server_.nextPendingConnection()) {
    QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    called_();
    caller->write(greeting.data(), greeting.size());
    caller->disconnectFromServer(); // once that is written
  }
}

} // namespace trellivar
