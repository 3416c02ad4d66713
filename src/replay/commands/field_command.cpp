#include "replay/commands/field_command.h"

namespace nimbletype {
namespace {

Change changeOf(LineReader& line) {
  const std::string change = line.text("change").value_or("value");
  if (change == "app") return Change::app;
  if (change == "focus") return Change::focus;
  if (change == "value") return Change::value;
  throw LineError("\"" + change + "\" is no kind of change");
}

void readText(LineReader& line, const char* name, std::string& target) {
  if (auto text = line.text(name)) target = *std::move(text);
}

}  // namespace

void applyField(LineReader& line, ScriptedDesktop& desktop) {
  const Change change = changeOf(line);
  if (auto reason = line.text("none")) return desktop.field.lose(*std::move(reason));
  FieldSnapshot& field = desktop.field.field();
  readText(line, "fieldKey", field.fieldKey);
  readText(line, "bundleID", field.bundleID);
  readText(line, "appName", field.appName);
  readText(line, "role", field.role);
  readText(line, "before", field.before);
  readText(line, "after", field.after);
  if (const auto length = line.integer("selectionLength", INT64_MIN)) field.selectionLength = *length;
  if (line.has("caretRect")) field.caretRect = line.rect("caretRect");
  if (line.has("lineStartX")) field.lineStartX = line.number("lineStartX");
  if (line.has("fieldFrame")) field.fieldFrame = line.rect("fieldFrame");
  if (line.has("fontSize")) field.fontSize = line.number("fontSize");
  if (line.has("fontName")) field.fontName = line.text("fontName");
  if (const auto secure = line.boolean("isSecure")) field.isSecure = *secure;
  if (line.has("domain")) field.domain = line.text("domain");
  if (line.has("windowTitle")) field.windowTitle = line.text("windowTitle");
  if (const auto local = line.boolean("isLocal")) field.isLocal = *local;
  desktop.field.report(change);
}

}  // namespace nimbletype
