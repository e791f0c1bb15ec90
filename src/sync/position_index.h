#pragma once

#include <cstdint>
#include <limits>

#include "base/hash_index.h"

namespace brimlo {

/// A position in a list of clips.
using Position = std::uint32_t;

/// Finds positions in a list by what stands there, in eight bytes a slot.
using PositionIndex = HashIndex<Position, std::numeric_limits<Position>::max()>;

}  // namespace brimlo
