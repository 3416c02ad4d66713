#include "tools/stage/scene/editor.h"

#include <algorithm>

#include "text/right_to_left.h"
#include "tools/stage/scene/ink.h"
#include "tools/stage/waiting.h"

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

std::optional<TopLeftRect> Editor::boxOf(TextRange range) {
  const auto value = read(field_, {"AXBoundsForRange", range});
  const auto* box = std::get_if<TopLeftRect>(&value);
  return box && box->height > 0 ? std::optional(*box) : std::nullopt;
}

bool Editor::continuesToTheLeft() {
  return !program_.runsLeftToRight && text::endsRightToLeft(text());
}

std::optional<TopLeftRect> Editor::caret() {
  const auto selection = read(field_, {"AXSelectedTextRange", {}});
  const auto* at = std::get_if<TextRange>(&selection);
  if (!at) return std::nullopt;
  if (const auto here = boxOf({at->location, 0})) return here;
  const auto before = boxOf({at->location - 1, 1});
  if (!before) return caretInPicture();
  return TopLeftRect{continuesToTheLeft() ? before->x : before->right(), before->y, 0, before->height};
}

// Lines are as high as the first one, and text is darker than a ghost.
std::optional<TopLeftRect> Editor::caretInPicture() {
  constexpr double scrollBar = 20;
  const auto first = boxOf({0, 1});
  const auto value = read(field_, {"AXFrame", {}});
  const auto* field = std::get_if<TopLeftRect>(&value);
  if (!first || !field) return std::nullopt;
  const double y = first->y + first->height * static_cast<double>(std::ranges::count(text(), '\n'));
  const QImage seen = picture();
  const QPoint from = QPointF(first->x, y).toPoint() - corner();
  const int height = static_cast<int>(first->height);
  const int width = static_cast<int>(field->right() - scrollBar - first->x);
  const QRect ink = inkWithin(seen, QRect(from.x(), from.y(), width, height));
  if (ink.isEmpty()) return std::nullopt;
  return TopLeftRect{static_cast<double>(ink.right() + 1 + corner().x()), y, 0, first->height};
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
