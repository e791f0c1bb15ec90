#include "sync/merge.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <iterator>
#include <string_view>
#include <unordered_set>

#include "base/canonical_text.h"
#include "sync/position_index.h"

namespace brimlo {
namespace {

bool standsBefore(const ClipPtr* a, const ClipPtr* b) {
  const Clip& first = **a;
  const Clip& second = **b;
  return first.savedAt != second.savedAt ? first.savedAt > second.savedAt : first.id < second.id;
}

bool hasTags(const Clip& clip) {
  return clip.tags && !clip.tags->empty();
}

/// The clips of two lists while they are merged. Points into the lists.
class Merge {
  static std::size_t hashOf(std::string_view id) { return std::hash<std::string_view>()(id); }

  auto hasId(const std::string& id) const {
    return [this, &id](Position at) { return clips_[at] && (*clips_[at])->id == id; };
  }

  /// Adds `clip`, or returns where a clip of its id is.
  const Position* put(const ClipPtr& clip) {
    const auto end = static_cast<Position>(clips_.size());
    const Position* known = byId_.findOrInsert(hashOf(clip->id), end, hasId(clip->id));
    if (!known) clips_.push_back(&clip);
    return known;
  }

 public:
  Merge(const ClipList& base, const ClipList& overlay)
      : overlay_(overlay), byId_(base.size() + overlay.size()) {
    clips_.reserve(base.size() + overlay.size());
    for (const ClipPtr& clip : base) {
      if (const Position* known = put(clip)) clips_[*known] = &clip;
    }
    for (const ClipPtr& clip : overlay) {
      if (const Position* known = put(clip)) clips_[*known] = winner(clips_[*known], &clip);
    }
  }

  void drop(const IdSet& ids) {
    for (const std::string& id : ids) {
      if (const Position* known = byId_.find(hashOf(id), hasId(id))) clips_[*known] = nullptr;
    }
  }

  void dropRepeatedTexts() {
    PositionIndex byText(clips_.size());
    for (Position at = 0; at < clips_.size(); ++at) {
      if (!clips_[at]) continue;
      const std::string& text = (*clips_[at])->text;
      Position* kept = byText.findOrInsert(canonicalHash(text), at, [&](Position other) {
        return canonicallyEqual((*clips_[other])->text, text);
      });
      if (!kept) continue;
      Position dropped = at;
      if (standsBefore(clips_[at], clips_[*kept])) std::swap(dropped, *kept);
      clips_[dropped] = nullptr;
    }
  }

  ClipList newestFirst() const {
    // Nearly always nearly everything is the overlay, in its order; the rest is sorted into it.
    std::vector<bool> kept(overlay_.size());
    std::vector<const ClipPtr*> ordered, others;
    for (const ClipPtr* clip : clips_) {
      if (!clip) continue;
      if (isOfOverlay(clip)) {
        kept[static_cast<std::size_t>(clip - &*overlay_.begin())] = true;
      } else {
        others.push_back(clip);
      }
    }
    ordered.reserve(overlay_.size());
    for (std::size_t i = 0; i < overlay_.size(); ++i) {
      if (kept[i]) ordered.push_back(&overlay_[i]);
    }
    if (!std::is_sorted(ordered.begin(), ordered.end(), standsBefore)) {
      others.insert(others.end(), ordered.begin(), ordered.end());
      ordered.clear();
    } else if (others.empty() && ordered.size() == overlay_.size()) {
      return overlay_;
    }
    std::sort(others.begin(), others.end(), standsBefore);
    std::vector<const ClipPtr*> merged;
    merged.reserve(ordered.size() + others.size());
    std::merge(ordered.begin(), ordered.end(), others.begin(), others.end(),
               std::back_inserter(merged), standsBefore);
    std::vector<ClipPtr> list;
    list.reserve(merged.size());
    for (const ClipPtr* clip : merged) list.push_back(*clip);
    return ClipList(std::move(list));
  }

 private:
  const ClipPtr* winner(const ClipPtr* base, const ClipPtr* overlay) {
    const bool overlayWins = (*base)->savedAt <= (*overlay)->savedAt;
    const ClipPtr* winner = overlayWins ? overlay : base;
    const ClipPtr* loser = overlayWins ? base : overlay;
    if (hasTags(**winner) || !hasTags(**loser)) return winner;
    auto merged = std::make_shared<Clip>(**winner);
    merged->tags = (*loser)->tags;
    return &made_.emplace_back(std::move(merged));
  }

  bool isOfOverlay(const ClipPtr* clip) const {
    const auto begin = overlay_.begin(), end = overlay_.end();
    return begin != end && std::less_equal<>()(&*begin, clip) &&
           std::less_equal<>()(clip, &*(end - 1));
  }

  const ClipList& overlay_;
  PositionIndex byId_;                 // positions in clips_
  std::vector<const ClipPtr*> clips_;  // null: dropped
  std::deque<ClipPtr> made_;           // those that are in neither list
};

}  // namespace

ClipList mergeClips(const ClipList& base, const ClipList& overlay, const IdSet& deletedIds) {
  Merge merge(base, overlay);
  merge.drop(deletedIds);
  merge.dropRepeatedTexts();
  return merge.newestFirst();
}

ClipList carryChanges(const ClipList& merged, const HistoryState& before, const HistoryState& now) {
  const std::unordered_set<ClipPtr> known(before.clips.begin(), before.clips.end());
  std::vector<ClipPtr> added;
  std::copy_if(now.clips.begin(), now.clips.end(), std::back_inserter(added),
               [&](const ClipPtr& clip) { return !known.contains(clip); });
  IdSet deleted;
  std::copy_if(now.deletedIds->begin(), now.deletedIds->end(),
               std::inserter(deleted, deleted.end()),
               [&](const std::string& id) { return !before.deletedIds->contains(id); });
  const ClipList carried = mergeClips(merged, ClipList(std::move(added)), deleted);
  const bool same = std::equal(carried.begin(), carried.end(), now.clips.begin(), now.clips.end());
  return same ? now.clips : carried;
}

}  // namespace brimlo
