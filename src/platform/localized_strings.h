#pragma once

#include <string>

namespace brimlo {

/// The texts that a person sees, in the person's language. Main thread.
class LocalizedStrings {
 public:
  virtual ~LocalizedStrings() = default;

  /// The text of `key`, or `key` itself where the tables have none.
  virtual std::string text(const char* key) const = 0;
};

}  // namespace brimlo
