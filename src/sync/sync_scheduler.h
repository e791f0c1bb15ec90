#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/published.h"
#include "base/weak_anchor.h"
#include "platform/background_queue.h"
#include "platform/cloud_database.h"
#include "platform/entitlements.h"
#include "platform/localized_strings.h"
#include "platform/main_queue.h"
#include "platform/system_log.h"
#include "store/clip_store.h"
#include "store/template_store.h"
#include "sync/sync_engine.h"

namespace brimlo {

/// Makes sync runs, one at a time, and applies their outcome.
///
/// A run works in the background on copies. What happens to the history meanwhile is not lost: new
/// clips are carried into the outcome, and cleared ones do not come back. Main thread, which is
/// blocked only while two lists are exchanged and what changed is saved.
class SyncScheduler {
 public:
  struct Services {
    BackgroundQueue& background;
    CloudDatabase& cloud;
    const Entitlements& entitlements;
    SystemLog& log;
    MainQueue& queue;
    const LocalizedStrings& strings;
  };

  SyncScheduler(const Services& services, ClipStore& store, TemplateStore& templateStore);

  /// `onActionClip` is given the newest clip that a phone asks this machine to apply, once a run
  /// has brought it into the history; it returns whether it was applied.
  void setOnActionClip(std::function<bool(const Clip&)> onActionClip) {
    onActionClip_ = std::move(onActionClip);
  }

  /// Starts a run. Does nothing while there is one. `since`: clips that a phone sent later are to
  /// be applied; milliseconds since 1970.
  void syncNow(double since);

  /// How the last run ended, in the person's language.
  const Published<std::string>& syncStatus() const { return syncStatus_; }
  const Published<bool>& isSyncing() const { return isSyncing_; }

 private:
  struct Run;

  void apply(const std::shared_ptr<Run>& run);
  void applyOutcome(const Run& run);
  void inBackground(const std::shared_ptr<Run>& run, std::function<void(Run&)> work);

  Services services_;
  ClipStore& store_;
  TemplateStore& templateStore_;
  Published<std::string> syncStatus_;
  Published<bool> isSyncing_{false};
  std::shared_ptr<SettledState> settled_ =
      std::make_shared<SettledState>();  // the run under way alone uses it
  std::function<bool(const Clip&)> onActionClip_ = [](const Clip&) { return false; };
  WeakAnchor anchor_;
};

}  // namespace brimlo
