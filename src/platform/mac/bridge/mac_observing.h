#pragma once
#import <Foundation/Foundation.h>

#include <functional>

#include "platform/system/task.h"

namespace nimbletype {

// Both call back on the thread where it happens, the main one for all that AppKit tells, until the task is
// destroyed; the callback may do so itself.
[[nodiscard]] Task observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                       std::function<void(NSNotification*)> posted);
[[nodiscard]] Task observeValue(NSObject* object, NSString* keyPath, std::function<void()> changed);

}  // namespace nimbletype
