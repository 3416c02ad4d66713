#include "overlay/emoji/emoji_tables.h"

namespace nimbletype {
namespace {

constexpr EmojiShortcut shortcuts[] = {
    {"thumbsup", "👍"},    {"+1", "👍"},          {"thumbsdown", "👎"},  {"-1", "👎"},
    {"heart", "❤️"},        {"joy", "😂"},         {"lol", "😂"},         {"smile", "😄"},
    {"smiley", "😃"},      {"grin", "😁"},        {"blush", "😊"},       {"wink", "😉"},
    {"fire", "🔥"},        {"tada", "🎉"},        {"party", "🥳"},       {"pray", "🙏"},
    {"thanks", "🙏"},      {"rocket", "🚀"},      {"eyes", "👀"},        {"100", "💯"},
    {"ok", "👌"},          {"wave", "👋"},        {"clap", "👏"},        {"thinking", "🤔"},
    {"sob", "😭"},         {"cry", "😢"},         {"cool", "😎"},        {"check", "✅"},
    {"done", "✅"},        {"x", "❌"},           {"star", "⭐"},        {"sparkles", "✨"},
    {"love", "😍"},        {"heart_eyes", "😍"},  {"kiss", "😘"},        {"shrug", "🤷"},
    {"facepalm", "🤦"},    {"muscle", "💪"},      {"coffee", "☕"},      {"warning", "⚠️"},
    {"idea", "💡"},        {"bulb", "💡"},        {"sun", "☀️"},          {"moon", "🌙"},
    {"rofl", "🤣"},        {"sweat_smile", "😅"}, {"upside_down", "🙃"}, {"raised_hands", "🙌"},
    {"point_right", "👉"}, {"point_up", "☝️"},     {"money", "💰"},       {"gift", "🎁"},
    {"cake", "🎂"},        {"beer", "🍺"},        {"pizza", "🍕"},       {"skull", "💀"},
    {"angry", "😠"},       {"zzz", "💤"},         {"memo", "📝"},        {"calendar", "📅"},
    {"phone", "📱"},       {"laptop", "💻"},      {"mail", "📧"},        {"lock", "🔒"},
    {"key", "🔑"},         {"pin", "📌"},         {"link", "🔗"},        {"chart", "📈"},
    {"plane", "✈️"},        {"car", "🚗"},         {"home", "🏠"},        {"music", "🎵"},
    {"camera", "📷"},      {"dog", "🐶"},         {"cat", "🐱"},         {"hug", "🫂"},
    {"salute", "🫡"},      {"melt", "🫠"},        {"eyeroll", "🙄"},     {"hundred", "💯"},
    {"boom", "💥"},
};

constexpr Emoticon emoticons[] = {
    {":)", {"🙂", "😊"}},  {":-)", {"🙂", "😊"}}, {":D", {"😄", "😁"}},  {":-D", {"😄", "😁"}},
    {";)", {"😉"}},        {";-)", {"😉"}},       {":(", {"🙁", "😞"}},  {":-(", {"🙁", "😞"}},
    {":'(", {"😢", "😭"}}, {":P", {"😛", "😜"}},  {":-P", {"😛", "😜"}}, {":p", {"😛"}},
    {";P", {"😜"}},        {":O", {"😮", "😲"}},  {":o", {"😮"}},        {"<3", {"❤️", "🥰"}},
    {"</3", {"💔"}},       {":*", {"😘"}},        {"xD", {"😆"}},        {"XD", {"😆"}},
    {"B)", {"😎"}},        {":/", {"😕"}},        {":|", {"😐"}},        {"^^", {"😊"}},
    {"o_O", {"🤨"}},       {":3", {"😺"}},
};

constexpr std::string_view frequent[] = {"👍", "🙏", "😊", "🔥", "🎉", "😍"};

}  // namespace

std::span<const EmojiShortcut> emojiShortcuts() {
  return shortcuts;
}

std::span<const Emoticon> emoticonTable() {
  return emoticons;
}

std::span<const std::string_view> frequentEmoji() {
  return frequent;
}

}  // namespace nimbletype
