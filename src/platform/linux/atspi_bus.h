#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/atspi_object.h"
#include "platform/linux/dbus_batch.h"

namespace nimbletype {

// How an application's toolkit counts text offsets.
enum class OffsetUnit { codePoint, utf16 };

// The connection to the accessibility bus, and what is known of the applications on it. Connecting turns
// accessibility on for the session.
class AtspiBus {
 public:
  AtspiBus();
  ~AtspiBus();
  AtspiBus(const AtspiBus&) = delete;
  AtspiBus& operator=(const AtspiBus&) = delete;

  bool isOpen() const;
  GDBusConnection* connection() const { return connection_.get(); }

  // Process behind a bus name; none when it is gone. Asked of the bus itself, never of the application.
  std::optional<std::int64_t> processOf(const std::string& busName);
  // The bus name of the process's application; none when it is not (yet) there.
  std::optional<std::string> applicationOf(std::int64_t processID, Deadline deadline);
  OffsetUnit offsetUnit(const std::string& busName, Deadline deadline);

 private:
  void listenTo(const char* event);
  std::vector<std::string> applications(Deadline deadline) const;

  GObjectPtr<GDBusConnection> connection_;
  std::map<std::string, std::optional<std::int64_t>> processes_;
  std::map<std::string, OffsetUnit> units_;
};

}  // namespace nimbletype
