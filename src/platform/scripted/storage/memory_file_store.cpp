#include "platform/scripted/storage/memory_file_store.h"

namespace nimbletype {

bool MemoryFileStore::write(const std::string& newContent) {
  if (failsToWrite) return false;
  content = newContent;
  ++writes;
  return true;
}

bool MemoryFileStore::setAside() {
  if (stays) return !content;
  if (content) asides.push_back(*content);
  content.reset();
  return true;
}

bool MemoryFileStore::erase() {
  if (stays) return !content && asides.empty();
  asides.clear();
  content.reset();
  return true;
}

}  // namespace nimbletype
