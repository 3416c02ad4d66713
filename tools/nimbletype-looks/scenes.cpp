#include "tools/nimbletype-looks/scenes.h"

#include <array>

namespace nimbletype {
namespace {

constexpr const char* letter = "Thank you for your letter. We are glad to";
constexpr const char* greeting = "Thank you for";
constexpr const char* greetingRest = " your letter";
constexpr const char* shortRest = " hear from you again";
constexpr const char* longRest =
    " hear that the work on the old river bank has begun and that the boats may pass";
constexpr const char* misspelled = "We hope that you recieve";
constexpr const char* otherRests =
    " hear from you again\n hear that all is well with the boats, and that the river bank is dry\n tell "
    "you more\n be of help\n hear from you again.";
constexpr EditorLook dark{.dark = true}, doubled{.scale = 2}, darkDoubled{.dark = true, .scale = 2};
constexpr const char* tinted = R"("ghostStyle":"tinted")";
constexpr const char* hinted = R"("showKeyHint":true)";
constexpr const char* party = "See you at the :ha";
constexpr const char* noParty = "See you at the :partq";
constexpr const char* smile = "See you at the party :)";
constexpr const char* toned = R"("skinTone":3,"includeNeutralTone":true)";
constexpr const char* fixing = R"("suggestFixes":true)";

constexpr std::array scenes{
    PhotoScene{.name = "gtk-light", .editor = "mousepad", .text = letter, .suggestion = shortRest},
    PhotoScene{
        .name = "gtk-dark", .editor = "mousepad", .text = letter, .suggestion = shortRest, .look = dark},
    PhotoScene{.name = "gtk-tinted",
               .editor = "mousepad",
               .text = letter,
               .suggestion = shortRest,
               .settings = tinted},
    PhotoScene{.name = "gtk-key-hint",
               .editor = "mousepad",
               .text = greeting,
               .suggestion = greetingRest,
               .settings = hinted},
    PhotoScene{
        .name = "gtk-fix", .editor = "mousepad", .text = misspelled, .suggestion = "", .settings = fixing},
    PhotoScene{.name = "gtk-wrapped-below", .editor = "mousepad", .text = letter, .suggestion = longRest},
    PhotoScene{.name = "gtk-wrapped-dark",
               .editor = "mousepad",
               .text = letter,
               .suggestion = longRest,
               .look = dark},
    PhotoScene{.name = "gtk-end-of-scrolled-field",
               .editor = "mousepad",
               .height = 200,
               .text = letter,
               .suggestion = longRest,
               .linesBefore = 20},
    PhotoScene{
        .name = "gtk-scale-2", .editor = "mousepad", .text = letter, .suggestion = longRest, .look = doubled},
    PhotoScene{.name = "qt-light", .editor = "featherpad", .text = letter, .suggestion = shortRest},
    PhotoScene{
        .name = "qt-dark", .editor = "featherpad", .text = letter, .suggestion = shortRest, .look = dark},
    PhotoScene{.name = "qt-wrapped-below", .editor = "featherpad", .text = letter, .suggestion = longRest},
    PhotoScene{.name = "qt-end-of-scrolled-field",
               .editor = "featherpad",
               .text = letter,
               .suggestion = longRest,
               .linesBefore = 20},
    PhotoScene{.name = "qt-scale-2",
               .editor = "featherpad",
               .text = letter,
               .suggestion = longRest,
               .look = doubled},
    PhotoScene{
        .name = "page-light", .editor = "chromium", .height = 260, .text = letter, .suggestion = shortRest},
    PhotoScene{.name = "page-dark",
               .editor = "chromium",
               .height = 260,
               .text = letter,
               .suggestion = shortRest,
               .look = dark},
    PhotoScene{.name = "page-wrapped-below",
               .editor = "chromium",
               .height = 260,
               .text = letter,
               .suggestion = longRest},
    PhotoScene{.name = "page-scale-2-dark",
               .editor = "chromium",
               .height = 260,
               .text = letter,
               .suggestion = longRest,
               .look = darkDoubled},
    PhotoScene{.name = "document",
               .editor = "writer",
               .width = 900,
               .height = 500,
               .text = letter,
               .suggestion = shortRest},
    PhotoScene{.name = "gtk-alternatives",
               .editor = "mousepad",
               .text = letter,
               .suggestion = "",
               .others = otherRests},
    PhotoScene{.name = "gtk-alternatives-dark",
               .editor = "mousepad",
               .text = letter,
               .suggestion = "",
               .look = dark,
               .others = otherRests},
    PhotoScene{.name = "page-alternatives",
               .editor = "chromium",
               .height = 260,
               .text = letter,
               .suggestion = "",
               .others = otherRests},
    PhotoScene{.name = "gtk-right-to-left",
               .editor = "mousepad",
               .text = "שלום לכולם",
               .suggestion = " מחר בבוקר נפגש"},
    PhotoScene{.name = "gtk-right-to-left-wrapped",
               .editor = "mousepad",
               .text = "שלום לכולם ותודה על המכתב הארוך ששלחתם אלינו השבוע",
               .suggestion = " מחר בבוקר נפגש ליד הגשר הישן"},
    PhotoScene{.name = "qt-right-to-left",
               .editor = "featherpad",
               .text = "שלום לכולם",
               .suggestion = " מחר בבוקר נפגש"},
    PhotoScene{.name = "page-right-to-left",
               .editor = "chromium",
               .height = 260,
               .text = "שלום לכולם",
               .suggestion = " מחר בבוקר נפגש"},
    PhotoScene{.name = "gtk-larger-tinted-dark",
               .editor = "mousepad",
               .text = greeting,
               .suggestion = longRest,
               .settings = R"("ghostStyle":"tinted","textScale":1.3)",
               .look = dark},
    PhotoScene{.name = "gtk-bottom-of-screen",
               .editor = "mousepad",
               .text = letter,
               .suggestion = longRest,
               .linesBefore = 4,
               .y = 715},
    PhotoScene{.name = "gtk-emoji", .editor = "mousepad", .text = party, .suggestion = "", .settings = toned},
    PhotoScene{
        .name = "qt-emoji-dark", .editor = "featherpad", .text = party, .suggestion = "", .look = dark},
    PhotoScene{.name = "page-emoji", .editor = "chromium", .height = 260, .text = party, .suggestion = ""},
    PhotoScene{.name = "gtk-no-emoji", .editor = "mousepad", .text = noParty, .suggestion = ""},
    PhotoScene{.name = "gtk-emoticon", .editor = "mousepad", .text = smile, .suggestion = ""},
    PhotoScene{.name = "two-screens-second",
               .editor = "mousepad",
               .text = letter,
               .suggestion = longRest,
               .x = 1320,
               .screens = 2},
    PhotoScene{.name = "two-screens-list-at-the-edge",
               .editor = "mousepad",
               .text = letter,
               .suggestion = "",
               .others = otherRests,
               .x = 700,
               .screens = 2},
};

}  // namespace

std::span<const PhotoScene> photoScenes() {
  return scenes;
}

}  // namespace nimbletype
