#pragma once

#include "store/clip.h"

/// The merge of clip lists. Pure; any thread.
namespace brimlo {

/// Merges `overlay` over `base`.
///
/// Of two clips with one id the newer wins, the overlay's when they are equally old; it takes over
/// the other's tags when it has none. Ids of `deletedIds` are dropped. Of the clips with one text,
/// in any canonically equivalent spelling, the newest is kept, of equally old ones that with the
/// smallest id. Returns them newest first, equally old ones by id, so that every machine comes to
/// the same list. Clips are shared wherever they came out unchanged; where all of `overlay` did and
/// nothing else is kept, the very list is returned.
ClipList mergeClips(const ClipList& base, const ClipList& overlay, const IdSet& deletedIds);

/// A history, and the ids that were deleted from it, at one moment.
struct HistoryState {
  ClipList clips;
  IdSetPtr deletedIds;  ///< never null

  bool operator==(const HistoryState&) const = default;
};

/// Carries what happened to the history from `before` to `now` into `merged`, which was made of
/// `before`: clips that came are added, as in `mergeClips`, and ids that were deleted dropped.
/// Where that makes the history of `now`, the very list is returned.
ClipList carryChanges(const ClipList& merged, const HistoryState& before, const HistoryState& now);

}  // namespace brimlo
