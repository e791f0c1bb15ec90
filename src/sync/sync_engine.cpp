#include "sync/sync_engine.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "sync/position_index.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

constexpr std::string_view kServicesEntitlement = "com.apple.developer.icloud-services";
// On its way through a record, which counts in seconds, a time may change in its last bits.
constexpr double kPushToleranceMs = 0.5;

bool hasCloudEntitlement(const Entitlements& entitlements) {
  const auto services = entitlements.stringList(kServicesEntitlement);
  return services && std::any_of(services->begin(), services->end(), [](const std::string& name) {
           return name == "CloudKit" || name == "CloudKit-Anonymous";
         });
}

/// Why the account cannot be used; none when it can.
std::optional<std::string> accountFault(CloudDatabase& database) {
  using Status = CloudDatabase::AccountStatus;
  const auto answer = database.accountStatus();
  if (const auto* error = std::get_if<CloudError>(&answer)) {
    return "accountStatus:" + error->description;
  }
  switch (std::get<Status>(answer)) {
    case Status::kAvailable:
      return std::nullopt;
    case Status::kCouldNotDetermine:
      return "account:couldNotDetermine";
    case Status::kRestricted:
      return "account:restricted";
    case Status::kNoAccount:
      return "account:noAccount";
    case Status::kTemporarilyUnavailable:
      return "account:temporarilyUnavailable";
  }
  return "account:unknown";
}

/// Gives every record of `type` to `take`. Those that the database failed to give are left out.
std::optional<CloudError> fetchAll(CloudDatabase& database, std::string_view type,
                                   const std::function<void(const CloudRecord&)>& take) {
  auto answer = database.records(type);
  while (true) {
    if (auto* error = std::get_if<CloudError>(&answer)) return std::move(*error);
    const auto& page = std::get<CloudDatabase::Page>(answer);
    for (const RecordPtr& record : page.records) {
      if (record) take(*record);
    }
    if (!page.cursor) return std::nullopt;
    answer = database.recordsContinuing(*page.cursor);
  }
}

/// Finds clips of a list by their ids.
class ClipsById {
  static std::size_t hashOf(std::string_view id) { return std::hash<std::string_view>()(id); }
  auto hasId(const std::string& id) const {
    return [this, &id](Position at) { return clips_[at]->id == id; };
  }

 public:
  /// Of several with one id, finds the last.
  explicit ClipsById(const ClipList& clips) : clips_(clips), index_(clips.size()) {
    for (Position at = 0; at < clips.size(); ++at) {
      const std::string& id = clips[at]->id;
      if (Position* earlier = index_.findOrInsert(hashOf(id), at, hasId(id))) *earlier = at;
    }
  }

  /// Null where there is none.
  const ClipPtr* find(const std::string& id) {
    const Position* at = index_.find(hashOf(id), hasId(id));
    return at ? &clips_[*at] : nullptr;
  }

 private:
  const ClipList& clips_;
  PositionIndex index_;
};

}  // namespace

SyncOutcome runSync(const HistoryState& local, double since, CloudDatabase& database,
                    const Entitlements& entitlements, SettledState& settled) {
  const auto unavailable = [](std::string reason) {
    SyncOutcome outcome;
    outcome.reason = std::move(reason);
    return outcome;
  };
  if (!hasCloudEntitlement(entitlements)) return unavailable("no-entitlement");
  if (auto fault = accountFault(database)) return unavailable(std::move(*fault));

  if (!settled.contents.empty() && settled.history == local &&
      settled.contents == database.contentsStamp()) {
    return {SyncOutcome::Status::ok, {}, local.clips, {}, settled.templates, true, true};
  }
  settled = {};

  ClipsById localById(local.clips);
  std::vector<ClipPtr> pulled;
  const auto pullError = fetchAll(database, kClipRecord, [&](const CloudRecord& record) {
    auto clip = clipFromRecord(record);
    if (!clip) return;
    // Nearly all of them equal a clip of the history, which is then shared.
    const ClipPtr* known = localById.find(clip->id);
    pulled.push_back(known && **known == *clip ? *known : std::make_shared<Clip>(std::move(*clip)));
  });
  if (pullError) return unavailable("pull:" + pullError->description);
  const ClipList remote(std::move(pulled));

  SyncOutcome outcome;
  outcome.status = SyncOutcome::Status::ok;
  outcome.mergedClips = mergeClips(remote, local.clips, *local.deletedIds);

  std::vector<RecordPtr> saving;
  ClipsById remoteById(remote);
  for (const ClipPtr& clip : outcome.mergedClips) {
    const ClipPtr* there = remoteById.find(clip->id);
    if (there && !((*there)->savedAt + kPushToleranceMs < clip->savedAt)) continue;
    saving.push_back(std::make_shared<CloudRecord>(recordFromClip(*clip)));
  }
  std::vector<RecordID> deleting;
  ClipsById mergedById(outcome.mergedClips);
  for (const ClipPtr& clip : remote) {
    if (!mergedById.find(clip->id)) deleting.push_back({std::string(kClipRecord), clip->id});
  }
  outcome.pushApplied =
      (saving.empty() && deleting.empty()) || !database.modifyRecords(saving, deleting);

  for (const ClipPtr& clip : outcome.mergedClips) {
    if (clip->source == "action" && clip->savedAt > since && !localById.find(clip->id)) {
      outcome.newActionClips.push_back(clip);
    }
  }

  outcome.templatesPulled = !fetchAll(database, kTemplateRecord, [&](const CloudRecord& record) {
    if (auto pulledTemplate = templateFromRecord(record)) {
      outcome.templates.push_back(std::move(*pulledTemplate));
    }
  });
  if (!outcome.templatesPulled) outcome.templates.clear();

  if (outcome.pushApplied && outcome.templatesPulled) {
    settled = {
        {outcome.mergedClips, local.deletedIds}, database.contentsStamp(), outcome.templates};
  }
  return outcome;
}

}  // namespace brimlo
