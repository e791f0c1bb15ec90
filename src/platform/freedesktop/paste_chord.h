#pragma once

#include <string_view>

namespace brimlo {

/// The keys that paste.
enum class PasteChord {
  kControlV,
  kControlShiftV,  ///< terminals, where Control+V goes to the program that runs in them
  kShiftInsert,    ///< terminals without that one; here it pastes the PRIMARY selection
};

/// The keys that paste in an application. `application`: what its windows call it, in any case:
/// their class on X11 (WM_CLASS), their app id on Wayland.
PasteChord pasteChordFor(std::string_view application);

}  // namespace brimlo
