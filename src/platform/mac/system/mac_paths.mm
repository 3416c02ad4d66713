#include "platform/mac/system/mac_paths.h"

#import <Foundation/Foundation.h>

namespace nimbletype {

std::filesystem::path dataFolder() {
  NSFileManager* files = NSFileManager.defaultManager;
  NSArray<NSURL*>* roots = [files URLsForDirectory:NSApplicationSupportDirectory inDomains:NSUserDomainMask];
  NSURL* folder = [roots.firstObject URLByAppendingPathComponent:@"Nimbletype" isDirectory:YES];
  if (!folder) return {};
  [files createDirectoryAtURL:folder withIntermediateDirectories:YES attributes:nil error:nil];
  return folder.fileSystemRepresentation;
}

}  // namespace nimbletype
