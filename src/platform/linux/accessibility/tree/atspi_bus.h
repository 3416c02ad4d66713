#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/accessibility/tree/atspi_object.h"
#include "platform/linux/bus/dbus_batch.h"

namespace nimbletype {

// How an application's toolkit counts text offsets.
enum class OffsetUnit { codePoint, utf16 };

// What has to be known of an application to understand what it tells.
struct AtspiToolkit {
  OffsetUnit unit = OffsetUnit::utf16;
  bool insertsBytes = false;  // the length of what is to be inserted, whatever its offsets count
  bool isGtk = false, isQt = false;
  bool hasPages = false;  // a browser
  bool isOffice = false;  // LibreOffice draws inside GTK windows and leaves their menu bar out of account
};

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
  AtspiToolkit toolkit(const std::string& busName, Deadline deadline);

 private:
  void listenTo(const char* event);
  std::vector<std::string> applications(Deadline deadline) const;

  GObjectPtr<GDBusConnection> connection_;
  std::map<std::string, std::optional<std::int64_t>> processes_;
  std::map<std::string, AtspiToolkit> toolkits_;
};

}  // namespace nimbletype
