#include "platform/mac/storage/mac_defaults_store.h"

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

// A boolean is a number to Objective-C; only Core Foundation tells the three kinds apart.
DefaultsValue numberValue(NSNumber* number) {
  if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
    return static_cast<bool>(number.boolValue);
  if (CFNumberIsFloatType((__bridge CFNumberRef)number)) return number.doubleValue;
  return static_cast<std::int64_t>(number.longLongValue);
}

struct ToObject {
  id operator()(bool value) const { return value ? @YES : @NO; }
  id operator()(std::int64_t value) const { return @(static_cast<long long>(value)); }
  id operator()(double value) const { return @(value); }
  id operator()(const std::string& value) const { return nsString(value); }
  id operator()(const DataValue& value) const {
    return [NSData dataWithBytes:value.bytes.data() length:value.bytes.size()];
  }
};

// A domain's own application is not given it by name.
NSUserDefaults* defaultsOf(NSString* domain) {
  if ([domain isEqualToString:NSBundle.mainBundle.bundleIdentifier])
    return NSUserDefaults.standardUserDefaults;
  return [[NSUserDefaults alloc] initWithSuiteName:domain];
}

}  // namespace

MacDefaultsStore::MacDefaultsStore(NSString* domain)
    : domain_([domain copy]), defaults_(defaultsOf(domain)) {}

std::optional<DefaultsValue> MacDefaultsStore::get(std::string_view key) const {
  id object = [defaults_ objectForKey:nsString(key)];
  if ([object isKindOfClass:NSNumber.class]) return numberValue(object);
  if ([object isKindOfClass:NSString.class]) return utf8String(object);
  if (![object isKindOfClass:NSData.class]) return std::nullopt;
  NSData* data = object;
  return DataValue{std::string(static_cast<const char*>(data.bytes), data.length)};
}

void MacDefaultsStore::set(std::string_view key, const DefaultsValue& value) {
  [defaults_ setObject:std::visit(ToObject{}, value) forKey:nsString(key)];
}

void MacDefaultsStore::remove(std::string_view key) {
  [defaults_ removeObjectForKey:nsString(key)];
}

std::vector<std::string> MacDefaultsStore::keys() const {
  std::vector<std::string> keys;
  for (NSString* key in [defaults_ persistentDomainForName:domain_]) keys.push_back(utf8String(key));
  return keys;
}

}  // namespace nimbletype
