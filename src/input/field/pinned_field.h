#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "input/field/ax_element.h"

namespace nimbletype {

// By what an element is known again when the application has replaced it by another.
struct ElementTraits {
  std::string role;
  std::optional<std::string> identifier, title;
};
ElementTraits readTraits(const AXElement& element);
// Whether `other` may stand for an element of these traits: the same role, and no other name.
bool isAlike(const ElementTraits& pinned, const ElementTraits& other);

// The field that the user chose in an application whose word on the focus cannot be relied on.
class PinnedField {
 public:
  void pin(std::int64_t processID, AXElement element);
  void unpin() { *this = PinnedField(); }
  bool isFor(std::int64_t processID) const { return element_ && processID == processID_; }

  // The field while it is there, or else the application's focus if that is one like it, which is the pinned
  // field from then on. None when neither is there, and `searchNote` says so.
  AXElement find(const AXElement& application);
  const std::optional<std::string>& searchNote() const { return searchNote_; }

 private:
  std::int64_t processID_ = 0;
  AXElement element_;
  ElementTraits traits_;
  std::optional<std::string> searchNote_;
};

}  // namespace nimbletype
