// Takes pictures of suggestions in real applications and puts them on one sheet.
//   tools/stage/with_desktop.sh nimbletype-looks APPLICATION OUT_FOLDER [SCENE...]
//   nimbletype-looks --windows OUT_FOLDER [SUFFIX]      pictures of the application's own windows
//   nimbletype-looks --sheet FOLDER                     all pictures of a folder on one sheet beside it
// A scene is known by the name of its picture; a part of the name stands for all that contain it.
#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>
#include <string_view>

#include "tools/nimbletype-looks/contact_sheet.h"
#include "tools/nimbletype-looks/photo_session.h"
#include "tools/nimbletype-looks/window_pictures.h"
#include "tools/stage/waiting.h"

namespace {

using namespace nimbletype;

struct Order {
  std::string application;
  std::filesystem::path out;
  std::vector<std::string> names;  // empty: all

  bool wants(const std::string& name) const {
    return names.empty() || std::ranges::any_of(names, [&](const std::string& part) {
             return name.find(part) != std::string::npos;
           });
  }
};

bool isInstalled(const std::string& editor) {
  const auto program = editorProgram(editor);
  return program && !QStandardPaths::findExecutable(QString::fromStdString(program->program)).isEmpty();
}

// Whether all that is installed came out.
bool takeAll(const Order& order, std::vector<Photo>& photos) {
  PhotoSession session(order.application);
  bool complete = true;
  for (const PhotoScene& scene : photoScenes()) {
    if (!order.wants(scene.name) || QGuiApplication::screens().size() < scene.screens) continue;
    if (!isInstalled(scene.editor)) {
      std::printf("%s: left out, %s is not installed\n", scene.name, scene.editor);
      continue;
    }
    try {
      photos.push_back({scene.name, session.take(scene)});
      photos.back().picture.save(QString::fromStdString(order.out / (std::string(scene.name) + ".png")));
      std::printf("%s\n", scene.name);
    } catch (const GaveUp& failure) {
      complete = false;
      std::printf("%s: FAILED: %s\n", scene.name, failure.what());
    }
    std::fflush(stdout);
  }
  return complete;
}

// Of all pictures in a folder, by name.
int makeSheet(const std::filesystem::path& folder) {
  std::vector<Photo> photos;
  const QDir files(QString::fromStdString(folder.string()));
  for (const QString& name : files.entryList({"*.png"}, QDir::Files, QDir::Name))
    photos.push_back({name.chopped(4), QImage(files.filePath(name))});
  constexpr int width = 5200;  // those at 200 % are large
  return contactSheet(photos, width).save(files.filePath("../windows.png")) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3)
    return std::fputs(
               "usage: nimbletype-looks APPLICATION OUT_FOLDER [SCENE...]\n"
               "       nimbletype-looks --windows OUT_FOLDER [SUFFIX]\n"
               "       nimbletype-looks --sheet FOLDER\n",
               stderr),
           2;
  const QApplication application(argc, argv);
  if (argv[1] == std::string_view("--windows"))
    return takeWindowPictures(argv[2], argc > 3 ? argv[3] : ""), 0;
  if (argv[1] == std::string_view("--sheet")) return makeSheet(argv[2]);
  giveUpOnSignals();
  const Order order{argv[1], argv[2], {argv + 3, argv + argc}};
  std::filesystem::create_directories(order.out);
  std::vector<Photo> photos;
  const bool complete = takeAll(order, photos);
  if (!contactSheet(photos).save(QString::fromStdString(order.out / "looks.png")))
    return std::fputs("could not write the sheet\n", stderr), 1;
  return complete ? 0 : 1;
}
