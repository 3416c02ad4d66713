#include "platform/mac/system/mac_login_item.h"

#include "platform/mac/bridge/mac_framework.h"
#include "platform/mac/bridge/mac_text.h"
#import "platform/mac/system/app_service_declarations.h"

namespace nimbletype {
namespace {

SMAppService* service() {
  return [NSClassFromString(@"SMAppService") mainAppService];
}

// What the user has switched off in the system's settings is registered still.
bool isSo(bool on, SMAppServiceStatus status) {
  if (status == SMAppServiceStatusRequiresApproval) return false;
  return on == (status == SMAppServiceStatusEnabled);
}

}  // namespace

MacLoginItem::MacLoginItem() {
  loadFramework("ServiceManagement");
}

bool MacLoginItem::isOn() const {
  return service().status == SMAppServiceStatusEnabled;
}

std::expected<void, std::string> MacLoginItem::set(bool on) {
  SMAppService* item = service();
  if (!item) return std::unexpected("ServiceManagement is missing.");
  if (isSo(on, item.status)) return {};
  NSError* error = nil;
  const BOOL done = on ? [item registerAndReturnError:&error] : [item unregisterAndReturnError:&error];
  if (!done) return std::unexpected(utf8String(error.localizedDescription));
  return {};
}

}  // namespace nimbletype
