#pragma once

#include <cstddef>
#include <string>

namespace brimlo {

/// The texts that a person sees, in the person's language. Main thread.
class LocalizedStrings {
 public:
  virtual ~LocalizedStrings() = default;

  /// The text of `key`, or `key` itself where the tables have none.
  virtual std::string text(const char* key) const = 0;

  /// The text of `key` for this many things, with their number in it where the text has a place
  /// for that.
  virtual std::string textWithCount(const char* key, std::size_t count) const = 0;
};

}  // namespace brimlo
