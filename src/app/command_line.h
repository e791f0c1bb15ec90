#pragma once

#include <optional>
#include <string>
#include <vector>

namespace brimlo {

/// What the program was started for.
enum class Start {
  kOpen,        ///< to run; where it runs already, to open its window
  kQuickPaste,  ///< to run and open the palette; where it runs already, to open its palette
  kBackground,  ///< to run, and nothing else: so it is started at login
  kVersion,
  kHelp,
};

/// What `arguments`, without the program's name, ask for; none where they make no sense.
std::optional<Start> parseCommandLine(const std::vector<std::string>& arguments);

/// For the person: what can be asked for.
std::string usage();

}  // namespace brimlo
