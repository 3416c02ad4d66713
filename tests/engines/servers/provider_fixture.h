#pragma once
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/settings/preferences.h"
#include "engines/provider/completion_provider.h"
#include "platform/scripted/network/scripted_http_client.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

using Names = std::expected<std::vector<std::string>, ProviderError>;

// A provider between scripted ports, in virtual time.
class ProviderFixture : public testing::Test {
 protected:
  // Longer than any request is waited for.
  static constexpr Milliseconds forLong{60'000};

  template <typename Answer, typename Start>
  Answer answer(Start start) {
    std::optional<Answer> result;
    const Task task = start([&](Answer each) { result = std::move(each); });
    EXPECT_FALSE(result.has_value()) << "answered before its turn";
    loop.advance(forLong);
    return result.value();
  }
  CompletionResult complete(CompletionProvider& provider, const CompletionRequest& request) {
    return answer<CompletionResult>([&](auto done) { return provider.complete(request, {}, done); });
  }
  ProviderStatus status(CompletionProvider& provider) {
    return answer<ProviderStatus>([&](auto done) { return provider.status(done); });
  }
  Names models(CompletionProvider& provider) {
    return answer<Names>([&](auto done) { return provider.models(done); });
  }
  Names alternatives(CompletionProvider& provider, const CompletionRequest& request, int count) {
    return answer<Names>([&](auto done) { return provider.alternatives(request, count, {}, done); });
  }

  static CompletionRequest request() {
    CompletionRequest request;
    request.instructions = "You are the autocomplete";
    request.prompt = "Text typed so far";
    request.rawPrompt = "[Now] Friday\n\nDear Zoë, \"";
    request.maxTokens = 24;
    request.temperature = 0.3;
    request.stop = {"\n\n", "[Context"};
    request.model = "base:1b";
    return request;
  }

  VirtualMainLoop loop;
  ScriptedHttpClient http{loop};
  MemoryDefaultsStore defaults;
  Preferences prefs{defaults};
  MemorySecretStore secrets{loop};
};

}  // namespace nimbletype
