#pragma once

#include <optional>
#include <string>

namespace brimlo {

/// The outcome of reading a file.
template <typename T>
struct Decoded {
  std::optional<T> value;
  std::string fault;  ///< what is wrong with the file, where there is no value
};

}  // namespace brimlo
