#pragma once
#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system/main_loop.h"
#include "platform/system/task.h"

namespace nimbletype {

struct HttpHeader {
  std::string name, value;
  bool operator==(const HttpHeader&) const = default;
};

struct HttpRequest {
  std::string method = "GET";
  std::string url;  // absolute, http or https
  std::vector<HttpHeader> headers;
  std::string body;
  Milliseconds timeout{20'000};  // from now to the last byte of the reply
};

struct HttpReply {
  int status = 0;
  std::vector<HttpHeader> headers;
  std::string body;
};

// Why there is no reply.
struct HttpFailure {
  enum class Case { badAddress, notConnected, notTrusted, timedOut, dropped, tooLarge };
  Case reason = Case::dropped;
  std::string detail;  // the system's own words, for the log
};

// The value of a header, whose names know no case; empty when there is none.
std::string_view headerValue(const std::vector<HttpHeader>& headers, std::string_view name);

// Short requests to servers. Main thread only.
class HttpClient {
 public:
  using Handler = std::function<void(std::expected<HttpReply, HttpFailure>)>;
  // A reply with a longer body is `tooLarge`.
  static constexpr std::size_t longestBody = 16 << 20;

  virtual ~HttpClient() = default;
  // `done` runs in a later turn. Destroying the task closes the connection. Redirects are not followed: they
  // are replies like any other, so that what a request carries goes nowhere but to its address.
  [[nodiscard]] virtual Task send(const HttpRequest& request, Handler done) = 0;
};

}  // namespace nimbletype
