#pragma once
#include <QImage>
#include <string>

#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tools/nimbletype-looks/scenes.h"
#include "tools/stage/scene/scripted_model.h"

namespace nimbletype {

// Plays scenes with the real application and takes their pictures.
class PhotoSession {
 public:
  explicit PhotoSession(std::string application) : application_(std::move(application)) {}

  // The window with what surrounds it, the suggestion standing in it; throws when it does not come to that.
  QImage take(const PhotoScene& scene);

 private:
  std::string application_;
  VirtualMainLoop unused_;  // what is lent is never saved
  X11Pasteboard clipboard_{unused_};
};

}  // namespace nimbletype
