#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brimlo {

/// A version of the program that a feed offers.
struct FeedItem {
  std::string version;         ///< what versions are compared by
  std::string displayVersion;  ///< what a person calls it
  std::string notes;           ///< what is new: HTML or plain text, from outside
  std::string page;            ///< where it is downloaded: an https address; may be empty
};

struct FeedAnswer {
  enum class Fault {
    kNone,
    kUnreachable,
    kInsecure,   ///< it led to a connection that is not encrypted; nothing was read
    kMalformed,  ///< no feed, or more than a feed can be
  };
  Fault fault = Fault::kNone;
  std::string detail = {};  ///< of the fault, for the log
  std::vector<FeedItem> items = {};
};

/// Where the program's versions are announced. Main thread.
class UpdateFeed {
 public:
  virtual ~UpdateFeed() = default;

  /// Reads the feed at `address` and tells `then`, later and once, within half a minute. A
  /// second call ends a reading under way, and the first `then` is not called.
  virtual void read(const std::string& address, std::function<void(FeedAnswer)> then) = 0;
};

}  // namespace brimlo
