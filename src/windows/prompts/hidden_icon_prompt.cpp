#include "windows/prompts/hidden_icon_prompt.h"

#include <QLabel>

#include "menubar/prompt_texts.h"
#include "platform/system/desktop_kind.h"

namespace nimbletype {

HiddenIconPrompt::HiddenIconPrompt(const Ways& ways)
    : PromptWindow("eye.slash.circle.fill"), wayIn_(addNote()) {
  const auto then = [this](std::function<void()> way) {
    return [this, way = std::move(way)] {
      close();
      way();
    };
  };
  addButton("Don't remind me again", "plain", then(ways.remindNoMore));
  addButton("Not Now", "", [this] { close(); });
  if (ways.openSystemSettings)
    addButton("Open System Settings", "chief", then(ways.openSystemSettings));
  else
    addButton("Open Settings", "chief", then(ways.openSettings));
}

void HiddenIconPrompt::blame(const std::string& organiser) {
  const HiddenIconText text = hiddenIconText(organiser, onMac);
  setTexts(QString::fromStdString(text.title), QString::fromStdString(text.body));
  wayIn_->setText(QString::fromStdString(text.wayIn));
}

}  // namespace nimbletype
