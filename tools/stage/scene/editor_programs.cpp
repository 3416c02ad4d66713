#include "tools/stage/scene/editor_programs.h"

#include <array>
#include <fstream>

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

struct Known {
  const char *name, *program, *role, *page;
};
constexpr std::array known{
    Known{"mousepad", "mousepad", "AXTextArea", nullptr},
    Known{"featherpad", "featherpad", "AXTextArea", nullptr},
    // The launcher would be another process than the one with the window.
    Known{"writer", "/usr/lib/libreoffice/program/soffice.bin", "AXTextArea", nullptr},
    Known{"chromium", "chromium", "AXTextArea", "<textarea autofocus dir=auto spellcheck=false></textarea>"},
    Known{"chromium-input", "chromium", "AXTextField", "<input autofocus dir=auto spellcheck=false>"},
    Known{"chromium-editable", "chromium", "AXTextArea",
          "<div class=field contenteditable dir=auto spellcheck=false></div>"
          "<script>document.querySelector('div').focus()</script>"},
    // Under an article of many elements.
    Known{"chromium-article", "chromium", "AXTextArea",
          "<textarea autofocus dir=auto spellcheck=false style='height:40vh'></textarea><script>"
          "for (let i = 1; i <= 300; ++i) document.body.insertAdjacentHTML('beforeend', '<p>Paragraph ' + i +"
          " ' of an <b>article</b> with <a href=x>links</a> in it.')</script>"},
    Known{"chromium-password", "chromium", "AXSecureTextField", "<input autofocus type=password>"},
    Known{"chromium-frame", "chromium", "AXTextArea",
          "<iframe srcdoc=\"<!doctype html><style>textarea{width:90vw;height:80vh;font:15px DejaVu "
          "Sans}</style><textarea autofocus dir=auto spellcheck=false></textarea>\"></iframe>"},
};
constexpr const char* style =
    "<!doctype html><meta charset=utf-8><title>letter</title><style>body{margin:8px}"
    "textarea,.field,iframe{width:95vw;height:85vh;font:15px DejaVu Sans}"
    "input{width:95vw;font:15px DejaVu Sans}</style><body>";

// The title need not tell of a scratch folder.
constexpr const char* mousepadSettings = "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n";

// A word processor that neither greets nor writes along.
struct OfficeSetting {
  const char *path, *name, *value;
};
constexpr std::array officeSettings{
    OfficeSetting{"Office.Common/Misc", "FirstRun", "false"},
    OfficeSetting{"Office.Common/Misc", "ShowTipOfTheDay", "false"},
    OfficeSetting{"Office.Common/Misc", "ShowDonation", "false"},
    OfficeSetting{"Setup/Product", "LastTimeGetInvolvedShown", "4000000000"},
    OfficeSetting{"Setup/Product", "ooSetupLastVersion", "7.4"},
    // Place, size and that it is not maximized.
    OfficeSetting{"Setup/Office/Factories/org.openoffice.Setup:Factory['com.sun.star.text.TextDocument']",
                  "ooSetupFactoryWindowAttributes", "200,100,900,600;1;0,0,0,0;"},
    OfficeSetting{"Office.Writer/AutoFunction/Completion", "Enable", "false"},
    OfficeSetting{"Office.Writer/AutoFunction/Format/Option", "CapitalAtSentenceStart", "false"},
    OfficeSetting{"Office.Common/AutoCorrect", "CapitalAtSentenceStart", "false"},
    OfficeSetting{"Office.Common/AutoCorrect", "TwoCapitalsAtStart", "false"},
    OfficeSetting{"Office.Common/AutoCorrect", "ChangeDash", "false"},
    OfficeSetting{"Office.Common/AutoCorrect", "ReplaceSingleQuote", "false"},
    OfficeSetting{"Office.Common/AutoCorrect", "ReplaceDoubleQuote", "false"},
    OfficeSetting{"Office.Linguistic/SpellChecking", "IsSpellAuto", "false"},
};

void writeOfficeSettings(const fs::path& profile) {
  fs::create_directories(profile / "user");
  std::ofstream file(profile / "user" / "registrymodifications.xcu");
  file
      << R"(<?xml version="1.0" encoding="UTF-8"?><oor:items xmlns:oor="http://openoffice.org/2001/registry">)";
  for (const auto& [path, name, value] : officeSettings)
    file << "<item oor:path=\"/org.openoffice." << path << "\"><prop oor:name=\"" << name
         << "\" oor:op=\"fuse\"><value>" << value << "</value></prop></item>";
  file << "</oor:items>";
}

const Known* knownAs(const std::string& name) {
  for (const Known& each : known)
    if (each.name == name) return &each;
  return nullptr;
}

std::vector<std::string> commandOf(const EditorProgram& editor, const fs::path& folder) {
  const std::string file = folder / "letter.txt";
  if (editor.name == "mousepad") return {editor.program, "--disable-server", file};
  if (editor.name == "featherpad") return {editor.program, "--standalone", file};
  // With a new profile it ends once, to be started again.
  if (editor.name == "writer")
    return {"bash", "-c",
            R"("$0" "$1" --headless --terminate_after_init; exec "$0" "$1" --writer --norestore --nologo)",
            editor.program, "-env:UserInstallation=file://" + (folder / "office").string()};
  // Its sandbox and root exclude each other.
  return {editor.program,
          "--no-sandbox",
          "--no-first-run",
          "--disable-gpu",
          "--password-store=basic",
          "--app=file://" + file + ".html",
          "--user-data-dir=" + file + ".profile"};
}

}  // namespace

std::optional<EditorProgram> editorProgram(const std::string& name) {
  const Known* found = knownAs(name);
  if (!found) return std::nullopt;
  return EditorProgram{.name = found->name,
                       .program = found->program,
                       .role = found->role,
                       .hasPages = found->page != nullptr,
                       .holdsOneLine = std::string_view(found->role) == "AXTextField",
                       .tellsOneParagraph = name == "writer",
                       .runsLeftToRight = name == "writer"};
}

std::vector<std::string> editorNames() {
  std::vector<std::string> names;
  names.reserve(std::size(known));
  for (const Known& each : known) names.emplace_back(each.name);
  return names;
}

ChildProcess::Start startOf(const EditorProgram& editor, const fs::path& folder) {
  const std::string home = folder / "editor-home";
  const fs::path settings = home + "/.config/glib-2.0/settings";
  fs::create_directories(settings);
  std::ofstream(settings / "keyfile") << mousepadSettings;
  std::ofstream(folder / "letter.txt").flush();
  if (editor.hasPages) std::ofstream(folder / "letter.txt.html") << style << knownAs(editor.name)->page;
  if (editor.name == "writer") writeOfficeSettings(folder / "office");
  return {commandOf(editor, folder),
          {{"HOME", home},
           {"XDG_CONFIG_HOME", home + "/.config"},
           {"XDG_DATA_HOME", home + "/.local/share"},
           {"XDG_CACHE_HOME", home + "/.cache"},
           {"GSETTINGS_BACKEND", "keyfile"},
           {"SAL_USE_VCLPLUGIN", "gtk3"}},
          folder / "editor.log"};
}

}  // namespace nimbletype
