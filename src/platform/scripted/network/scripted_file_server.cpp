#include "platform/scripted/network/scripted_file_server.h"

#include <charconv>
#include <optional>

namespace nimbletype {
namespace {

// Of "bytes=100-": the only kind of range that is ever asked for.
std::optional<std::size_t> rangeStart(std::string_view range) {
  constexpr std::string_view prefix = "bytes=";
  if (!range.starts_with(prefix) || !range.ends_with("-")) return std::nullopt;
  range = range.substr(prefix.size(), range.size() - prefix.size() - 1);
  std::size_t start = 0;
  const auto [end, error] = std::from_chars(range.data(), range.data() + range.size(), start);
  if (error != std::errc() || end != range.data() + range.size()) return std::nullopt;
  return start;
}

std::optional<std::size_t> wantedStart(const ScriptedFileServer& server,
                                       const std::vector<HttpHeader>& headers) {
  const auto version = headerValue(headers, "If-Range");
  const bool sameVersion = version.empty() || version == server.etag || version == server.lastModified;
  if (!server.honoursRanges || !sameVersion) return std::nullopt;
  return rangeStart(headerValue(headers, "Range"));
}

ScriptedAnswer fileOrPart(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers) {
  const auto total = server.content.size();
  const auto start = wantedStart(server, headers);
  if (!start) return {{200, {}}, server.content};
  if (*start >= total) return {{416, {{"Content-Range", "bytes */" + std::to_string(total)}}}, ""};
  const auto range = std::to_string(*start) + "-" + std::to_string(total - 1) + "/" + std::to_string(total);
  return {{206, {{"Content-Range", "bytes " + range}}}, server.content.substr(*start)};
}

// The last of equal names wins.
void setHeader(std::vector<HttpHeader>& headers, const HttpHeader& header) {
  std::erase_if(headers, [&](const HttpHeader& old) { return old.name == header.name; });
  headers.push_back(header);
}

}  // namespace

ScriptedAnswer scriptedAnswer(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers) {
  ScriptedAnswer answer = fileOrPart(server, headers);
  if (server.status != 0) answer = {{server.status, {}}, "<html>no file here</html>"};
  auto& all = answer.head.headers;
  if (server.announcesLength) all.push_back({"Content-Length", std::to_string(answer.body.size())});
  if (!server.etag.empty()) all.push_back({"ETag", server.etag});
  if (!server.lastModified.empty()) all.push_back({"Last-Modified", server.lastModified});
  for (const HttpHeader& header : server.headers) setHeader(all, header);
  return answer;
}

}  // namespace nimbletype
