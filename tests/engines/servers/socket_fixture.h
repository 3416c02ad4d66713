#pragma once
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/settings/preferences.h"
#include "engines/provider/completion_provider.h"
#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_secret_store.h"

namespace nimbletype {

using Names = std::expected<std::vector<std::string>, ProviderError>;

// Providers over the client users have, talking to real servers.
class SocketFixture : public testing::Test {
 protected:
  // `what` is said when it does not happen.
  static void runUntil(const std::string& what, const std::function<bool()>& happened) {
    const QDeadlineTimer patience(60'000);
    while (!happened() && !patience.hasExpired())
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    ASSERT_TRUE(happened()) << "waited for " << what;
  }
  template <typename Answer, typename Start>
  Answer answer(Start start) {
    std::optional<Answer> result;
    const Task task = start([&](Answer each) { result = std::move(each); });
    runUntil("an answer", [&] { return result.has_value(); });
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

  static CompletionRequest request(std::string prompt, int maxTokens = 5) {
    CompletionRequest request;
    request.rawPrompt = std::move(prompt);
    request.maxTokens = maxTokens;
    request.temperature = 0;
    request.model = "starter";
    return request;
  }

  QtMainLoop loop;
  QtHttpClient http;
  MemoryDefaultsStore defaults;
  Preferences prefs{defaults};
  MemorySecretStore secrets{loop};
};

}  // namespace nimbletype
