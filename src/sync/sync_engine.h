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

/// The state after a run that did everything there was to do. A later run that finds the same
/// history and the same contents of the database has nothing to do. Passed on from run to run;
/// nobody else uses it.
struct SettledState {
  HistoryState history;
  std::string contents;  ///< the database's `contentsStamp`; empty after any other run
  std::vector<Template> templates;
};

/// One sync run: pulls the clips, merges them with the history, pushes what the cloud lacks or has
/// in an older form, deletes what the merge dropped, and pulls the templates.
///
/// `local`: the history and its tombstones. `since`: clips that a phone sent after this moment
/// count as new; milliseconds since 1970. A failure before all clips are pulled makes the outcome
/// unavailable, with nothing written. May take long; any thread. Keeps nothing but `settled`.
SyncOutcome runSync(const HistoryState& local, double since, CloudDatabase& database,
                    const Entitlements& entitlements, SettledState& settled);

}  // namespace brimlo
