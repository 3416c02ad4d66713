#include "platform/mac/bridge/mac_framework.h"

#import <Foundation/Foundation.h>
#include <dlfcn.h>

namespace nimbletype {

bool loadFramework(const char* name) {
  NSString* path = [NSString stringWithFormat:@"/System/Library/Frameworks/%s.framework/%s", name, name];
  return dlopen(path.fileSystemRepresentation, RTLD_LAZY) != nullptr;
}

}  // namespace nimbletype
