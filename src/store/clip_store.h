#pragma once

#include <string>

#include "base/canonical_text.h"
#include "base/published.h"
#include "platform/file_system.h"
#include "platform/system_log.h"
#include "store/clip.h"
#include "store/stored_value.h"
#include "store/text_index.h"

namespace brimlo {

/// The history: every text ever copied, newest first, and the single owner of its two files.
///
/// `clips` is always sorted by `savedAt`, descending and stable, and after `add` no other clip
/// has the added text; texts are the same when they are canonically equivalent. There is no limit
/// on their number. Every change is on disk when the call that made it returns; where it cannot be
/// saved, it holds in memory and the log says so. Never reads the clock. Main thread.
class ClipStore {
 public:
  /// Loads "clips.json" and "deletedClipIds.json" from `dataFolder`. A file that is missing,
  /// unreadable or not of its form counts as empty.
  ClipStore(FileSystem& files, SystemLog& log, const std::string& dataFolder);

  const Published<ClipList>& clips() const { return clips_; }

  /// Ids of clips that were removed here and are still to be deleted in the cloud, by the next
  /// successful sync push. Never null.
  const IdSetPtr& deletedIds() const { return deletedIds_; }

  const std::string& fileURL() const { return clipsFile_.path(); }

  enum class AddResult { kUnchanged, kChanged };
  /// Adds a clip, or, where the history has its text, moves that clip to its new time with its id
  /// and tags kept. Does nothing for an empty text or the text of the newest clip.
  /// `savedAt`: when it happened, milliseconds since 1970, finite.
  AddResult add(const CanonicalText& text, std::string source, double savedAt);

  /// Makes `clips`, once sorted, the whole history. Repeated ids and texts stay. The file is left
  /// alone where it is known to hold this very list.
  void replaceAll(const ClipList& clips);

  /// Empties the history and puts the ids of all its clips among `deletedIds`.
  void clearAll();

  /// Forgets those of `deletedIds` that are among `pushed`, the ids that a sync push was given;
  /// writes nothing when there are none.
  void clearTombstones(const IdSetPtr& pushed);

  /// Tries again to save what an earlier failure left in memory only.
  void saveUnsaved();

 private:
  void publish(ClipList list);
  void saveClips();
  void saveTombstones();

  StoredValue<ClipList> clipsFile_;
  StoredValue<IdSetPtr> tombstonesFile_;
  Published<ClipList> clips_{ClipList()};
  TextIndex index_;  // of clips_, unless it is stale
  bool indexStale_ = true;
  IdSetPtr deletedIds_ = std::make_shared<IdSet>();
};

}  // namespace brimlo
