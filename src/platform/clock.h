#pragma once

namespace brimlo {

/// The wall clock. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Milliseconds since 1970-01-01 00:00 UTC, fraction kept.
  virtual double nowMs() const = 0;
};

}  // namespace brimlo
