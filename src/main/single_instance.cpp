#include "main/single_instance.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <optional>
#include <utility>

namespace nimbletype {
namespace {

constexpr int patienceMs = 1'000, pauseMs = 20;
constexpr qint64 longestMessage = 65'536;
constexpr const char* taken = "taken\n";

QString pathFor(QString name) {
  name.replace('/', '_');
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/" + name;
}

// Without a folder to write in nobody can be told apart: better two than none.
bool isFirstWith(QLockFile& lock) {
  lock.setStaleLockTime(0);
  return lock.tryLock() || lock.error() != QLockFile::LockFailedError;
}

QByteArray lineOf(const std::vector<std::string>& arguments) {
  QJsonArray words;
  for (const auto& argument : arguments) words.append(QString::fromStdString(argument));
  return QJsonDocument(words).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<std::vector<std::string>> argumentsIn(const QByteArray& line) {
  const QJsonDocument document = QJsonDocument::fromJson(line);
  if (!document.isArray()) return std::nullopt;
  std::vector<std::string> arguments;
  for (const auto& word : document.array()) {
    if (!word.isString()) return std::nullopt;
    arguments.push_back(word.toString().toStdString());
  }
  return arguments;
}

int left(const QDeadlineTimer& deadline) {
  return static_cast<int>(deadline.remainingTime());
}

bool offer(const QString& path, const QByteArray& line, const QDeadlineTimer& deadline) {
  QLocalSocket first;
  first.connectToServer(path);
  if (!first.waitForConnected(left(deadline))) return false;
  first.write(line);
  while (!first.canReadLine())
    if (!first.waitForReadyRead(left(deadline))) return false;
  return first.readLine() == taken;
}

}  // namespace

SingleInstance::SingleInstance(const QString& name)
    : path_(pathFor(name)), lock_(path_ + ".lock"), isFirst_(isFirstWith(lock_)) {
  if (isFirst_) listen();
}

void SingleInstance::listen() {
  QLocalServer::removeServer(path_);  // one that crashed has left it
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
    while (QLocalSocket* peer = server_.nextPendingConnection()) serve(peer);
  });
  server_.listen(path_);
}

// The first one may not listen yet.
bool SingleInstance::handOver(const std::vector<std::string>& arguments) {
  const QDeadlineTimer deadline(patienceMs);
  const QByteArray line = lineOf(arguments);
  while (!deadline.hasExpired()) {
    if (offer(path_, line, deadline)) return true;
    isFirst_ = lock_.tryLock();
    if (isFirst_) {
      listen();
      return false;
    }
    QThread::msleep(pauseMs);
  }
  return false;
}

void SingleInstance::close() {
  server_.close();
  onArguments({});
}

void SingleInstance::onArguments(Handler handler) {
  handler_ = std::move(handler);
  tell();
}

void SingleInstance::serve(QLocalSocket* peer) {
  QObject::connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
  QObject::connect(peer, &QLocalSocket::readyRead, peer, [this, peer] { read(peer); });
  peer->setReadBufferSize(longestMessage);
  read(peer);
}

void SingleInstance::read(QLocalSocket* peer) {
  if (!peer->canReadLine()) {
    if (peer->bytesAvailable() >= longestMessage) peer->abort();
    return;
  }
  auto arguments = argumentsIn(peer->readLine());
  if (!arguments) return peer->abort();
  peer->write(taken);
  peer->flush();
  waiting_.push_back(std::move(*arguments));
  tell();
}

void SingleInstance::tell() {
  if (!handler_) return;
  for (const auto& arguments : std::exchange(waiting_, {})) handler_(arguments);
}

}  // namespace nimbletype
