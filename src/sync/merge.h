#pragma once

#include "store/clip.h"

/// The merge of clip lists. Pure; any thread.
namespace brimlo {

/// Merges `overlay` over `base`.
///
/// Of two clips with the same id the newer wins, or the overlay's when they are equally old; it
/// takes over the other's tags when it has none. Ids of `deletedIds` are dropped. Of clips with
/// canonically equivalent texts the newest is kept, of equally old ones that with the smallest id.
/// Returns them newest first, equally old ones by id, so that every machine arrives at the same
/// list. Unchanged clips are shared; where the result is all of `overlay` and nothing else, that
/// very list is returned.
ClipList mergeClips(const ClipList& base, const ClipList& overlay, const IdSet& deletedIds);

/// A history, and the ids that were deleted from it, at one moment.
struct HistoryState {
  ClipList clips;
  IdSetPtr deletedIds;  ///< never null

  bool operator==(const HistoryState&) const = default;
};

/// Applies to `merged`, which was made from `before`, what has happened to the history between
/// `before` and `now`: new clips are merged in, and newly deleted ids are dropped. Where the result
/// equals the history of `now`, that very list is returned.
ClipList carryChanges(const ClipList& merged, const HistoryState& before, const HistoryState& now);

}  // namespace brimlo
