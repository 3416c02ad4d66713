#include "core/completion/asking/reply_cleaner.h"

#include "core/prompt/caret_joint.h"
#include "core/prompt/reply_cleaning.h"
#include "core/prompt/seen_words.h"

namespace nimbletype {

std::string ReplyCleaner::operator()(const std::string& reply) const {
  return cleanReply(reply, {.before = frame_.before,
                            .words = frame_.words,
                            .style = frame_.style,
                            .rewritesWord = frame_.rewritesWord,
                            .isSpelled = [this](std::string_view word) { return typo_->knows(word); },
                            .hasDictionary = typo_->hasDictionary(),
                            .isSeen = [this](std::string_view word) { return isSeen(word); }});
}

// The word at the caret is the one in question, so it does not count itself.
bool ReplyCleaner::isSeen(std::string_view word) const {
  const std::string_view before(frame_.before);
  const PromptContext& c = *frame_.context;
  return SeenWords({before.substr(0, before.size() - unfinishedWord(before).size()), frame_.after,
                    c.windowTitle, c.screenText, c.nearbyText, c.recentText, c.clipboard, c.aboutWriter,
                    c.writerName})
      .contains(word);
}

}  // namespace nimbletype
