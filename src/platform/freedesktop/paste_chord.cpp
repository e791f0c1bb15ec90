#include "platform/freedesktop/paste_chord.h"

#include <algorithm>
#include <string>
#include <utility>

namespace brimlo {
namespace {

// By window class (X11) or app id (Wayland), in lower case: many terminals have one of each. All
// other applications paste with Control+V.
constexpr std::pair<std::string_view, PasteChord> kTerminals[] = {
    {"alacritty", PasteChord::kControlShiftV},
    {"blackbox", PasteChord::kControlShiftV},
    {"com.raggesilver.blackbox", PasteChord::kControlShiftV},
    {"com.mitchellh.ghostty", PasteChord::kControlShiftV},
    {"contour", PasteChord::kControlShiftV},
    {"cool-retro-term", PasteChord::kControlShiftV},
    {"deepin-terminal", PasteChord::kControlShiftV},
    {"ghostty", PasteChord::kControlShiftV},
    {"gnome-terminal", PasteChord::kControlShiftV},
    {"gnome-terminal-server", PasteChord::kControlShiftV},
    {"guake", PasteChord::kControlShiftV},
    {"hyper", PasteChord::kControlShiftV},
    {"kgx", PasteChord::kControlShiftV},
    {"kitty", PasteChord::kControlShiftV},
    {"konsole", PasteChord::kControlShiftV},
    {"lxterminal", PasteChord::kControlShiftV},
    {"mate-terminal", PasteChord::kControlShiftV},
    {"org.gnome.console", PasteChord::kControlShiftV},
    {"org.gnome.ptyxis", PasteChord::kControlShiftV},
    {"org.gnome.terminal", PasteChord::kControlShiftV},
    {"org.kde.konsole", PasteChord::kControlShiftV},
    {"org.wezfurlong.wezterm", PasteChord::kControlShiftV},
    {"pantheon-terminal", PasteChord::kControlShiftV},
    {"io.elementary.terminal", PasteChord::kControlShiftV},
    {"ptyxis", PasteChord::kControlShiftV},
    {"qterminal", PasteChord::kControlShiftV},
    {"roxterm", PasteChord::kControlShiftV},
    {"sakura", PasteChord::kControlShiftV},
    {"st", PasteChord::kControlShiftV},
    {"st-256color", PasteChord::kControlShiftV},
    {"terminator", PasteChord::kControlShiftV},
    {"terminology", PasteChord::kControlShiftV},
    {"termite", PasteChord::kControlShiftV},
    {"tilda", PasteChord::kControlShiftV},
    {"tilix", PasteChord::kControlShiftV},
    {"wezterm", PasteChord::kControlShiftV},
    {"xfce4-terminal", PasteChord::kControlShiftV},
    {"yakuake", PasteChord::kControlShiftV},
    {"aterm", PasteChord::kShiftInsert},
    {"eterm", PasteChord::kShiftInsert},
    {"koi8rxterm", PasteChord::kShiftInsert},
    {"mlterm", PasteChord::kShiftInsert},
    {"rxvt", PasteChord::kShiftInsert},
    {"urxvt", PasteChord::kShiftInsert},
    {"uxterm", PasteChord::kShiftInsert},
    {"xterm", PasteChord::kShiftInsert},
};

}  // namespace

PasteChord pasteChordFor(std::string_view application) {
  std::string name(application);
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  const auto* found = std::find_if(std::begin(kTerminals), std::end(kTerminals),
                                   [&](const auto& terminal) { return terminal.first == name; });
  return found == std::end(kTerminals) ? PasteChord::kControlV : found->second;
}

}  // namespace brimlo
