#include "replay/replay.h"

#include "replay/commands/replay_commands.h"

namespace nimbletype {
namespace {

Json parsed(const std::string& text) {
  Json line = Json::parse(text, nullptr, false);
  if (line.is_discarded()) throw LineError("it is not valid JSON");
  if (!line.is_object()) throw LineError("it is not a JSON object");
  return line;
}

void runLine(const std::string& text, ScriptedDesktop& desktop, std::vector<std::string>& notes) {
  const Json line = parsed(text);
  LineReader reader(line);
  const std::string kind = reader.requiredText("t");
  const ReplayCommand command = replayCommand(kind);
  if (!command) throw LineError("nothing is known about \"" + kind + "\"");
  command(reader, desktop);
  desktop.field.deliverChanges();
  for (const std::string& name : reader.unread())
    notes.push_back("\"" + name + "\" is not known here and was left out");
  notes.insert(notes.end(), desktop.notes.begin(), desktop.notes.end());
  desktop.notes.clear();
}

bool isSkipped(const std::string& text) {
  const auto start = text.find_first_not_of(" \t\r");
  return start == std::string::npos || text[start] == '#';
}

}  // namespace

int runReplay(std::istream& input, std::ostream& output, std::ostream& errors) {
  ScriptedDesktop desktop(output);
  std::string text;
  int status = 0;
  for (int number = 1; status == 0 && std::getline(input, text); ++number) {
    if (isSkipped(text)) continue;
    std::vector<std::string> notes;
    try {
      runLine(text, desktop, notes);
    } catch (const LineError& error) {
      notes.emplace_back(error.what());
      status = 2;
    }
    for (const std::string& note : notes) errors << "line " << number << ": " << note << '\n';
  }
  desktop.output.close();
  return status;
}

}  // namespace nimbletype
