#include "core/prompt/reply_cleaning.h"

#include <algorithm>

#include "core/prompt/caret_joint.h"
#include "core/prompt/prompt_builder.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::string_view reasoningStart = "<think>", reasoningEnd = "</think>";

bool startsWithAny(std::string_view s, std::initializer_list<std::string_view> starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](std::string_view start) { return s.starts_with(start); });
}

std::string lowercasedStart(std::string_view s) {
  constexpr std::size_t longestStart = 32;  // longer than any start that is looked for
  return text::lowercased(text::firstCharacters(s.substr(0, longestStart * 4), longestStart));
}

// The end of the block that begins at `start`, which may hold others. One that never ends is all reasoning:
// the engine ran out of tokens inside it.
std::size_t reasoningEndFrom(std::string_view reply, std::size_t start) {
  std::size_t at = start + reasoningStart.size();
  for (int depth = 1; depth > 0;) {
    const std::size_t end = reply.find(reasoningEnd, at), inner = reply.find(reasoningStart, at);
    if (end == std::string_view::npos) return reply.size();
    depth += inner < end ? 1 : -1;
    at = inner < end ? inner + reasoningStart.size() : end + reasoningEnd.size();
  }
  return at;
}

}  // namespace

std::string withoutReasoning(std::string_view reply) {
  std::string rest(reply);
  for (std::size_t start; (start = rest.find(reasoningStart)) != std::string::npos;) {
    rest.erase(start, reasoningEndFrom(rest, start) - start);
    // The blank lines after a block belong to it; a blank before the answer may be the word's own.
    if (start == 0) rest.erase(0, std::min(rest.find_first_not_of("\r\n"), rest.size()));
  }
  return rest;
}

std::string_view cutAtEchoedLabel(std::string_view reply) {
  std::size_t cut = reply.size();
  for (std::string_view label : rawLabels) cut = std::min(cut, reply.find(label));
  return reply.substr(0, cut);
}

std::string_view withoutLeadingLabel(std::string_view reply) {
  constexpr std::string_view labels[] = {"continuation:", "completion:", "next words:", "output:", "answer:"};
  const std::string start = lowercasedStart(reply);
  for (std::string_view label : labels) {
    if (!start.starts_with(label)) continue;
    reply.remove_prefix(label.size());
    reply.remove_prefix(std::min(reply.find_first_not_of(' '), reply.size()));
    break;
  }
  return reply;
}

std::string_view withoutFences(std::string_view reply) {
  for (std::string_view fence : {"\"\"\"", "```"}) {
    if (reply.starts_with(fence)) reply.remove_prefix(fence.size());
    if (reply.ends_with(fence)) reply.remove_suffix(fence.size());
  }
  return reply;
}

std::string_view withoutQuotePair(std::string_view reply) {
  if (text::characterCount(text::firstCharacters(reply, 2)) < 2) return reply;
  constexpr std::pair<std::string_view, std::string_view> pairs[] = {{"\"", "\""}, {"“", "”"}, {"'", "'"}};
  for (const auto& [open, close] : pairs)
    if (reply.starts_with(open) && reply.ends_with(close))
      return reply.substr(open.size(), reply.size() - open.size() - close.size());
  return reply;
}

bool isRefusal(std::string_view reply) {
  return startsWithAny(lowercasedStart(reply), {"i'm sorry, but", "i’m sorry, but", "i can't help",
                                                "i can’t help", "i cannot help", "as an ai"});
}

std::string withSingleBlanks(std::string_view reply) {
  std::string collapsed;
  collapsed.reserve(reply.size());
  for (std::size_t i = 0; i < reply.size();) {
    const std::size_t run = std::min(reply.find_first_not_of(" \t", i), reply.size()) - i;
    if (run >= 2)
      collapsed += ' ';
    else
      collapsed += reply[i];
    i += std::max<std::size_t>(run, 1);
  }
  return collapsed;
}

std::string cleanReply(std::string_view reply, const ReplyFrame& frame) {
  const std::string answer = withoutReasoning(reply);
  const std::string_view labelled = cutAtEchoedLabel(answer), unlabelled = withoutLeadingLabel(labelled);
  const std::string_view rest = withoutQuotePair(withoutFences(unlabelled));
  if (isRefusal(rest)) return {};
  const bool lostLabel = unlabelled.size() < labelled.size();
  const std::string joined = joinedAtCaret(withSingleBlanks(rest), frame, lostLabel);
  return std::string(text::trimmedEnd(text::firstWords(joined, static_cast<std::size_t>(frame.words))));
}

}  // namespace nimbletype
