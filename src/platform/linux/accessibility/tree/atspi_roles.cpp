#include "platform/linux/accessibility/tree/atspi_roles.h"

#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

enum Role : std::uint32_t {
  checkBox = 7,
  checkMenuItem = 8,
  comboBox = 11,
  dialog = 16,
  filler = 20,
  frame = 23,
  image = 27,
  label = 29,
  layeredPane = 30,
  list = 31,
  menu = 33,
  menuBar = 34,
  menuItem = 35,
  pageTab = 37,
  panel = 39,
  popupMenu = 41,
  pushButton = 43,
  radioButton = 44,
  radioMenuItem = 45,
  scrollBar = 48,
  scrollPane = 49,
  slider = 51,
  spinButton = 52,
  splitPane = 53,
  table = 55,
  terminal = 60,
  text = 61,
  toggleButton = 62,
  toolBar = 63,
  toolTip = 64,
  tree = 65,
  treeTable = 66,
  viewport = 68,
  window = 69,
  paragraph = 73,
  application = 75,
  autocomplete = 76,
  editBar = 77,
  entry = 79,
  documentFrame = 82,
  heading = 83,
  link = 88,
  documentWeb = 95,
  listBox = 98,
  staticText = 116,
};

struct RoleName {
  std::uint32_t role;
  std::string_view name;
};

constexpr std::array names{
    RoleName{checkBox, "AXCheckBox"},
    RoleName{comboBox, "AXComboBox"},
    RoleName{dialog, "AXWindow"},
    RoleName{frame, "AXWindow"},
    RoleName{window, "AXWindow"},
    RoleName{image, "AXImage"},
    RoleName{label, "AXStaticText"},
    RoleName{staticText, "AXStaticText"},
    RoleName{text, "AXStaticText"},
    RoleName{paragraph, "AXStaticText"},
    RoleName{heading, "AXHeading"},
    RoleName{list, "AXList"},
    RoleName{listBox, "AXList"},
    RoleName{menu, "AXMenu"},
    RoleName{popupMenu, "AXMenu"},
    RoleName{menuBar, "AXMenuBar"},
    RoleName{menuItem, "AXMenuItem"},
    RoleName{checkMenuItem, "AXMenuItem"},
    RoleName{radioMenuItem, "AXMenuItem"},
    RoleName{toolBar, "AXToolbar"},
    RoleName{toolTip, "AXHelpTag"},
    RoleName{scrollBar, "AXScrollBar"},
    RoleName{pageTab, "AXRadioButton"},
    RoleName{pushButton, "AXButton"},
    RoleName{toggleButton, "AXCheckBox"},
    RoleName{radioButton, "AXRadioButton"},
    RoleName{scrollPane, "AXScrollArea"},
    RoleName{slider, "AXSlider"},
    RoleName{spinButton, "AXIncrementor"},
    RoleName{splitPane, "AXSplitGroup"},
    RoleName{table, "AXTable"},
    RoleName{tree, "AXOutline"},
    RoleName{treeTable, "AXOutline"},
    RoleName{application, "AXApplication"},
    RoleName{link, "AXLink"},
    RoleName{documentFrame, "AXWebArea"},
    RoleName{documentWeb, "AXWebArea"},
};

constexpr std::array oneLineRoles{text, entry, autocomplete, editBar, spinButton};

template <typename Roles>
bool contains(const Roles& roles, std::uint32_t role) {
  return std::find(roles.begin(), roles.end(), role) != roles.end();
}

// Anything that may be typed into is a field, whatever it calls itself: a paragraph of a word processor, an
// editable part of a web page. Qt's line editor has neither of the two line states.
std::string_view editableRole(std::uint32_t role, AtspiStates states) {
  if (role == comboBox) return "AXComboBox";
  if (states.has(atspi_state::multiLine)) return "AXTextArea";
  if (states.has(atspi_state::singleLine) || contains(oneLineRoles, role)) return "AXTextField";
  return "AXTextArea";
}

}  // namespace

std::string_view accessibilityRole(std::uint32_t role, AtspiStates states) {
  if (role == atspi_role::passwordText) return "AXSecureTextField";
  if (role == terminal) return "AXTextArea";
  if (states.has(atspi_state::editable)) return editableRole(role, states);
  const auto* found =
      std::find_if(names.begin(), names.end(), [role](const RoleName& n) { return n.role == role; });
  return found == names.end() ? "AXGroup" : found->name;
}

bool isPlainContainer(std::uint32_t role) {
  return contains(std::array<std::uint32_t, 9>{atspi_role::rootPane, frame, window, panel, filler, scrollPane,
                                               viewport, layeredPane, splitPane},
                  role);
}

}  // namespace nimbletype
