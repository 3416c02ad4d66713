#include "platform/mac/bridge/mac_observing.h"

#include <utility>

@interface NimbletypeValueObserver : NSObject
@property(nonatomic) std::function<void()> changed;
@end

@implementation NimbletypeValueObserver
- (void)observeValueForKeyPath:(NSString*)__unused keyPath
                      ofObject:(id)__unused object
                        change:(NSDictionary*)__unused change
                       context:(void*)__unused context {
  const auto call = _changed;
  call();
}
@end

namespace nimbletype {

Task observeNotification(NSNotificationCenter* center, NSNotificationName name,
                         std::function<void(NSNotification*)> posted) {
  id<NSObject> registration = [center addObserverForName:name
                                                  object:nil
                                                   queue:nil
                                              usingBlock:^(NSNotification* notification) {
                                                const auto call = posted;
                                                call(notification);
                                              }];
  return Task([center, registration] { [center removeObserver:registration]; });
}

Task observeValue(NSObject* object, NSString* keyPath, std::function<void()> changed) {
  NimbletypeValueObserver* observer = [[NimbletypeValueObserver alloc] init];
  observer.changed = std::move(changed);
  [object addObserver:observer forKeyPath:keyPath options:0 context:nullptr];
  return Task([object, keyPath, observer] { [object removeObserver:observer forKeyPath:keyPath]; });
}

}  // namespace nimbletype
