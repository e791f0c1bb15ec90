#pragma once

#include <string_view>

namespace brimlo {

/// The system log. Any thread.
class SystemLog {
 public:
  virtual ~SystemLog() = default;

  /// Writes one line: the prefix "[BrimloMac] ", then `message`. Never holds the text of a clip.
  virtual void write(std::string_view message) = 0;
};

}  // namespace brimlo
