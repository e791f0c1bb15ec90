#pragma once

#include <optional>
#include <string>

namespace brimlo {

/// What reading a file came to.
template <typename T>
struct Decoded {
  std::optional<T> value;
  std::string fault;  ///< what is wrong with the file, where there is no value
};

}  // namespace brimlo
