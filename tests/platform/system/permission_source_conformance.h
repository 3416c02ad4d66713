#pragma once
#include <gtest/gtest.h>

#include "platform/system/permission_source.h"

// What every `PermissionSource` must do, whatever the user has decided. Instantiate with a
// default-constructible harness that has
//   PermissionSource& permissions();
namespace nimbletype {

template <typename Harness>
class PermissionSourceConformance : public testing::Test {
 protected:
  PermissionSource& source() { return harness_.permissions(); }
  Harness harness_;
};

TYPED_TEST_SUITE_P(PermissionSourceConformance);

TYPED_TEST_P(PermissionSourceConformance, AsksWithoutWaitingForTheAnswer) {
  const bool before = this->source().isTrusted();
  this->source().askForTrust();
  EXPECT_EQ(this->source().isTrusted(), before);
}

TYPED_TEST_P(PermissionSourceConformance, SaysTheSameAboutScreenRecordingWhenAskedTwice) {
  const bool granted = this->source().askForScreenRecording();
  EXPECT_EQ(this->source().canRecordScreen(), granted);
  EXPECT_EQ(this->source().askForScreenRecording(), granted);
}

TYPED_TEST_P(PermissionSourceConformance, LetsItsListenerComeAndGo) {
  int told = 0;
  this->source().onTrustChange([&] { ++told; });
  this->source().onTrustChange({});
  this->source().openSettings("no address at all");
  EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(PermissionSourceConformance, AsksWithoutWaitingForTheAnswer,
                            SaysTheSameAboutScreenRecordingWhenAskedTwice, LetsItsListenerComeAndGo);

}  // namespace nimbletype
