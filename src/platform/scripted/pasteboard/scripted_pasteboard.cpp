#include "platform/scripted/pasteboard/scripted_pasteboard.h"

#include <algorithm>

namespace nimbletype {
namespace {

struct SavedItems : PasteboardContents {
  explicit SavedItems(ScriptedPasteboard::Items saved) : items(std::move(saved)) {}
  ScriptedPasteboard::Items items;
};

}  // namespace

void ScriptedPasteboard::copy(Items items) {
  items_ = std::move(items);
  ours_ = false;
}

const ScriptedPasteboard::Items& ScriptedPasteboard::read() {
  wasRead_ = wasRead_ || ours_;
  return items_;
}

Task ScriptedPasteboard::save(SaveHandler done) {
  const Milliseconds takes = ours_ || items_.empty() ? Milliseconds(0) : ownerTakes;
  return loop_.after(std::min(takes, longestSave), [this, takes, done = std::move(done)] {
    if (takes > longestSave) return done(std::nullopt);
    SavedPasteboard saved{std::make_shared<SavedItems>(items_), 0, 0};
    for (const Item& item : items_) saved.formats += item.size();
    done(std::move(saved));
  });
}

bool ScriptedPasteboard::lend(std::string_view text) {
  ours_ = true;
  items_.clear();
  if (!available) return false;
  items_ = {{{textFormat, std::string(text)}, {passingMark, ""}}};
  lent.emplace_back(text);
  wasRead_ = false;
  return true;
}

Pasteboard::Reading ScriptedPasteboard::reading() const {
  if (!tellsReading) return Reading::unknown;
  return ours_ && !wasRead_ ? Reading::notYet : Reading::done;
}

void ScriptedPasteboard::restore(const SavedPasteboard& saved) {
  items_ = dynamic_cast<const SavedItems&>(*saved.contents).items;
  ours_ = true;
  wasRead_ = true;
}

}  // namespace nimbletype
