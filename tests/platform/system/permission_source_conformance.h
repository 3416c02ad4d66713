#pragma once
#include <gtest/gtest.h>

#include "platform/system/permission_source.h"

// What every `PermissionSource` must do, whatever the user has decided. Instantiate with a
// default-constructible harness that has
//   PermissionSource& permissions();
namespace nimbletype {

template <typename Harness>
struct PermissionSourceConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(PermissionSourceConformance);

TYPED_TEST_P(PermissionSourceConformance, AsksWithoutWaitingForTheAnswer) {
  PermissionSource& port = this->permissions();
  int told = 0;
  port.onTrustChange([&] { ++told; });
  port.onTrustChange({});
  const bool before = port.isTrusted();
  port.askForTrust();
  EXPECT_EQ(port.isTrusted(), before);
  const bool granted = port.askForScreenRecording();
  EXPECT_EQ(port.canRecordScreen(), granted);
  EXPECT_EQ(port.askForScreenRecording(), granted) << "when asked twice";
  port.openSettings("no address at all");
  EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(PermissionSourceConformance, AsksWithoutWaitingForTheAnswer);

}  // namespace nimbletype
