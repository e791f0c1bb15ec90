#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace brimlo {

/// One entry of the history, a value. Its identity is its `id`.
struct Clip {
  std::string id;      ///< stable on every device; an upper-case UUID for clips made here
  std::string text;    ///< valid UTF-8, exactly as it was copied
  double savedAt = 0;  ///< when it was copied: milliseconds since 1970 UTC, fraction kept; finite
  std::string source;  ///< "manual" for copies made here, "action" for a phone's request, or other
  std::optional<std::vector<std::string>> tags;  ///< set by the companion app, kept by this one

  bool operator==(const Clip&) const = default;
};

/// Ids of clips. Shared and never changed, so that any thread may read them.
using IdSet = std::unordered_set<std::string>;
using IdSetPtr = std::shared_ptr<const IdSet>;

/// Clips are shared and never changed: a list, a snapshot of it and a sync run hold the same ones.
using ClipPtr = std::shared_ptr<const Clip>;

/// An immutable list of clips. A copy shares everything, costs nothing, and may be read on
/// another thread.
class ClipList {
 public:
  ClipList() = default;
  explicit ClipList(std::vector<ClipPtr> clips)
      : clips_(std::make_shared<const std::vector<ClipPtr>>(std::move(clips))) {}

  bool empty() const { return clips_->empty(); }
  std::size_t size() const { return clips_->size(); }
  const ClipPtr& operator[](std::size_t index) const { return (*clips_)[index]; }
  auto begin() const { return clips_->begin(); }
  auto end() const { return clips_->end(); }

  /// Whether both are the same list, not merely equal ones.
  bool operator==(const ClipList&) const = default;

 private:
  std::shared_ptr<const std::vector<ClipPtr>> clips_ =
      std::make_shared<const std::vector<ClipPtr>>();
};

}  // namespace brimlo
