#include "engines/store/body_place.h"

#include <charconv>
#include <optional>

namespace nimbletype {
namespace {

constexpr int partialContent = 206, rangeNotSatisfiable = 416;

bool isStrongTag(std::string_view tag) {
  return tag.size() >= 2 && tag.starts_with('"') && tag.ends_with('"');
}

bool isSuccess(int status) {
  return status >= 200 && status <= 299;
}

// Takes a number off the front of `text`.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || number < 0) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

bool take(std::string_view& text, std::string_view prefix) {
  const bool found = text.starts_with(prefix);
  if (found) text.remove_prefix(prefix.size());
  return found;
}

struct ContentRange {
  std::int64_t start = 0;
  std::optional<std::int64_t> total;
};

// Of "bytes 100-199/200", where the total may be unknown: "*".
std::optional<ContentRange> parseContentRange(std::string_view text) {
  if (!take(text, "bytes ")) return std::nullopt;
  const auto start = takeNumber(text);
  if (!start || !take(text, "-") || !takeNumber(text) || !take(text, "/")) return std::nullopt;
  if (text == "*") return ContentRange{*start, std::nullopt};
  const auto total = takeNumber(text);
  if (!total || !text.empty()) return std::nullopt;
  return ContentRange{*start, total};
}

std::optional<std::int64_t> announcedLength(const DownloadHead& head) {
  auto text = headerValue(head.headers, "Content-Length");
  const auto length = takeNumber(text);
  return text.empty() ? length : std::nullopt;
}

// Servers that know no If-Range send a part of whatever file they have now.
bool isOtherVersion(const DownloadHead& head, const std::string& validator) {
  const auto tag = headerValue(head.headers, "ETag");
  return isStrongTag(validator) && isStrongTag(tag) && tag != validator;
}

BodyPlace placePart(const DownloadHead& head, std::int64_t held, std::int64_t size,
                    const std::string& validator) {
  const auto range = parseContentRange(headerValue(head.headers, "Content-Range"));
  if (range && range->total.value_or(size) != size) return BodyPlace::wrongFile;
  if (range && range->start == held && !isOtherVersion(head, validator)) return BodyPlace::append;
  return held > 0 ? BodyPlace::startOver : BodyPlace::unusable;
}

}  // namespace

BodyPlace placeBody(const DownloadHead& head, std::int64_t held, std::int64_t size,
                    const std::string& validator) {
  if (head.status == partialContent) return placePart(head, held, size, validator);
  if (head.status == rangeNotSatisfiable && held > 0) return BodyPlace::startOver;
  if (!isSuccess(head.status)) return BodyPlace::refused;
  return announcedLength(head).value_or(size) == size ? BodyPlace::fromZero : BodyPlace::wrongFile;
}

std::vector<HttpHeader> headersToResume(std::int64_t held, const std::string& validator) {
  // Ranges and sizes are those of the file itself, so it must come as it is.
  std::vector<HttpHeader> headers{{"Accept-Encoding", "identity"}};
  if (held > 0) headers.push_back({"Range", "bytes=" + std::to_string(held) + "-"});
  if (held > 0 && !validator.empty()) headers.push_back({"If-Range", validator});
  return headers;
}

std::string validatorOf(const DownloadHead& head) {
  const auto tag = headerValue(head.headers, "ETag");
  return std::string(isStrongTag(tag) ? tag : headerValue(head.headers, "Last-Modified"));
}

}  // namespace nimbletype
