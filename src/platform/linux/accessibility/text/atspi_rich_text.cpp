#include "platform/linux/accessibility/text/atspi_rich_text.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr char32_t objectCharacter = 0xFFFC;

// A position in the offsets of one element.
struct Target {
  const RichTextNode* node = nullptr;
  std::int64_t offset = 0;
};

const RichTextNode* childAt(const RichTextNode& node, std::int64_t offset) {
  const std::int64_t at = offset - node.start;
  if (at < 0 || at >= std::ssize(node.text) || node.text[static_cast<std::size_t>(at)] != objectCharacter)
    return nullptr;
  const auto index = std::count(node.text.begin(), node.text.begin() + at, objectCharacter);
  return index < std::ssize(node.children) ? &node.children[static_cast<std::size_t>(index)] : nullptr;
}

// Elements tell of a caret inside a child as of one at that child.
Target caretOf(const RichTextNode& node) {
  const RichTextNode* child = childAt(node, node.caret);
  return child && child->caret >= 0 ? caretOf(*child) : Target{&node, node.caret};
}

Target selectionStartOf(const RichTextNode& node) {
  const RichTextNode* child = childAt(node, node.selectionStart);
  return child && child->selectionStart >= 0 ? selectionStartOf(*child) : Target{&node, node.selectionStart};
}

Target selectionEndOf(const RichTextNode& node) {
  const RichTextNode* child = childAt(node, node.selectionEnd - 1);
  return child && child->selectionEnd >= 0 ? selectionEndOf(*child) : Target{&node, node.selectionEnd};
}

}  // namespace

class AtspiRichText::Composer {
 public:
  Composer(AtspiRichText& result, std::vector<Target> targets)
      : text_(result.text_),
        origins_(result.origins_),
        targets_(std::move(targets)),
        found_(targets_.size(), Found{}) {}

  void compose(const RichTextNode& root) {
    add(root);
    closeLine();
    settle();
    origins_.push_back(hidden_.value_or(Origin{}));
  }
  std::int64_t found(std::size_t target) const { return found_[target].at; }

 private:
  struct Found {
    bool waits = false;  // for the next character
    std::int64_t at = 0;
  };

  void add(const RichTextNode& node) {
    std::size_t child = 0;
    for (std::size_t i = 0; i < node.text.size(); ++i) {
      const std::int64_t offset = node.start + static_cast<std::int64_t>(i);
      reach(node, offset);
      const bool isChild = node.text[i] == objectCharacter && child < node.children.size();
      if (isChild)
        addChild(node.children[child++]);
      else
        put(node.text[i], {node.element, offset});
    }
    reach(node, node.start + std::ssize(node.text));
    settle();
  }

  void addChild(const RichTextNode& child) {
    if (child.isBlock) closeLine();
    add(child);
    if (child.isBlock) closeLine();
  }

  void reach(const RichTextNode& node, std::int64_t offset) {
    for (std::size_t i = 0; i < targets_.size(); ++i)
      if (targets_[i].node == &node && targets_[i].offset == offset) found_[i].waits = true;
  }
  void settle() {
    for (Found& found : found_)
      if (found.waits) found = {false, std::ssize(text_)};
  }

  void put(char32_t c, const Origin& origin) {
    openLine();
    settle();
    if (c > 0xFFFF) append(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)), origin);
    append(static_cast<char16_t>(c > 0xFFFF ? 0xDC00 + ((c - 0x10000) & 0x3FF) : c), origin);
  }
  void append(char16_t unit, const Origin& origin) {
    text_.push_back(unit);
    origins_.push_back(origin);
  }

  void openLine() {
    if (isOpen_) return;
    if (hasLines_) append(u'\n', hidden_.value_or(Origin{}));
    hidden_.reset();
    isOpen_ = hasLines_ = true;
    lineStart_ = text_.size();
  }
  void closeLine() {
    if (!isOpen_) return;
    isOpen_ = false;
    if (text_.size() == lineStart_ || text_.back() != u'\n') return;
    hidden_ = origins_.back();
    text_.pop_back();
    origins_.pop_back();
    for (Found& found : found_) found.at = std::min(found.at, std::ssize(text_));
  }

  std::u16string& text_;
  std::vector<Origin>& origins_;
  std::vector<Target> targets_;
  std::vector<Found> found_;
  bool isOpen_ = false, hasLines_ = false;
  std::size_t lineStart_ = 0;
  std::optional<Origin> hidden_;  // the line break that the latest line ended with
};

AtspiRichText::AtspiRichText(const RichTextNode& root) {
  const bool selects = root.selectionStart >= 0 && root.selectionEnd > root.selectionStart;
  const Target caret = caretOf(root);
  Composer composer(
      *this, selects ? std::vector{selectionStartOf(root), selectionEndOf(root)} : std::vector{caret, caret});
  composer.compose(root);
  const auto [from, to] = std::minmax({composer.found(0), composer.found(1)});
  selection_ = {from, to - from};
}

std::string AtspiRichText::text(const TextRange& range) const {
  const std::int64_t from = std::clamp<std::int64_t>(range.location, 0, size());
  const std::int64_t length = std::clamp<std::int64_t>(range.length, 0, size() - from);
  return text::toUtf8(
      std::u16string_view(text_).substr(static_cast<std::size_t>(from), static_cast<std::size_t>(length)));
}

std::optional<AtspiRichText::Place> AtspiRichText::placeOf(const TextRange& range) const {
  const std::int64_t last = range.location + std::max<std::int64_t>(range.length, 1) - 1;
  if (range.location < 0 || last > size()) return std::nullopt;
  const Origin& first = origins_[static_cast<std::size_t>(range.location)];
  const Origin& final = origins_[static_cast<std::size_t>(last)];
  if (!first.element || !sameObject(first.element, final.element)) return std::nullopt;
  return Place{first.element, first.offset, range.length == 0 ? first.offset : final.offset + 1};
}

}  // namespace nimbletype
