#include "core/prompt/caret_joint.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t tailBytes = 1200;  // a repetition longer than this is not looked for

bool isWordCharacter(std::string_view c) {
  return text::isLetter(c) || text::isDigit(c) || c == "'" || c == "’" || c == "_";
}
bool endsInWord(std::string_view s) {
  return !s.empty() && isWordCharacter(text::lastCharacter(s));
}
bool startsInWord(std::string_view s) {
  return !s.empty() && isWordCharacter(text::firstCharacter(s));
}
bool endsInBlank(std::string_view s) {
  return s.empty() || text::isWhitespace(text::lastCharacter(s));
}

std::string_view firstWord(std::string_view s) {
  std::size_t length = 0;
  while (startsInWord(s.substr(length))) length += text::firstCharacter(s.substr(length)).size();
  return s.substr(0, length);
}

std::string_view tail(std::string_view before) {
  if (before.size() <= tailBytes) return before;
  std::size_t at = before.size() - tailBytes;
  while (at < before.size() && (static_cast<unsigned char>(before[at]) & 0xC0) == 0x80) ++at;
  return before.substr(at);
}

std::size_t leadingBlanks(std::string_view s) {
  return std::min(s.find_first_not_of(" \t"), s.size());
}

// "off" + "Office until" continues with "ice until". One letter is too little to ignore its case.
std::size_t restartedWord(std::string_view before, std::string_view reply) {
  const std::string_view typed = unfinishedWord(before), begun = firstWord(reply);
  if (typed.empty() || begun.size() <= typed.size() || text::characterCount(typed) < 2) return 0;
  const std::string_view head = text::firstCharacters(begun, text::characterCount(typed));
  return text::lowercased(head) == text::lowercased(typed) ? head.size() : 0;
}

// A model that continues the text writes a word that looks like the unfinished one because it belongs there:
// "5" goes on with "55 1234".
std::string_view withoutRepetition(std::string_view reply, const ReplyFrame& frame) {
  const std::string_view before = frame.before;
  const bool continues = frame.style == PromptStyle::raw && !frame.rewritesWord;
  const std::size_t blanks = leadingBlanks(reply);
  const std::string_view bare = reply.substr(blanks);
  std::size_t repeated = repeatedTail(before, bare, continues ? unfinishedWord(before).size() : 0);
  // After an explicit blank the reply starts a new word, so only whole repeated words count.
  if (blanks > 0 && startsInWord(bare.substr(repeated)) && repeated > 0 &&
      endsInWord(bare.substr(0, repeated)))
    repeated = 0;
  if (repeated == 0 && blanks == 0 && !continues) repeated = restartedWord(before, bare);
  return repeated == 0 ? reply : bare.substr(repeated);
}

bool endsInSmallLetter(std::string_view word) {
  const std::string_view last = text::lastCharacter(word);
  return text::isLetter(last) && text::lowercased(last) == last;
}

bool startsWithCapitalOrDigit(std::string_view word) {
  const std::string_view first = text::firstCharacter(word);
  return text::isDigit(first) || text::lowercased(first) != first;
}

// Whether two words were run together: the typed one is finished, and both together are none. Without a
// dictionary a word that was seen is the best there is to go by.
bool runsWordsTogether(std::string_view reply, const ReplyFrame& frame, bool lostLabel) {
  const std::string typed(unfinishedWord(frame.before)), next(firstWord(reply));
  if (typed.empty() || next.empty() || !frame.isSpelled) return false;
  const auto isSeen = [&](const std::string& word) { return frame.isSeen && frame.isSeen(word); };
  if (isSeen(typed + next)) return false;
  if (!frame.isSpelled(typed) && !isSeen(typed)) return false;
  if (endsInSmallLetter(typed) && text::characterCount(typed) > 1 && startsWithCapitalOrDigit(next))
    return true;
  if (frame.isSpelled(typed + next)) return !frame.hasDictionary && (lostLabel || isSeen(typed));
  return frame.isSpelled(next) || isSeen(next);
}

// "3.5", "example.com" and "e.g." stay whole: only a capital after a small letter shows that a
// sentence begins.
bool beginsSentence(std::string_view before, std::string_view reply) {
  const std::string_view ended = text::lastCharacter(before.substr(0, before.size() - 1));
  const std::string_view first = text::firstCharacter(reply);
  return !ended.empty() && text::isLetter(ended) && text::lowercased(ended) == ended &&
         text::lowercased(first) != first;
}

bool missesBlankAfterPunctuation(std::string_view before, std::string_view reply) {
  if (reply.empty() || !text::isLetter(text::firstCharacter(reply))) return false;
  const std::string_view last = text::lastCharacter(before);
  if (last == ".") return beginsSentence(before, reply);
  return last == "," || last == ";" || last == "!" || last == "?" || last == "…" || last == ")";
}

bool opensBracketOrQuote(std::string_view before) {
  const std::string_view last = text::lastCharacter(before);
  return last == "(" || last == "[" || last == "{" || last == "“" || last == "‘";
}

}  // namespace

std::string_view unfinishedWord(std::string_view s) {
  std::size_t length = 0;
  for (std::string_view rest = s; endsInWord(rest);) {
    length += text::lastCharacter(rest).size();
    rest = s.substr(0, s.size() - length);
  }
  return s.substr(s.size() - length);
}

std::size_t repeatedTail(std::string_view before, std::string_view reply, std::size_t ignored) {
  if (reply.empty()) return 0;
  const std::string_view typed = tail(before);
  for (std::size_t at = typed.find(reply[0]); at != std::string_view::npos;
       at = typed.find(reply[0], at + 1)) {
    const std::string_view candidate = typed.substr(at);
    if (candidate.size() <= ignored) return 0;
    if (!reply.starts_with(candidate) || text::isBlank(candidate)) continue;
    const bool insideWord = startsInWord(candidate) && endsInWord(typed.substr(0, at));
    // "Hmm." + ".. well" goes on with the dots, it does not repeat one.
    const bool insideRun = reply.size() > candidate.size() && reply[candidate.size()] == candidate.back() &&
                           !endsInWord(candidate);
    if (!insideWord && !insideRun) return candidate.size();
  }
  return 0;
}

std::string joinedAtCaret(std::string_view reply, const ReplyFrame& frame, bool lostLabel) {
  const std::string_view before = frame.before;
  const std::size_t start = std::min(reply.find_first_not_of("\r\n"), reply.size());
  reply = reply.substr(start, reply.find_first_of("\r\n", start) - start);
  if (text::isBlank(reply)) return {};
  const std::string_view rest = withoutRepetition(reply, frame);
  const bool mayLackBlank = lostLabel || frame.style == PromptStyle::instruct;
  if (endsInBlank(before) || opensBracketOrQuote(before)) return std::string(text::trimmedStart(rest));
  if (missesBlankAfterPunctuation(before, rest) ||
      (mayLackBlank && runsWordsTogether(rest, frame, lostLabel)))
    return " " + std::string(rest);
  return std::string(rest);
}

}  // namespace nimbletype
