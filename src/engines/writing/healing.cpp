#include "engines/writing/healing.h"

#include <algorithm>
#include <optional>
#include <queue>
#include <string_view>

#include "engines/writing/confidence.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// Longer runs of letters are no words anybody completes.
constexpr std::size_t longestWord = 32;

// Scripts that put no blanks between words: their vocabularies have no half-typed words to heal.
bool isWrittenWithoutBlanks(std::string_view character) {
  const auto units = text::toUtf16(character);
  const auto unit = units.empty() ? 0U : static_cast<unsigned>(units.front());
  const auto within = [unit](unsigned first, unsigned last) { return first <= unit && unit <= last; };
  return within(0x0E00, 0x0EFF) || within(0x1000, 0x109F) || within(0x1780, 0x17FF) ||
         within(0x3040, 0x30FF) || within(0x3400, 0x9FFF) || within(0xF900, 0xFAFF) || within(0xD840, 0xD8FF);
}

bool isApostrophe(std::string_view character) {
  return character == "'" || character == "’";
}

// The letters at the end of `s`, apostrophes among them included; empty where healing makes no sense.
std::string_view unfinishedWord(std::string_view s) {
  const auto tail = text::lastCharacters(s, longestWord + 1);
  std::size_t count = 0, bytes = 0;
  const auto characters = text::characters(tail);
  for (auto it = characters.rbegin(); it != characters.rend(); ++it, ++count) {
    if (isWrittenWithoutBlanks(*it)) return {};
    if (!text::isLetter(*it) && !isApostrophe(*it)) break;
    bytes += it->size();
  }
  auto word = s.substr(s.size() - bytes);
  while (isApostrophe(text::firstCharacter(word))) word.remove_prefix(text::firstCharacter(word).size());
  return count > longestWord ? std::string_view() : word;
}

std::string_view blankAtEnd(std::string_view s) {
  if (!s.ends_with(' ')) return {};
  const auto before = text::lastCharacter(s.substr(0, s.size() - 1));
  return before.empty() || text::isWhitespace(before) ? std::string_view() : s.substr(s.size() - 1);
}

struct OpenPath : HealingPath {
  std::size_t spelled = 0;  // bytes of the required letters
  bool operator<(const OpenPath& other) const { return logProbability < other.logProbability; }
};

class HealingSearch {
 public:
  HealingSearch(const PieceIndex& pieces, const std::string& required, std::size_t wanted)
      : pieces_(pieces), required_(required), wanted_(wanted) {}

  std::optional<OpenPath> takeBest() {
    if (open_.empty()) return std::nullopt;
    auto best = open_.top();
    open_.pop();
    return best;
  }
  bool isComplete(const OpenPath& path) const { return path.spelled == required_.size(); }

  // Adds every path that is one allowed token longer.
  void extend(const OpenPath& path, std::span<const float> logits) {
    const auto rest = std::string_view(required_).substr(path.spelled);
    const double total = logSumExp(logits);
    for (const auto token : mostProbable(pieces_.beginningWith(rest), logits))
      add(path, token, logits, total);
    for (const auto token : pieces_.properPrefixesOf(rest)) add(path, token, logits, total);
  }

 private:
  Tokens mostProbable(std::span<const Token> tokens, std::span<const float> logits) const {
    Tokens best(std::min(wanted_, tokens.size()));
    std::ranges::partial_sort_copy(tokens, best, [&](Token a, Token b) { return logits[a] > logits[b]; });
    return best;
  }

  void add(const OpenPath& path, Token token, std::span<const float> logits, double total) {
    auto longer = path;
    longer.tokens.push_back(token);
    longer.logProbability += logits[static_cast<std::size_t>(token)] - total;
    longer.spelled = std::min(path.spelled + pieces_.piece(token).size(), required_.size());
    open_.push(std::move(longer));
  }

  const PieceIndex& pieces_;
  const std::string& required_;
  std::size_t wanted_;
  std::priority_queue<OpenPath> open_;
};

}  // namespace

HealedPrompt healedPrompt(const CompletionRequest& request) {
  std::string_view prompt = request.rawPrompt;
  std::string_view required;
  if (request.spaceTyped)
    required = blankAtEnd(prompt);
  else if (request.healLast)
    required = unfinishedWord(prompt);
  prompt.remove_suffix(required.size());
  if (request.healLast && !required.empty() && prompt.ends_with(' ')) {
    required = std::string_view(request.rawPrompt).substr(prompt.size() - 1);
    prompt.remove_suffix(1);
  }
  return {std::string(prompt), std::string(required)};
}

std::expected<std::vector<HealingPath>, RuntimeFailure> healingPaths(const PieceIndex& pieces,
                                                                     const std::string& required,
                                                                     std::size_t wanted, int evaluations,
                                                                     const PathLogits& logitsAfter) {
  HealingSearch search(pieces, required, wanted);
  std::vector<HealingPath> found;
  std::optional<OpenPath> path = OpenPath{};
  while (found.size() < wanted && path) {
    if (search.isComplete(*path)) {
      found.push_back(std::move(*path));
    } else if (path->tokens.empty() || evaluations-- > 0) {
      const auto logits = logitsAfter(path->tokens);
      if (!logits) return std::unexpected(logits.error());
      search.extend(*path, *logits);
    } else {
      break;
    }
    path = search.takeBest();
  }
  return found;
}

}  // namespace nimbletype
