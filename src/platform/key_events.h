#pragma once

#include <cstdint>
#include <functional>

#include "platform/key_codes.h"

namespace brimlo {

/// A synthetic key event.
struct KeyEvent {
  std::uint16_t virtualKey;  ///< of `key_code`
  bool down;
  std::uint64_t flags;  ///< of `modifier_flag`

  bool operator==(const KeyEvent&) const = default;
};

/// Types into whatever application is in front. Main thread.
class KeyEventPoster {
 public:
  virtual ~KeyEventPoster() = default;

  enum class Result {
    kPosted,
    kFailed,  ///< nothing was posted: the events could not be made, or the right to was revoked
  };
  /// Posts the press and the release of a key, as if nothing else were held down: keys that the
  /// person holds are released first and not pressed again. Never posts to a window of this
  /// program: while one has the keyboard, waits for that to end, half a second at most. Calls
  /// `then` when it is done, from within or later.
  virtual void post(const KeyEvent& down, const KeyEvent& up, std::function<void(Result)> then) = 0;
};

}  // namespace brimlo
