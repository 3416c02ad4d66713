#include "tools/stage/servers/loopback_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <charconv>
#include <stdexcept>
#include <utility>

#include "platform/network/http_client.h"

namespace nimbletype {
namespace {

constexpr std::string_view endOfHead = "\r\n\r\n";

int listenOnLoopback() {
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener, 64) != 0)
    throw std::runtime_error("cannot listen on the loopback interface");
  return listener;
}

std::uint16_t portOf(int listener) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

bool readMore(int socket, std::string& into) {
  char buffer[65536];
  const auto count = ::recv(socket, buffer, sizeof buffer, 0);
  if (count > 0) into.append(buffer, static_cast<std::size_t>(count));
  return count > 0;
}

std::size_t contentLength(std::string_view head) {
  std::vector<HttpHeader> headers;
  for (std::size_t start = 0, end; (end = head.find("\r\n", start)) != head.npos; start = end + 2) {
    const auto line = head.substr(start, end - start);
    const auto colon = line.find(": ");
    if (colon != line.npos)
      headers.push_back({std::string(line.substr(0, colon)), std::string(line.substr(colon + 2))});
  }
  const auto text = headerValue(headers, "Content-Length");
  std::size_t length = 0;
  std::from_chars(text.data(), text.data() + text.size(), length);
  return length;
}

// False when the client closed the connection instead of waiting.
bool clientWaits(int socket, std::optional<std::chrono::milliseconds> span) {
  pollfd watched{socket, POLLIN, 0};
  if (::poll(&watched, 1, span ? static_cast<int>(span->count()) : -1) == 0) return true;
  char byte = 0;
  return ::recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

}  // namespace

LoopbackServer::LoopbackServer() : listener_(listenOnLoopback()), port_(portOf(listener_)) {
  acceptor_ = std::jthread([this] { accept(); });
}

LoopbackServer::~LoopbackServer() {
  stopping_ = true;
  ::shutdown(listener_, SHUT_RDWR);  // wakes the thread that accepts
  acceptor_.join();
  for (const auto& connection : connections_) ::shutdown(connection.socket, SHUT_RDWR);
  for (auto& connection : connections_) {
    connection.thread.join();
    ::close(connection.socket);
  }
  ::close(listener_);
}

std::string LoopbackServer::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

void LoopbackServer::willAnswer(Answer answer) {
  const std::lock_guard lock(mutex_);
  answers_.push_back(std::move(answer));
}

void LoopbackServer::willAlwaysAnswer(Answer answer) {
  const std::lock_guard lock(mutex_);
  always_ = std::move(answer);
}

std::vector<LoopbackServer::Received> LoopbackServer::received() const {
  const std::lock_guard lock(mutex_);
  return received_;
}

int LoopbackServer::connections() const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(connections_.size());
}

int LoopbackServer::closedByClient() const {
  const std::lock_guard lock(mutex_);
  return closedByClient_;
}

void LoopbackServer::accept() {
  while (!stopping_) {
    const int socket = ::accept(listener_, nullptr, nullptr);
    if (socket < 0) continue;
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    const std::lock_guard lock(mutex_);
    connections_.push_back({socket, std::jthread([this, socket] { serve(socket); })});
  }
}

void LoopbackServer::serve(int socket) {
  bool closes = false;
  while (const auto request = closes ? std::nullopt : receive(socket)) {
    const auto arrival = std::chrono::steady_clock::now();
    {
      const std::lock_guard lock(mutex_);
      received_.push_back(*request);
    }
    const auto answer = nextAnswer();
    if (!clientWaits(socket, answer ? std::optional(answer->delay) : std::nullopt)) break;
    if (!answer || !give(socket, *answer)) break;
    timeTaken_ = std::chrono::nanoseconds(std::chrono::steady_clock::now() - arrival).count();
    closes = answer->closes;
  }
  // The socket's number is free for others only when nobody here uses it any more.
  ::shutdown(socket, SHUT_RDWR);
  const std::lock_guard lock(mutex_);
  if (!closes && !stopping_) ++closedByClient_;
}

std::optional<LoopbackServer::Received> LoopbackServer::receive(int socket) const {
  std::string bytes;
  std::size_t head = bytes.npos;
  while ((head = bytes.find(endOfHead)) == bytes.npos)
    if (!readMore(socket, bytes)) return std::nullopt;
  head += endOfHead.size();
  const auto length = contentLength(std::string_view(bytes).substr(0, head));
  while (bytes.size() < head + length)
    if (!readMore(socket, bytes)) return std::nullopt;
  return Received{bytes.substr(0, head), bytes.substr(head)};
}

std::optional<LoopbackServer::Answer> LoopbackServer::nextAnswer() {
  const std::lock_guard lock(mutex_);
  if (answers_.empty()) return always_;
  auto answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

bool LoopbackServer::give(int socket, const Answer& answer) {
  bool open = send(socket, answer.bytes);
  const std::string filler(answer.endless ? 65536 : 0, ' ');
  while (open && answer.endless) open = send(socket, filler);
  return open;
}

bool LoopbackServer::send(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return false;
    bytesSent_ += static_cast<std::uint64_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::string httpAnswer(int status, std::string_view body, std::string_view contentType) {
  return "HTTP/1.1 " + std::to_string(status) + " Status\r\nContent-Type: " + std::string(contentType) +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
}

}  // namespace nimbletype
