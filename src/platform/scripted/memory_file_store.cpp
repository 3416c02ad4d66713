#include "platform/scripted/memory_file_store.h"

namespace nimbletype {

bool MemoryFileStore::write(const std::string& newContent) {
  if (failsToWrite) return false;
  content = newContent;
  ++writes;
  return true;
}

void MemoryFileStore::setAside() {
  if (content) asides.push_back(*content);
  content.reset();
}

}  // namespace nimbletype
