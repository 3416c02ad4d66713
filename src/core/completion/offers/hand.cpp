#include "core/completion/offers/hand.h"

#include <array>

#include "core/rules/rule_types.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t anchorCharacters = 48;
// An application shows an insertion soon, but not at once.
constexpr std::array readAgainAfter{Milliseconds{30}, Milliseconds{25}, Milliseconds{60}};

}  // namespace

void Hand::setSource(FieldSource& source, Read read) {
  source_ = &source;
  read_ = std::move(read);
}

void Hand::put(const Taken& taken, const FieldSnapshot& snapshot, InsertionMethod method) {
  const auto& [replaced, text] = taken.swap;
  remember(taken.swap, snapshot);
  if (!replaced.empty()) source_->deleteBackwards(static_cast<int>(text::characterCount(replaced)));
  source_->insert(text, method);
  if (!taken.counted.empty()) {
    s_.session.accepted();
    s_.stats.recordAccept(taken.counted, appRuleKey(snapshot.bundleID), s_.loop.wallNow());
  }
  if (taken.isAll) readAgain(0);
}

// What the field has not shown yet comes before what goes in now.
void Hand::remember(const Swap& swap, const FieldSnapshot& snapshot) {
  const bool continues = isSettling() && !hasArrived_ && !isForgotten_ && swap.replaced.empty() &&
                         latest_->fieldKey == snapshot.fieldKey;
  if (!continues) {
    const std::string_view before(snapshot.before);
    const std::string_view kept = before.substr(0, before.size() - swap.replaced.size());
    latest_ = {snapshot.fieldKey, std::string(text::lastCharacters(kept, anchorCharacters)), {}, {}};
  }
  latest_->text += swap.text;
  latest_->time = s_.loop.now();
  hasArrived_ = isForgotten_ = false;
}

void Hand::readAgain(std::size_t attempt) {
  if (attempt >= readAgainAfter.size()) return;
  readAgain_ = s_.loop.after(readAgainAfter[attempt], [this, attempt] {
    if (const auto snapshot = source_->snapshot())
      read_(*snapshot);
    else
      readAgain(attempt + 1);
  });
}

void Hand::follow(const FieldSnapshot& snapshot) {
  if (!latest_ || isForgotten_) return;
  const bool isThere = isEcho(*latest_, snapshot);
  const bool isOnItsWay = !hasArrived_ && isSettling() && isArriving(*latest_, snapshot);
  hasArrived_ |= isThere;
  isForgotten_ = !isThere && !isOnItsWay && !isCaretLate(snapshot);
}

bool Hand::isOwn(const FieldSnapshot& snapshot) const {
  return isSettling() || (latest_ && !isForgotten_ && isEcho(*latest_, snapshot));
}

std::optional<Milliseconds> Hand::patience() const {
  if (!isForgotten_ || !isSettling()) return std::nullopt;
  return std::chrono::ceil<Milliseconds>(latest_->time + Injection::settling - s_.loop.now());
}

bool Hand::isCaretLate(const FieldSnapshot& snapshot) const {
  return isSettling() && caretLagsBehind(*latest_, snapshot);
}

}  // namespace nimbletype
