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

// Asks providers and waits for what they answer.
class AskingTest : public testing::Test {
 protected:
  virtual void await(const std::function<bool()>& answered) = 0;

  template <typename Answer, typename Start>
  Answer answer(Start start) {
    std::optional<Answer> result;
    const Task task = start([&](Answer each) { result = std::move(each); });
    EXPECT_FALSE(result.has_value()) << "answered before its turn";
    await([&] { return result.has_value(); });
    return std::move(result.value());
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

  static CompletionRequest request(std::string prompt, int maxTokens) {
    CompletionRequest request;
    request.rawPrompt = std::move(prompt);
    request.maxTokens = maxTokens;
    request.temperature = 0;
    request.model = "starter";
    return request;
  }
};

// A provider between scripted ports, in virtual time.
class ProviderFixture : public AskingTest {
 protected:
  // Longer than any request is waited for.
  static constexpr Milliseconds forLong{60'000};
  void await(const std::function<bool()>&) override { loop.advance(forLong); }

  static CompletionRequest request() {
    auto request = AskingTest::request("[Now] Friday\n\nDear Zoë, \"", 24);
    request.instructions = "You are the autocomplete";
    request.prompt = "Text typed so far";
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
