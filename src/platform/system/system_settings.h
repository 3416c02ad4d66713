#pragma once
#include <functional>
#include <optional>

namespace nimbletype {

// What the user has chosen for the whole desktop, as far as it concerns this application. Main thread only.
class SystemSettings {
 public:
  virtual ~SystemSettings() = default;

  // Whether the desktop predicts words inside text fields itself; none where it has no such thing.
  virtual std::optional<bool> predictionsOn() const = 0;
  // Applications follow at their next start. False when it could not be changed.
  virtual bool switchPredictionsOff() = 0;

  // Whether things are to appear at once rather than to move or fade.
  virtual bool reducesMotion() const = 0;
  // Whether windows are to be dark; none where the desktop says nothing.
  virtual std::optional<bool> prefersDark() const = 0;
  // Called after any of the above may have become another one, by adapters that hear of it. One listener; an
  // empty function ends it.
  virtual void onChange(std::function<void()> changed) = 0;
};

}  // namespace nimbletype
