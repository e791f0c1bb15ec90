#pragma once

#include <optional>
#include <string>

namespace brimlo {

/// Base folders of the XDG Base Directory Specification; none where the user has no home. A
/// variable that does not hold an absolute path counts as unset.
std::optional<std::string> xdgDataHome();
std::optional<std::string> xdgConfigHome();

}  // namespace brimlo
