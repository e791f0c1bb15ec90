#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace brimlo {

/// The largest text that is taken from another client, in bytes; a larger one is refused.
inline constexpr std::size_t kLargestText = std::size_t{256} * 1024 * 1024;

/// How long another client may be silent while it hands over a text or takes one. Long enough for
/// a client that is swapped out or still computes the text.
inline constexpr std::chrono::seconds kTransferPatience{30};

/// The desktop's general pasteboard, as one object whatever its clients do.
///
/// - Contents outlive their owner: when it goes away, its last text stays, and the count with it.
/// - No call ever waits for another client. New contents show once they have been read whole, or
///   have turned out to hold no readable text; until then the old count goes with the old text.
/// - The count moves once for every new contents, whoever put them there, and `string` always
///   belongs to `changeCount`. What is there when the object is made is not new: it may become
///   readable later, under the first count.
/// - A text is valid UTF-8. Contents that their owner marks as secret have none.
///
/// Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  virtual std::int64_t changeCount() const = 0;

  /// The plain text of the current contents; none for an empty pasteboard, an image, a secret.
  virtual std::optional<std::string> string() const = 0;

  /// Makes the pasteboard this process's own, and empty: new contents.
  virtual void clearContents() = 0;

  /// Gives the contents that the last `clearContents` made their plain text, without moving the
  /// count again. Contents that are not this process's own are replaced by new ones.
  /// `text`: valid UTF-8.
  virtual void setString(std::string text) = 0;

  /// Calls `then` once, when another client has taken the current string whole, the next time one
  /// does; or after half a second in which none began to.
  virtual void whenTaken(std::function<void()> then) = 0;
};

}  // namespace brimlo
