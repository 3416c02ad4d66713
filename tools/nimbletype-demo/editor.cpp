#include "tools/nimbletype-demo/editor.h"

#include <fstream>

#include "tools/nimbletype-demo/waiting.h"

namespace nimbletype {
namespace {

// The title need not tell of a scratch folder.
constexpr const char* mousepadSettings = "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n";
// Wide enough for a sentence, small enough to be read in a page's picture.
constexpr QSize windowSize(760, 200);
constexpr const char* page =
    "<!doctype html><title>letter</title><body style='margin:8px'><textarea autofocus spellcheck=false "
    "style='width:95vw;height:85vh;font:15px DejaVu Sans'></textarea>";

std::vector<std::string> commandOf(const std::string& program, const std::string& file) {
  if (program == "mousepad") return {program, "--disable-server", file};
  if (program == "featherpad") return {program, "--standalone", file};
  // Its sandbox and root exclude each other.
  if (program == "chromium")
    return {program,
            "--no-sandbox",
            "--no-first-run",
            "--disable-gpu",
            "--password-store=basic",
            "--app=file://" + file + ".html",
            "--user-data-dir=" + file + ".profile"};
  throw GaveUp("knows mousepad, featherpad and chromium, not " + program);
}

ChildProcess::Start startOf(const std::string& program, const std::filesystem::path& folder) {
  const std::string home = folder / "editor-home";
  const std::filesystem::path settings = home + "/.config/glib-2.0/settings";
  std::filesystem::create_directories(settings);
  std::ofstream(settings / "keyfile") << mousepadSettings;
  std::ofstream(folder / "letter.txt").flush();
  std::ofstream(folder / "letter.txt.html") << page;
  return {commandOf(program, folder / "letter.txt"),
          {{"HOME", home},
           {"XDG_CONFIG_HOME", home + "/.config"},
           {"XDG_DATA_HOME", home + "/.local/share"},
           {"XDG_CACHE_HOME", home + "/.cache"},
           {"GSETTINGS_BACKEND", "keyfile"}},
          folder / "editor.log"};
}

}  // namespace

Editor::Editor(const std::string& program, const std::filesystem::path& folder, const DesktopWindows& windows)
    : windows_(windows), program_(program), process_(startOf(program, folder)) {
  awaitWindow();
  waitFor("a focused text field in " + program, [this] {
    field_ = focusedField();
    return field_ != nullptr;
  });
}

void Editor::awaitWindow() {
  waitFor("the window of " + program_, [this] {
    if (!process_.isRunning()) throw GaveUp(program_ + " ended; is it installed?");
    const auto found = windows_.windowOf(static_cast<std::uint32_t>(processID()));
    window_ = found.value_or(XCB_WINDOW_NONE);
    return found.has_value();
  });
  windows_.resize(window_, windowSize);
  waitFor("the new size of " + program_, [this] {
    const auto place = windows_.placeOf(window_);
    return place && place->width() == windowSize.width();  // some need more height
  });
}

ObjectRef Editor::focusedField() {
  const ObjectRef application = accessibility_.application(processID());
  if (!application) return nullptr;
  if (program_ == "chromium") accessibility_.write(application, "AXManualAccessibility", true);
  const AttributeRead focus{"AXFocusedUIElement", {}};
  const auto found = accessibility_.read(application, std::span(&focus, 1)).at(0);
  const auto* field = std::get_if<ObjectRef>(&found);
  if (!field || !*field) return nullptr;
  const AttributeRead role{"AXRole", {}};
  const auto value = accessibility_.read(*field, std::span(&role, 1)).at(0);
  const auto* name = std::get_if<std::string>(&value);
  return name && *name == "AXTextArea" ? *field : nullptr;
}

std::string Editor::text() {
  const AttributeRead read{"AXValue", {}};
  const auto value = accessibility_.read(field_, std::span(&read, 1)).at(0);
  const auto* text = std::get_if<std::string>(&value);
  return text ? *text : std::string();
}

QImage Editor::picture() const {
  const auto frame = windows_.frameOf(window_);
  return frame ? windows_.screen(*frame) : QImage();
}

QPoint Editor::corner() const {
  const auto frame = windows_.frameOf(window_);
  return frame ? frame->topLeft() : QPoint();
}

}  // namespace nimbletype
