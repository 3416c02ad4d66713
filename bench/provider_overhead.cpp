// What an engine that talks to a server adds to the server's own time, from the call to the handler, over the
// client users have and a connection that stays open. The server answers at once and on this machine.
#include <QCoreApplication>

#include "bench/spread.h"
#include "engines/servers/ollama_provider.h"
#include "engines/servers/openai_compatible_provider.h"
#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "tools/stage/servers/loopback_server.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int rounds = 200;
constexpr int unmeasured = 5;  // the first connects

CompletionRequest longRequest() {
  CompletionRequest request;
  request.model = "model";
  request.maxTokens = 24;
  request.stop = {"\n"};
  while (request.rawPrompt.size() < 4000) request.rawPrompt += "Please send me the report for room 12. ";
  return request;
}

void measure(const char* name, LoopbackServer& server, CompletionProvider& provider) {
  Spread overhead;
  for (int i = -unmeasured; i < rounds; ++i) {
    bool answered = false;
    const auto start = Clock::now();
    const auto task =
        provider.complete(longRequest(), {}, [&](const auto& result) { answered = result.has_value(); });
    while (!answered) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const auto spent = Clock::now() - start;
    if (i >= 0) overhead.add(spent - server.timeTaken());
  }
  overhead.print(name);
}

void run() {
  QtMainLoop loop;
  QtHttpClient http;
  LoopbackServer server;
  MemoryDefaultsStore defaults;
  Preferences prefs(defaults);
  MemorySecretStore secrets(loop);
  prefs.ollamaURL.set(server.url());
  prefs.serverURL.set(server.url("/v1"));
  secrets.secrets[OpenAICompatibleProvider::keyAccount] = "sk-key";
  OllamaProvider ollama(http, loop, prefs);
  OpenAICompatibleProvider openAI(http, loop, prefs, secrets);
  Spread::printHead("beyond the server's own time, ms");
  server.willAlwaysAnswer({httpAnswer(200, R"({"response":" I will send it tomorrow."})")});
  measure("Ollama", server, ollama);
  server.willAlwaysAnswer({httpAnswer(200, R"({"choices":[{"text":" I will send it tomorrow."}]})")});
  measure("OpenAI-compatible", server, openAI);
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  nimbletype::run();
}
