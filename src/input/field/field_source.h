#pragma once
#include <functional>
#include <optional>
#include <string>

#include "core/settings/settings_types.h"
#include "input/field/field_snapshot.h"

namespace nimbletype {

// What happened to the focused field: another application, another field or window, or its text or selection.
enum class Change { app, focus, value };

// Where snapshots come from and accepted text goes. Main thread only.
class FieldSource {
 public:
  virtual ~FieldSource() = default;
  // Reads the focused field now; none when there is no field to read, and `whyNoField` says why.
  virtual std::optional<FieldSnapshot> snapshot() = 0;
  virtual std::optional<std::string> whyNoField() const = 0;
  virtual void onChange(std::function<void(Change)> changed) = 0;
  // Inserts at the caret, replacing the selection. The field reports the change later.
  virtual void insert(const std::string& text, InsertionMethod method) = 0;
  // Deletes user-perceived characters before the caret.
  virtual void deleteBackwards(int count) = 0;
};

}  // namespace nimbletype
