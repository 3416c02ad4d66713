#include "engines/provider/separate_completions.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "text/text.h"

namespace nimbletype {
namespace {

// High enough that the same prompt is rarely continued the same way twice.
constexpr double daringTemperature = 0.8;

struct Collection {
  std::vector<Task> requests;
  std::vector<CompletionResult> results;  // without a text until they are there
  std::size_t missing = 0;
  CompletionProvider::TextsHandler grow;
  CompletionProvider::AlternativesHandler done;

  void take(std::size_t index, CompletionResult result) {
    const bool isText = result.has_value();
    results[index] = std::move(result);
    if (--missing > 0) {
      if (grow && isText) grow(*texts());
      return;
    }
    // The handler may destroy this.
    const auto handler = std::move(done);
    handler(texts());
  }

  std::expected<std::vector<std::string>, ProviderError> texts() const {
    std::vector<std::string> all;
    for (const auto& result : results)
      if (result) all.push_back(result->text);
    if (all.empty()) return std::unexpected(results.front().error());
    return distinctTexts(all);
  }
};

}  // namespace

Task separateCompletions(CompletionProvider& provider, const CompletionRequest& request, int count,
                         CompletionProvider::TextsHandler grow,
                         CompletionProvider::AlternativesHandler done) {
  const auto wanted = static_cast<std::size_t>(std::max(count, 2));
  const auto collection = std::make_shared<Collection>();
  collection->results.resize(wanted);
  collection->missing = wanted;
  collection->grow = std::move(grow);
  collection->done = std::move(done);
  auto each = request;
  for (std::size_t i = 0; i < wanted; ++i) {
    // The requests die with the collection, so they may point at it.
    collection->requests.push_back(
        provider.complete(each, {}, [collection = collection.get(), i](CompletionResult result) {
          collection->take(i, std::move(result));
        }));
    each.temperature = daringTemperature;
  }
  return Task([collection] { collection->requests.clear(); });
}

std::vector<std::string> distinctTexts(const std::vector<std::string>& texts) {
  std::vector<std::string> distinct;
  for (const auto& text : texts)
    if (!text::isBlank(text) && std::ranges::find(distinct, text) == distinct.end()) distinct.push_back(text);
  return distinct;
}

}  // namespace nimbletype
