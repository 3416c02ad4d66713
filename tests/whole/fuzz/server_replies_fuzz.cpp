// Whatever a server answers, reading it ends in a value or an error.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engines/servers/ollama_messages.h"
#include "engines/servers/openai_messages.h"
#include "engines/servers/server_reply.h"
#include "text/text.h"

namespace {

// What a reader makes of the bytes goes on to be shown, so it must be text.
void expectText(const std::string& text) {
  if (!nimbletype::text::isValidUtf8(text)) __builtin_trap();
}

void expectTexts(const std::expected<std::vector<std::string>, nimbletype::ProviderError>& texts) {
  if (!texts) return expectText(texts.error().message);
  for (const auto& text : *texts) expectText(text);
}

void expectText(const nimbletype::CompletionResult& completion) {
  expectText(completion ? completion->text : completion.error().message);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nimbletype;
  const std::string_view body(reinterpret_cast<const char*>(data), size);
  expectText(ollama::decodeGenerateReply(body));
  expectTexts(ollama::decodeTagsReply(body));
  expectText(openai::decodeCompletionReply(body));
  expectTexts(openai::decodeModelsReply(body));
  const auto message = server::statusMessage(500, body, body.substr(0, size / 3));
  expectText(message);
  return 0;
}
