#pragma once

#include <cstdint>

namespace brimlo {

/// How `brimlo-fetch` ends when it has not fetched anything.
enum class FetchStatus : int {
  kMisused = 2,
  kUnreachable = 3,
  kInsecure = 4,  ///< it would have read from a connection that is not encrypted
  kTooLong = 5,
};

/// More bytes than that are fetched from nowhere.
inline constexpr std::int64_t kMostFetched = 1 << 20;

}  // namespace brimlo
