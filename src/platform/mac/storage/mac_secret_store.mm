#include "platform/mac/storage/mac_secret_store.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include <memory>
#include <utility>

#include "platform/mac/bridge/cf_ref.h"
#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

using Found = std::expected<std::optional<std::string>, SecretFailure>;
using Changed = std::expected<void, SecretFailure>;
using Query = NSMutableDictionary<NSString*, id>;

template <typename T>
id bridged(T value) {
  return (__bridge id)value;
}

struct Place {
  NSString* service;
  NSString* account;
};

Query* itemFor(const Place& place) {
  return [@{
    bridged(kSecClass) : bridged(kSecClassGenericPassword),
    bridged(kSecAttrService) : place.service,
    bridged(kSecAttrAccount) : place.account,
  } mutableCopy];
}

SecretFailure failureOf(OSStatus status) {
  const bool locked = status == errSecInteractionNotAllowed || status == errSecAuthFailed ||
                      status == errSecInteractionRequired || status == errSecUserCanceled;
  return locked ? SecretFailure::locked : SecretFailure::unavailable;
}

Changed changedBy(OSStatus status) {
  if (status == errSecSuccess) return {};
  return std::unexpected(failureOf(status));
}

// The old interface is the only one that tells without asking the user.
bool isLocked() {
  SecKeychainStatus state = 0;
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
  const OSStatus status = SecKeychainGetStatus(nullptr, &state);
#pragma clang diagnostic pop
  return status == errSecSuccess && (state & kSecUnlockStateStatus) == 0;
}

// A locked Keychain would ask the user for the data, but not for the attributes.
Found find(const Place& place) {
  const bool locked = isLocked();
  Query* query = itemFor(place);
  query[bridged(locked ? kSecReturnAttributes : kSecReturnData)] = @YES;
  OSStatus status = errSecSuccess;
  const auto item = copiedBy<CFTypeRef>(
      [&](CFTypeRef* out) { status = SecItemCopyMatching((__bridge CFDictionaryRef)query, out); });
  if (status == errSecItemNotFound) return std::nullopt;
  if (status != errSecSuccess) return std::unexpected(failureOf(status));
  if (locked) return std::unexpected(SecretFailure::locked);
  NSData* secret = (__bridge NSData*)item.get();
  return std::string(static_cast<const char*>(secret.bytes), secret.length);
}

// An item that is there keeps its place and gets the new secret.
Changed put(const Place& place, NSData* secret) {
  Query* query = itemFor(place);
  NSDictionary* values = @{
    bridged(kSecValueData) : secret,
    bridged(kSecAttrAccessible) : bridged(kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly),
  };
  const OSStatus status = SecItemUpdate((__bridge CFDictionaryRef)query, (__bridge CFDictionaryRef)values);
  if (status != errSecItemNotFound) return changedBy(status);
  query[bridged(kSecAttrLabel)] = [@"Nimbletype: " stringByAppendingString:place.account];
  [query addEntriesFromDictionary:values];
  return changedBy(SecItemAdd((__bridge CFDictionaryRef)query, nullptr));
}

Changed erase(const Place& place) {
  const OSStatus status = SecItemDelete((__bridge CFDictionaryRef)itemFor(place));
  return status == errSecItemNotFound ? Changed() : changedBy(status);
}

// Changes happen in the order in which they were asked for. The Keychain may wait for the user, so never on
// the main thread.
dispatch_queue_t keychainQueue() {
  static const dispatch_queue_t queue =
      dispatch_queue_create("com.moravelle.nimbletype.keychain", DISPATCH_QUEUE_SERIAL);
  return queue;
}

template <typename Answer>
Task start(std::function<Answer()> work, std::function<void(Answer)> done) {
  const auto pending = std::make_shared<std::function<void(Answer)>>(std::move(done));
  dispatch_async(keychainQueue(), ^{
    const auto answer = std::make_shared<Answer>(work());
    dispatch_async(dispatch_get_main_queue(), ^{
      if (const auto handler = std::exchange(*pending, nullptr)) handler(*answer);
    });
  });
  return Task([pending] { *pending = nullptr; });
}

}  // namespace

Task MacSecretStore::read(const std::string& account, ReadHandler done) {
  const Place place{nsString(service_), nsString(account)};
  return start<Found>([place] { return find(place); }, std::move(done));
}

Task MacSecretStore::write(const std::string& account, const std::string& secret, WriteHandler done) {
  const Place place{nsString(service_), nsString(account)};
  NSData* data = [NSData dataWithBytes:secret.data() length:secret.size()];
  return start<Changed>([place, data] { return put(place, data); }, std::move(done));
}

Task MacSecretStore::remove(const std::string& account, WriteHandler done) {
  const Place place{nsString(service_), nsString(account)};
  return start<Changed>([place] { return erase(place); }, std::move(done));
}

}  // namespace nimbletype
