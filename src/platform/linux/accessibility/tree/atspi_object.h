#pragma once
#include <memory>
#include <string>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// One accessible: the application's name on the accessibility bus and the object's path there. Both stay the
// same for the life of the thing.
class AtspiObject final : public AccessibilityObject {
 public:
  AtspiObject(std::string bus, std::string path) : bus_(std::move(bus)), path_(std::move(path)) {}
  const std::string& bus() const { return bus_; }
  const std::string& path() const { return path_; }
  bool isApplication() const { return path_ == rootPath; }
  std::uint64_t hash() const override;
  bool same(const AccessibilityObject& other) const override;
  bool operator==(const AtspiObject&) const;

  static constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";

 private:
  std::string bus_, path_;
};

using AtspiRef = std::shared_ptr<const AtspiObject>;

// The object behind a core's reference; none when it is not one of ours.
AtspiRef atspiRef(const ObjectRef& ref);

inline bool sameObject(const AtspiRef& a, const AtspiRef& b) {
  return a && b ? *a == *b : !a && !b;
}

}  // namespace nimbletype
