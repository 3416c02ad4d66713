#pragma once
#import <AppKit/AppKit.h>

#include <optional>

#include "platform/desktop/workspace.h"

namespace nimbletype {

// An application in the words of the ports; none for nil.
std::optional<RunningApp> described(NSRunningApplication* app);

}  // namespace nimbletype
