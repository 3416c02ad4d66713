#pragma once
#include <map>
#include <memory>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

class AXProcessObserver;

// The port over AXUIElement and AXObserver.
class MacAccessibility final : public Accessibility {
 public:
  MacAccessibility();
  ObjectRef application(std::int64_t processID) override;
  std::vector<AttributeValue> read(const ObjectRef& element, std::span<const AttributeRead> reads) override;
  std::vector<AttributeValue> readBriefly(const ObjectRef& element,
                                          std::span<const AttributeRead> reads) override;
  bool write(const ObjectRef& element, std::string_view attribute, const AttributeValue& value) override;
  [[nodiscard]] std::optional<Task> observe(std::int64_t processID, Notification notify) override;
  [[nodiscard]] std::optional<Task> watch(std::int64_t processID, const ObjectRef& element) override;
  std::optional<MarkerPair> endsOf(const ObjectRef& markerRange) override;
  ObjectRef markerRange(const MarkerPair& ends) override;
  bool isTrusted() override;

 private:
  std::map<std::int64_t, std::weak_ptr<AXProcessObserver>> observers_;  // owned by the tasks handed out
};

}  // namespace nimbletype
