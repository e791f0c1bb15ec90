#pragma once

#include <cstdlib>
#include <memory>

namespace brimlo {

struct FreeXcb {
  void operator()(void* memory) const { std::free(memory); }
};
/// Owns a reply, an event or an error that the XCB library allocated.
template <typename T>
using XcbPtr = std::unique_ptr<T, FreeXcb>;

}  // namespace brimlo
