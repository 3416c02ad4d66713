#pragma once
#include <cstdint>
#include <map>
#include <memory>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// `Accessibility` over the AT-SPI bus, in the core's terms: roles and attributes by the names the core knows,
// text offsets in UTF-16 units whatever the toolkit counts, screen pixels as points, font sizes in the same
// points. Needs a GLib main loop on the default context, which Qt's event loop is.
class AtspiAccessibility final : public Accessibility {
 public:
  // Connects to the accessibility bus and turns accessibility on. Fonts of applications are sized in
  // typographic points, which the desktop draws at this many dots per inch.
  explicit AtspiAccessibility(double fontDotsPerInch = 96);
  ~AtspiAccessibility() override;

  ObjectRef application(std::int64_t processID) override;
  std::vector<AttributeValue> read(const ObjectRef& element, std::span<const AttributeRead> reads) override;
  std::vector<AttributeValue> readBriefly(const ObjectRef& element,
                                          std::span<const AttributeRead> reads) override;
  bool write(const ObjectRef& element, std::string_view attribute, const AttributeValue& value) override;
  std::optional<Task> observe(std::int64_t processID, Notification notify) override;
  std::optional<Task> watch(std::int64_t processID, const ObjectRef& element) override;
  bool isTrusted() override;

 private:
  std::vector<AttributeValue> readWithin(double seconds, const ObjectRef& element,
                                         std::span<const AttributeRead> reads);

  class Impl;
  std::shared_ptr<Impl> impl_;  // tasks hold it weakly
};

}  // namespace nimbletype
