#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/cloud_database.h"
#include "platform/entitlements.h"
#include "store/template.h"
#include "sync/merge.h"

namespace brimlo {

/// What a sync run came to, a value.
struct SyncOutcome {
  enum class Status { ok, unavailable };

  Status status = Status::unavailable;  ///< whether the run reached the cloud and pulled the clips
  std::optional<std::string> reason;    ///< why it is unavailable
  ClipList mergedClips;                 ///< newest first
  std::vector<ClipPtr> newActionClips;  ///< to be applied on this machine, newest first
  std::vector<Template> templates;      ///< all of the cloud's, as the query gave them
  bool templatesPulled = false;         ///< false: that query failed, and nothing is known of them
  /// Whether the cloud now has every clip of `mergedClips` and none that was deleted here: there
  /// was nothing to push, or the request succeeded.
  bool pushApplied = false;
};

/// What a run that did all there was to do has left: the next one that meets just this has nothing
/// to do, and need not work that out. Handed from run to run, and otherwise nobody's.
struct SettledState {
  HistoryState history;
  std::string
      contents;  ///< the database's `contentsStamp`; empty when the last run was no such run
  std::vector<Template> templates;
};

/// One sync run: pulls the clips, merges them with the history, pushes what the cloud lacks or has
/// in an older form, deletes what the merge dropped, and pulls the templates.
///
/// `local`: the history and its tombstones. `since`: clips from a phone that are newer are new; in
/// milliseconds since 1970. A failure before the clips are pulled makes the outcome unavailable,
/// with nothing written. Takes its time; any thread, on copies, keeps nothing but `settled`.
SyncOutcome runSync(const HistoryState& local, double since, CloudDatabase& database,
                    const Entitlements& entitlements, SettledState& settled);

}  // namespace brimlo
