#include "core/rules/built_in_lists.h"

#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

constexpr std::array offByDefault{
    KnownApp{"Terminal", "com.apple.Terminal"},
    KnownApp{"iTerm", "com.googlecode.iterm2"},
    KnownApp{"Ghostty", "com.mitchellh.ghostty"},
    KnownApp{"Warp", "dev.warp.Warp-Stable"},
    KnownApp{"Keychain Access", "com.apple.keychainaccess"},
    KnownApp{"Passwords", "com.apple.Passwords"},
    KnownApp{"1Password", "com.1password.1password"},
    KnownApp{"Bitwarden", "com.bitwarden.desktop"},
    // Desktop file ids on Linux.
    KnownApp{"Terminal", "org.gnome.Terminal"},
    KnownApp{"Console", "org.gnome.Console"},
    KnownApp{"Konsole", "org.kde.konsole"},
    KnownApp{"Xfce Terminal", "xfce4-terminal"},
    KnownApp{"Alacritty", "Alacritty"},
    KnownApp{"kitty", "kitty"},
    KnownApp{"XTerm", "debian-xterm"},
    KnownApp{"KeePassXC", "org.keepassxc.KeePassXC"},
    KnownApp{"Passwords and Keys", "org.gnome.seahorse.Application"},
    KnownApp{"1Password", "1password"},
    KnownApp{"Bitwarden", "bitwarden"},
};

constexpr std::array editors{
    KnownApp{"Xcode", "com.apple.dt.Xcode"},
    KnownApp{"Visual Studio Code", "com.microsoft.VSCode"},
    KnownApp{"Code - Insiders", "com.microsoft.VSCodeInsiders"},
    KnownApp{"Cursor", "com.todesktop.230313mzl4w4u92"},
    KnownApp{"Zed", "dev.zed.Zed"},
    KnownApp{"Sublime Text", "com.sublimetext.4"},
    KnownApp{"Nova", "com.panic.Nova"},
    // Desktop file ids on Linux; Zed's is the same everywhere.
    KnownApp{"Visual Studio Code", "code"},
    KnownApp{"Cursor", "cursor"},
    KnownApp{"Sublime Text", "sublime_text"},
    KnownApp{"Builder", "org.gnome.Builder"},
    KnownApp{"KDevelop", "org.kde.kdevelop"},
};

bool contains(std::span<const KnownApp> apps, std::string_view bundleID) {
  return std::ranges::find(apps, bundleID, &KnownApp::bundleID) != apps.end();
}

}  // namespace

std::span<const KnownApp> appsOffByDefault() {
  return offByDefault;
}
std::span<const KnownApp> codeEditors() {
  return editors;
}

bool isOffByDefault(std::string_view bundleID) {
  return contains(offByDefault, bundleID);
}

bool isCodeEditor(std::string_view bundleID) {
  // "jetbrains-" begins the desktop file ids.
  return bundleID.starts_with("com.jetbrains.") || bundleID.starts_with("jetbrains-") ||
         contains(editors, bundleID);
}

}  // namespace nimbletype
