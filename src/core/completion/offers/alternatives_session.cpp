#include "core/completion/offers/alternatives_session.h"

#include <algorithm>
#include <utility>

namespace nimbletype {
namespace {

// When too little of what came is different, more is dared.
constexpr double daringTemperature = 1.2;

}  // namespace

void AlternativesSession::open(Order order, Told told) {
  close();
  const std::string before = order.snapshot.before;
  panel_.show({}, before, std::string(wordPrefixOf(before)), order.caretRect);
  panel_.setHint("Looking for other suggestions", true);
  order_.emplace(std::move(order));
  told_ = std::move(told);
  askedAgain_ = false;
  timer_ = loop_.after(Generation::longest, [this] {
    request_.cancel();
    finish("The model took too long to answer");
  });
  ask(order_->request.temperature);
}

// The engine may answer before it returns.
void AlternativesSession::ask(double temperature) {
  CompletionRequest request = order_->request;
  request.temperature = temperature;
  request_ = order_->provider.alternatives(
      request, asked, [this](const auto& soFar) { add(soFar); },
      [this](auto replies) { take(std::move(replies)); });
}

// Rows that are there keep their places.
void AlternativesSession::add(const std::vector<std::string>& replies) {
  std::vector<std::string> items = panel_.model()->items;
  const std::size_t had = items.size();
  for (const std::string& reply : replies) items.push_back(order_->clean(reply));
  items = differentOnes(items);
  const bool isNews = items.size() > had;
  panel_.setItems(std::move(items));
  if (isNews && told_) told_(had == 0 ? News::first : News::more, {});
}

void AlternativesSession::take(std::expected<std::vector<std::string>, ProviderError> replies) {
  if (!replies) return finish(replies.error().message);
  add(*replies);
  const bool tooFew = panel_.model()->items.size() < enough && !replies->empty();
  if (!tooFew || std::exchange(askedAgain_, true)) return finish("There are no other suggestions here");
  // In a later turn: this one may still be within the first question.
  again_ =
      loop_.after(Milliseconds(0), [this] { ask(std::max(daringTemperature, order_->request.temperature)); });
}

// The reason matters only where nothing came.
void AlternativesSession::finish(const std::string& reason) {
  timer_.cancel();
  if (!isOpen()) return;
  const bool empty = panel_.model()->items.empty();
  panel_.setHint(empty ? std::optional(reason) : std::nullopt);
  if (empty && told_) told_(News::none, reason);
}

void AlternativesSession::close() {
  request_.cancel();
  again_.cancel();
  timer_.cancel();
  panel_.hide();
  order_.reset();
}

bool AlternativesSession::fits(const FieldSnapshot& snapshot) const {
  return isOpen() && snapshot.fieldKey == order_->snapshot.fieldKey &&
         snapshot.before == panel_.model()->anchorBefore && snapshot.selectionLength == 0;
}

}  // namespace nimbletype
