#include "platform/mac/mac_file_store.h"

namespace nimbletype {
namespace {

bool makeFolder(NSURL* folder) {
  return [NSFileManager.defaultManager createDirectoryAtURL:folder
                                withIntermediateDirectories:YES
                                                 attributes:nil
                                                      error:nil];
}

}  // namespace

std::optional<std::string> MacFileStore::read() const {
  NSData* data = [NSData dataWithContentsOfURL:file_];
  if (!data) return std::nullopt;
  return std::string(static_cast<const char*>(data.bytes), data.length);
}

bool MacFileStore::write(const std::string& content) {
  NSData* data = [NSData dataWithBytes:content.data() length:content.size()];
  if (!makeFolder(file_.URLByDeletingLastPathComponent)) return false;
  return [data writeToURL:file_ options:NSDataWritingAtomic error:nil];
}

// An earlier file set aside keeps its name; the next one gets a number.
void MacFileStore::setAside() {
  NSFileManager* files = NSFileManager.defaultManager;
  NSURL* aside = [file_ URLByAppendingPathExtension:@"unreadable"];
  for (int n = 2; [files fileExistsAtPath:aside.path]; ++n)
    aside = [file_ URLByAppendingPathExtension:[NSString stringWithFormat:@"unreadable-%d", n]];
  [files moveItemAtURL:file_ toURL:aside error:nil];
}

NSURL* dataFolder() {
  NSArray<NSURL*>* roots = [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                                inDomains:NSUserDomainMask];
  NSURL* folder = [roots.firstObject URLByAppendingPathComponent:@"Nimbletype" isDirectory:YES];
  if (folder) makeFolder(folder);
  return folder;
}

}  // namespace nimbletype
