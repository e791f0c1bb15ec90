#include "app/command_line.h"

namespace brimlo {

std::optional<Start> parseCommandLine(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return Start::kOpen;
  if (arguments.size() > 1) return std::nullopt;
  const std::string& argument = arguments.front();
  if (argument == "--quick-paste") return Start::kQuickPaste;
  if (argument == "--background") return Start::kBackground;
  if (argument == "--version") return Start::kVersion;
  if (argument == "--help" || argument == "-h") return Start::kHelp;
  return std::nullopt;
}

std::string usage() {
  return "Usage: brimlo [OPTION]\n"
         "Keeps every text you copy. When it runs already, opens its window.\n"
         "\n"
         "  --quick-paste  open the palette\n"
         "  --background   start without opening anything, as at login\n"
         "  --version      print the version\n"
         "  --help         print this\n";
}

}  // namespace brimlo
