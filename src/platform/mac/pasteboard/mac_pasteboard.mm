#include "platform/mac/pasteboard/mac_pasteboard.h"

#include <utility>

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

NSString* const transientType = @"org.nspasteboard.TransientType";

struct SavedItems : PasteboardContents {
  NSMutableArray<NSPasteboardItem*>* items = [NSMutableArray array];
};

// The text first: the application that promised the data makes it now, and may take its time.
NSArray<NSPasteboardType>* textFirst(NSArray<NSPasteboardType>* types) {
  if (![types containsObject:NSPasteboardTypeString]) return types;
  NSMutableArray<NSPasteboardType>* sorted = [types mutableCopy];
  [sorted removeObject:NSPasteboardTypeString];
  [sorted insertObject:NSPasteboardTypeString atIndex:0];
  return sorted;
}

}  // namespace

std::optional<SavedPasteboard> MacPasteboard::read() {
  const MonotonicTime end = loop_.now() + longestSave;
  const auto contents = std::make_shared<SavedItems>();
  SavedPasteboard saved{contents, 0, 0};
  std::size_t room = largestSave;
  for (NSPasteboardItem* item in NSPasteboard.generalPasteboard.pasteboardItems) {
    NSPasteboardItem* copy = [NSPasteboardItem new];
    for (NSPasteboardType type in textFirst(item.types)) {
      NSData* data = loop_.now() < end ? [item dataForType:type] : nil;
      const bool kept = data && data.length <= room && [copy setData:data forType:type];
      if (kept) room -= data.length;
      ++(kept ? saved.formats : saved.leftOut);
    }
    if (copy.types.count > 0) [contents->items addObject:copy];
  }
  if (saved.formats == 0 && saved.leftOut > 0) return std::nullopt;
  return saved;
}

Task MacPasteboard::save(SaveHandler done) {
  return loop_.after(Milliseconds(0), [this, done = std::move(done)] { done(read()); });
}

bool MacPasteboard::lend(std::string_view text) {
  NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
  [pasteboard clearContents];
  const bool written = [pasteboard setString:nsString(text) forType:NSPasteboardTypeString] &&
                       [pasteboard setData:[NSData data] forType:transientType];
  ownChange_ = pasteboard.changeCount;
  return written;
}

bool MacPasteboard::isOurs() {
  return NSPasteboard.generalPasteboard.changeCount == ownChange_;
}

// An item belongs to one pasteboard write for ever, so what is written is a copy.
void MacPasteboard::restore(const SavedPasteboard& saved) {
  NSMutableArray<NSPasteboardItem*>* copies = [NSMutableArray array];
  for (NSPasteboardItem* item in dynamic_cast<const SavedItems&>(*saved.contents).items) {
    NSPasteboardItem* copy = [NSPasteboardItem new];
    for (NSPasteboardType type in item.types) [copy setData:[item dataForType:type] forType:type];
    [copies addObject:copy];
  }
  NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
  [pasteboard clearContents];
  if (copies.count > 0) [pasteboard writeObjects:copies];
  ownChange_ = pasteboard.changeCount;
}

}  // namespace nimbletype
