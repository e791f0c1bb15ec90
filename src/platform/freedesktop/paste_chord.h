#pragma once

#include <string_view>

namespace brimlo {

/// The keys that paste.
enum class PasteChord {
  kControlV,
  kControlShiftV,  ///< terminals, in which Control+V is a key of the program that runs there
  kShiftInsert,    ///< terminals that know no other, and paste the PRIMARY selection with it
};

/// The keys that paste in the application whose windows have the class `windowClass`, in any case.
PasteChord pasteChordFor(std::string_view windowClass);

}  // namespace brimlo
