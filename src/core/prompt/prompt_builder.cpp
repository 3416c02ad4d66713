#include "core/prompt/prompt_builder.h"

#include <initializer_list>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t titleLimit = 120, writerLimit = 1200, exampleLimit = 220, copiedLimit = 500,
                      screenLimit = 900, windowsLimit = 500, typedLimit = 1500;
constexpr std::size_t rawContextLimit = 100, rawWriterLimit = 600, rawCopiedLimit = 400, rawNearbyLimit = 400;

std::string quoted(std::string_view s) {
  return '"' + std::string(s) + '"';
}

class Lines {
 public:
  void add(std::string_view label, std::string_view value) {
    if (value.empty()) return;
    if (!joined_.empty()) joined_ += '\n';
    joined_.append(label).append(value);
  }
  void addQuoted(std::string_view label, std::string_view value) {
    if (!value.empty()) add(label, quoted(value));
  }
  const std::string& joined() const { return joined_; }

 private:
  std::string joined_;
};

std::string lastWithEllipsis(std::string_view s, std::size_t count) {
  const std::string_view tail = text::lastCharacters(s, count);
  return tail.size() == s.size() ? std::string(s) : "…" + std::string(tail);
}

std::string exampleLines(const PromptContext& context) {
  std::string lines;
  for (const std::string& example : context.examples)
    lines += "\n- " + quoted(text::clipped(example, exampleLimit));
  return lines;
}

std::string contextLines(const PromptContext& c) {
  Lines lines;
  lines.add("App: ", c.appName);
  lines.add("Window: ", text::clipped(c.windowTitle, titleLimit));
  lines.add("Website: ", c.domain);
  lines.add("Now: ", c.now);
  lines.add("The writer's name: ", c.writerName);
  lines.add("About the writer: ", text::clipped(c.aboutWriter, writerLimit));
  lines.add("How the writer phrases things:", exampleLines(c));
  lines.addQuoted("Recently copied text: ", text::clipped(c.clipboard, copiedLimit));
  lines.addQuoted("Text visible on screen: ", lastWithEllipsis(c.screenText, screenLimit));
  lines.add("Other windows beside it:\n", text::clipped(c.nearbyText, windowsLimit));
  lines.add("Windows looked at just before:\n", text::clipped(c.recentText, windowsLimit));
  return lines.joined();
}

std::string joinedNonEmpty(std::initializer_list<std::string_view> parts) {
  std::string joined;
  for (std::string_view part : parts) {
    if (part.empty()) continue;
    if (!joined.empty()) joined += ", ";
    joined += part;
  }
  return joined;
}

}  // namespace

std::string systemPrompt(int words) {
  return "You are the autocomplete inside a Mac text field. You get the text a person has typed so far and "
         "you "
         "predict the words they will type next.\n"
         "Rules:\n"
         "- Reply with the continuation only. No quotes, labels, notes or explanations.\n"
         "- Continue exactly where the text stops and never repeat any of it.\n"
         "- Match the person's language, spelling, tone and formatting.\n"
         "- Write at most " +
         std::to_string(words) +
         " words and stop at a natural point.\n"
         "- If the text stops in the middle of a word, finish that word first.\n"
         "- Use the context only to guess better. Never mention it.\n"
         "Examples of text and the reply you would give:\n"
         "Text: \"Let me know if you have any\" Reply: questions or need anything else.\n"
         "Text: \"I'll be out of the off\" Reply: ice until Monday, back on the 14th.\n"
         "Text: \"We tried the new place on Main Street and the pasta was \" Reply: honestly the best I've "
         "had "
         "in years.";
}

std::string endingHint(std::string_view before) {
  const std::string_view last = text::lastCharacter(before);
  if (last.empty()) return "it is empty";
  if (text::isWhitespace(last)) return "it ends with a space, so start with a new word";
  if (text::isLetter(last) || text::isDigit(last)) return "it may end mid-word";
  return "it ends with " + quoted(last);
}

std::string userMessage(const PromptContext& context, std::string_view before) {
  std::string message;
  if (const std::string lines = contextLines(context); !lines.empty())
    message = "Context, for your guess only:\n" + lines + "\n\n";
  message += "Text typed so far (" + endingHint(before) + "):\n\"\"\"\n";
  message += text::lastCharacters(before, typedLimit);
  message += "\n\"\"\"\nContinue it.";
  return message;
}

std::string rawPrompt(const PromptContext& c, std::string_view window) {
  Lines lines;
  lines.add("[Context] ",
            text::clipped(joinedNonEmpty({c.appName, c.windowTitle, c.domain}), rawContextLimit));
  lines.add("[Now] ", c.now);
  lines.add("[Writer] ", text::clipped(c.aboutWriter, rawWriterLimit));
  for (const std::string& example : c.examples)
    lines.add("[Writer's phrasing] ", text::clipped(example, exampleLimit));
  lines.add("[Copied] ", text::clipped(c.clipboard, rawCopiedLimit));
  lines.add("[Beside it] ", text::clipped(c.nearbyText, rawNearbyLimit));
  lines.add("[Looked at just before] ", text::clipped(c.recentText, windowsLimit));
  lines.add("[On screen] ", text::lastCharacters(c.screenText, screenLimit));
  std::string prompt = lines.joined();
  if (!prompt.empty()) prompt += "\n\n";
  prompt += window;
  return prompt;
}

}  // namespace nimbletype
