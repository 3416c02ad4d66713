#pragma once
#import <ApplicationServices/ApplicationServices.h>

#include <chrono>
#include <span>
#include <vector>

#include "platform/accessibility/accessibility.h"
#include "platform/mac/bridge/cf_ref.h"

namespace nimbletype {

// One batch of messages to one element. All of them share one time-out: each message may take what is left of
// it, and once it is spent nothing more is sent. The element has its full time-out back when the batch ends.
class AXBatch {
 public:
  explicit AXBatch(AXUIElementRef element, double seconds = Accessibility::messagingTimeout);
  ~AXBatch();
  AXBatch(const AXBatch&) = delete;
  AXBatch& operator=(const AXBatch&) = delete;

  std::vector<AttributeValue> read(std::span<const AttributeRead> reads);
  bool write(std::string_view attribute, const AttributeValue& value);

 private:
  bool timeIsLeft();
  void readPlain(std::span<const AttributeRead> reads, std::vector<AttributeValue>& values);
  AttributeValue readSettable(std::string_view attribute);
  AttributeValue readParameterised(const AttributeRead& read);

  AXUIElementRef element_;
  std::chrono::steady_clock::time_point end_;
};

}  // namespace nimbletype
