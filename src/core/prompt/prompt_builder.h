#pragma once
#include <string>
#include <string_view>

#include "core/prompt/prompt_context.h"

namespace nimbletype {

// The system prompt of the chat form; `words` is the word budget it states.
std::string systemPrompt(int words);

// What the end of the typed text tells the model: inside a word, after a space, after punctuation.
std::string endingHint(std::string_view before);

// The user message of the chat form: context lines, then the end of the text before the caret.
std::string userMessage(const PromptContext& context, std::string_view before);

// The raw form: bracketed labels, then `window`, which the model simply continues.
std::string rawPrompt(const PromptContext& context, std::string_view window);

// The labels of the raw form, as a model that echoes its prompt would write them.
inline constexpr std::string_view rawLabels[] = {"[Context",
                                                 "[Now]",
                                                 "[Writer]",
                                                 "[Writer's phrasing]",
                                                 "[Copied]",
                                                 "[Beside it]",
                                                 "[Looked at just before]",
                                                 "[On screen]"};

}  // namespace nimbletype
