#pragma once
#include <QLocalServer>
#include <QLockFile>
#include <QString>
#include <functional>
#include <string>
#include <vector>

class QLocalSocket;

namespace nimbletype {

// Lets one process of the user have a name, and be told what later starts were asked for. Needs a
// QCoreApplication.
class SingleInstance {
 public:
  // The first one keeps the name until it is destroyed or ends in any way. The name is part of a file's.
  explicit SingleInstance(const QString& name);
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  bool isFirst() const { return isFirst_; }
  // Whether the first one took the arguments, which it has a second for. When it has ended meanwhile, this
  // one is the first. Waits without serving the loop.
  bool handOver(const std::vector<std::string>& arguments);
  // Takes no arguments any more: later starts wait for the end of this one.
  void close();
  // Called with the arguments of each later start, those that came before this call included. One listener.
  using Handler = std::function<void(const std::vector<std::string>&)>;
  void onArguments(Handler handler);

 private:
  void listen();
  void serve(QLocalSocket* peer);
  void read(QLocalSocket* peer);
  void tell();

  QString path_;
  QLockFile lock_;
  bool isFirst_;
  QLocalServer server_;
  Handler handler_;
  std::vector<std::vector<std::string>> waiting_;
};

}  // namespace nimbletype
