#pragma once
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace nimbletype {

// Listens on 127.0.0.1 and answers with raw bytes, so that it can do everything that servers do wrong. One
// request is answered after the other on each connection, which stays open unless an answer closes it. Runs
// on threads of its own; every method may be called from any thread.
class LoopbackServer {
 public:
  struct Received {
    std::string head;  // the request line and headers, with the empty line that ends them
    std::string body;
  };
  struct Answer {
    std::string bytes;  // status line, headers and body as they go over the wire
    std::chrono::milliseconds delay{0};
    bool closes = false;   // the connection, after the bytes
    bool endless = false;  // after the bytes, filler without end
  };

  LoopbackServer();
  ~LoopbackServer();  // closes every connection
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::uint16_t port() const { return port_; }
  // "http://127.0.0.1:PORT" and the path.
  std::string url(const std::string& path = "") const;

  // Answers in the order in which requests arrive. A request that finds none is never answered.
  void willAnswer(Answer answer);
  // What every request is answered with once the others are used up.
  void willAlwaysAnswer(Answer answer);

  std::vector<Received> received() const;
  int connections() const;     // accepted so far
  int closedByClient() const;  // of those, how many the client has ended, tidily or not
  std::uint64_t bytesSent() const { return bytesSent_; }
  // How long the latest answer took, from the request's last byte to its own.
  std::chrono::nanoseconds timeTaken() const { return std::chrono::nanoseconds(timeTaken_); }

 private:
  struct Connection {
    int socket;
    std::jthread thread;
  };

  void accept();
  void serve(int socket);
  std::optional<Received> receive(int socket) const;
  std::optional<Answer> nextAnswer();
  bool give(int socket, const Answer& answer);
  bool send(int socket, std::string_view bytes);

  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::atomic<bool> stopping_ = false;
  std::atomic<std::uint64_t> bytesSent_ = 0;
  std::atomic<std::int64_t> timeTaken_ = 0;

  mutable std::mutex mutex_;  // guards what follows
  std::deque<Answer> answers_;
  std::optional<Answer> always_;
  std::vector<Received> received_;
  int closedByClient_ = 0;
  std::list<Connection> connections_;

  std::jthread acceptor_;
};

// An answer with a Content-Length, such as a well-behaved server gives.
std::string httpAnswer(int status, std::string_view body, std::string_view contentType = "application/json");

}  // namespace nimbletype
