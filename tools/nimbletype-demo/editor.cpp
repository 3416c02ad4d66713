#include "tools/nimbletype-demo/editor.h"

#include "text/right_to_left.h"
#include "tools/nimbletype-demo/waiting.h"

namespace nimbletype {
namespace {

// Wide enough for a sentence, small enough to be read in a page's picture.
constexpr QSize windowSize(760, 200), pageWindowSize(900, 600);

EditorProgram knownProgram(const std::string& name) {
  if (auto found = editorProgram(name)) return *found;
  std::string names;
  for (const std::string& each : editorNames()) names += " " + each;
  throw GaveUp("knows these fields:" + names + "; not " + name);
}

}  // namespace

std::string withPlainBlanks(std::string text) {
  constexpr std::string_view noBreak = "\u00a0";
  for (auto at = text.find(noBreak); at != std::string::npos; at = text.find(noBreak, at))
    text.replace(at, noBreak.size(), " ");
  return text;
}

Editor::Editor(const std::string& name, const std::filesystem::path& folder, const DesktopWindows& windows,
               const EditorLook& look)
    : windows_(windows),
      program_(knownProgram(name)),
      process_(dressed(startOf(program_, folder), program_, look, folder)) {
  awaitWindow();
  waitFor("a focused text field in " + name, [this] { return findField(); });
}

void Editor::awaitWindow() {
  waitFor("the window of " + program_.name, [this] {
    if (!process_.isRunning()) throw GaveUp(program_.program + " ended; is it installed?");
    const auto found = windows_.windowOf(static_cast<std::uint32_t>(processID()));
    window_ = found.value_or(XCB_WINDOW_NONE);
    return found.has_value();
  });
  resize(program_.name == "writer" ? pageWindowSize : windowSize);
}

void Editor::resize(QSize size) {
  windows_.resize(window_, size);
  waitFor("the new size of " + program_.name, [&] {
    const auto place = windows_.placeOf(window_);
    return place && place->width() == size.width();  // some need more height
  });
}

void Editor::moveTo(QPoint corner) {
  windows_.move(window_, corner);
  waitFor("the new place of " + program_.name, [&] {
    const auto place = windows_.placeOf(window_);
    return place && (place->topLeft() - corner).manhattanLength() < 100;
  });
}

AttributeValue Editor::read(const ObjectRef& element, AttributeRead read) {
  return accessibility_.read(element, std::span(&read, 1)).at(0);
}

ObjectRef Editor::focusedField() {
  const ObjectRef application = accessibility_.application(processID());
  if (!application) return nullptr;
  if (program_.hasPages) accessibility_.write(application, "AXManualAccessibility", true);
  const auto found = read(application, {"AXFocusedUIElement", {}});
  const auto* field = std::get_if<ObjectRef>(&found);
  if (!field || !*field) return nullptr;
  const auto role = read(*field, {"AXRole", {}});
  return role == AttributeValue(program_.role) ? *field : nullptr;
}

bool Editor::findField() {
  if (ObjectRef found = focusedField()) field_ = std::move(found);
  return field_ != nullptr;
}

std::string Editor::text() {
  const auto value = read(field_, {"AXValue", {}});
  const auto* text = std::get_if<std::string>(&value);
  return text ? withPlainBlanks(*text) : std::string();
}

std::optional<TopLeftRect> Editor::caret() {
  const auto selection = read(field_, {"AXSelectedTextRange", {}});
  const auto* at = std::get_if<TextRange>(&selection);
  if (!at) return std::nullopt;
  const auto boxOf = [&](TextRange range) -> std::optional<TopLeftRect> {
    const auto value = read(field_, {"AXBoundsForRange", range});
    const auto* box = std::get_if<TopLeftRect>(&value);
    return box && box->height > 0 ? std::optional(*box) : std::nullopt;
  };
  const auto before = boxOf({at->location - 1, 1});
  // GTK tells of the other end of such a line.
  if (before && text::endsRightToLeft(text())) return TopLeftRect{before->x, before->y, 0, before->height};
  if (auto here = boxOf({at->location, 0})) return here;
  return before ? std::optional(TopLeftRect{before->right(), before->y, 0, before->height}) : std::nullopt;
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
