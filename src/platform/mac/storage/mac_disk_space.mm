#include "platform/mac/storage/mac_disk_space.h"

#import <Foundation/Foundation.h>

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

std::optional<std::int64_t> capacity(NSURL* place, NSURLResourceKey key) {
  NSNumber* bytes = nil;
  if (![place getResourceValue:&bytes forKey:key error:nil] || !bytes) return std::nullopt;
  return bytes.longLongValue;
}

}  // namespace

// Volumes that are not the system's own have nothing to clear away and answer zero to the first question.
std::optional<std::int64_t> MacDiskSpace::available(const std::filesystem::path& folder) const {
  NSURL* place = [NSURL fileURLWithPath:nsString(nearestExisting(folder).string()) isDirectory:YES];
  const auto important = capacity(place, NSURLVolumeAvailableCapacityForImportantUsageKey);
  if (important && *important > 0) return important;
  return capacity(place, NSURLVolumeAvailableCapacityKey);
}

}  // namespace nimbletype
