#pragma once

namespace nimbletype {

// How an engine wants its prompt: `instructions` and `prompt`, or `rawPrompt` to be continued.
enum class PromptStyle { instruct, raw };

}  // namespace nimbletype
