#pragma once

#include <cstdint>

namespace brimlo {

/// Names a window of this or another program for as long as the program runs. What the number
/// stands for is known to the session alone.
enum class WindowId : std::uint64_t { kNone = 0 };

}  // namespace brimlo
