#pragma once

namespace brimlo {

/// Whether the desktop's windows are dark text on light or light text on dark.
enum class Appearance { kLight, kDark };

}  // namespace brimlo
