#include "sync/sync_scheduler.h"

#include <utility>

namespace brimlo {

/// What a run works on. Either the main thread or the background has it, never both.
struct SyncScheduler::Run {
  HistoryState history;  // what `outcome` was made from
  IdSetPtr pushed;       // the tombstones that the run was given
  SyncOutcome outcome;
  ClipList replaced;  // the history before the outcome
};

SyncScheduler::SyncScheduler(const Services& services, ClipStore& store,
                             TemplateStore& templateStore)
    : services_(services),
      store_(store),
      templateStore_(templateStore),
      syncStatus_(services.strings.text("sync.status.idle")) {}

void SyncScheduler::syncNow(double since) {
  if (isSyncing_.value()) return;
  isSyncing_.set(true);
  const auto run = std::make_shared<Run>();
  run->history = {store_.clips().value(), store_.deletedIds()};
  run->pushed = store_.deletedIds();
  inBackground(run, [since, &database = services_.cloud, &entitlements = services_.entitlements,
                     settled = settled_](Run& given) {
    given.outcome = runSync(given.history, since, database, entitlements, *settled);
  });
}

void SyncScheduler::inBackground(const std::shared_ptr<Run>& run, std::function<void(Run&)> work) {
  services_.background.async([run, work = std::move(work), &queue = services_.queue,
                              apply = anchor_.guard([this, run] { apply(run); })] {
    work(*run);
    queue.async(apply);
  });
}

void SyncScheduler::apply(const std::shared_ptr<Run>& run) {
  HistoryState now{store_.clips().value(), store_.deletedIds()};
  if (run->outcome.status == SyncOutcome::Status::ok && now != run->history) {
    inBackground(run, [now = std::move(now)](Run& given) {
      ClipList& merged = given.outcome.mergedClips;
      merged = carryChanges(merged, given.history, now);
      given.history = now;
    });
    return;
  }
  run->replaced = std::move(now.clips);
  applyOutcome(*run);
  isSyncing_.set(false);
  // Freeing a hundred thousand clips takes a while too.
  services_.background.async([garbage = std::make_shared<Run>(std::exchange(*run, {}))] {});
}

void SyncScheduler::applyOutcome(const Run& run) {
  const SyncOutcome& outcome = run.outcome;
  if (outcome.status == SyncOutcome::Status::unavailable) {
    syncStatus_.set(services_.strings.text("sync.status.unavailable"));
    services_.log.write("sync unavailable: " + outcome.reason.value_or("?"));
    return;
  }
  store_.replaceAll(outcome.mergedClips);
  if (outcome.templatesPulled) {
    std::vector<Template> templates = outcome.templates;
    sortNewestFirst(templates);
    templateStore_.setTemplates(std::move(templates));
    templateStore_.save();
  }
  if (outcome.pushApplied) store_.clearTombstones(run.pushed);
  const std::size_t count = outcome.mergedClips.size();
  syncStatus_.set(services_.strings.textWithCount("sync.status.done", count));
  services_.log.write("sync ok: " + std::to_string(count) + " clips, " +
                      std::to_string(outcome.templates.size()) + " templates, " +
                      std::to_string(outcome.newActionClips.size()) + " new action");
  if (!outcome.newActionClips.empty() && onActionClip_(*outcome.newActionClips.front())) {
    syncStatus_.set(services_.strings.text("sync.status.applied_iphone"));
    services_.log.write("auto-applied iPhone clip to pasteboard");
  }
}

}  // namespace brimlo
