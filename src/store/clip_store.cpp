#include "store/clip_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/unicode_text.h"
#include "base/uuid.h"
#include "store/clip_file.h"

namespace brimlo {
namespace {

bool isNewer(const ClipPtr& a, const ClipPtr& b) {
  return a->savedAt > b->savedAt;
}

/// Where `clip` stands in `list`, which holds it.
std::size_t positionOf(const ClipList& list, const Clip& clip) {
  auto at = std::partition_point(list.begin(), list.end(), [&](const ClipPtr& other) {
    return other->savedAt > clip.savedAt;
  });
  while (at->get() != &clip) ++at;
  return static_cast<std::size_t>(at - list.begin());
}

}  // namespace

ClipStore::ClipStore(FileSystem& files, SystemLog& log, const std::string& dataFolder)
    : clipsFile_(files, log, dataFolder + "/clips.json"),
      tombstonesFile_(files, log, dataFolder + "/deletedClipIds.json") {
  if (auto clips = clipsFile_.load(decodeClips)) {
    const bool inOrder = std::is_sorted(clips->begin(), clips->end(), isNewer);
    if (!inOrder) std::stable_sort(clips->begin(), clips->end(), isNewer);
    const ClipList list(std::move(*clips));
    if (inOrder) clipsFile_.setHeld(list);
    clips_.set(list);
  }
  if (auto ids = tombstonesFile_.load(decodeIds)) {
    deletedIds_ = std::make_shared<IdSet>(std::move(*ids));
    tombstonesFile_.setHeld(deletedIds_);
  }
}

ClipStore::AddResult ClipStore::add(std::string text, std::string source, double savedAt) {
  const ClipList current = clips_.value();
  if (text.empty()) return AddResult::kUnchanged;
  if (!current.empty() && canonicallyEqual(current[0]->text, text)) return AddResult::kUnchanged;

  if (std::exchange(indexStale_, false)) index_.rebuild(current);
  std::vector<std::size_t> replaced;  // where clips of this text stand, in list order
  for (const Clip* clip : index_.find(text)) replaced.push_back(positionOf(current, *clip));
  std::sort(replaced.begin(), replaced.end());

  auto clip = std::make_shared<Clip>();
  if (replaced.empty()) {
    clip->id = makeUuid();
  } else {
    const Clip& previous = *current[replaced.front()];
    clip->id = previous.id;
    clip->tags = previous.tags;
  }
  clip->text = std::move(text);
  clip->savedAt = savedAt;
  clip->source = std::move(source);

  // Put in front and sorted stably, the clip would come to stand before its equals in time.
  std::vector<ClipPtr> list;
  list.reserve(current.size() + 1);
  const auto place =
      std::partition_point(current.begin(), current.end(),
                           [savedAt](const ClipPtr& other) { return other->savedAt > savedAt; });
  auto copied = current.begin();
  const auto copyUpTo = [&](auto end) {
    while (!replaced.empty() && current.begin() + replaced.front() < end) {
      const auto skipped = current.begin() + replaced.front();
      list.insert(list.end(), copied, skipped);
      index_.erase(**skipped);
      copied = skipped + 1;
      replaced.erase(replaced.begin());
    }
    list.insert(list.end(), copied, end);
    copied = end;
  };
  copyUpTo(place);
  index_.insert(*clip);
  list.push_back(std::move(clip));
  copyUpTo(current.end());

  publish(ClipList(std::move(list)));
  return AddResult::kChanged;
}

void ClipStore::replaceAll(const ClipList& clips) {
  if (clips == clips_.value()) {
    if (tombstonesFile_.unsaved()) saveTombstones();
    publish(clips);
    return;
  }
  indexStale_ = true;
  if (std::is_sorted(clips.begin(), clips.end(), isNewer)) {
    publish(clips);
    return;
  }
  std::vector<ClipPtr> sorted(clips.begin(), clips.end());
  std::stable_sort(sorted.begin(), sorted.end(), isNewer);
  publish(ClipList(std::move(sorted)));
}

void ClipStore::clearAll() {
  auto ids = std::make_shared<IdSet>(*deletedIds_);
  for (const ClipPtr& clip : clips_.value()) ids->insert(clip->id);
  deletedIds_ = std::move(ids);
  saveTombstones();
  replaceAll(ClipList());
}

void ClipStore::clearTombstones(const IdSetPtr& pushed) {
  if (deletedIds_->empty() || pushed->empty()) return;
  auto left = std::make_shared<IdSet>();
  if (pushed != deletedIds_) {
    std::copy_if(deletedIds_->begin(), deletedIds_->end(), std::inserter(*left, left->end()),
                 [&](const std::string& id) { return !pushed->contains(id); });
  }
  deletedIds_ = std::move(left);
  saveTombstones();
}

void ClipStore::saveUnsaved() {
  if (tombstonesFile_.unsaved()) saveTombstones();
  if (clipsFile_.unsaved()) saveClips();
}

void ClipStore::publish(ClipList list) {
  clips_.set(std::move(list));
  saveClips();
}

void ClipStore::saveClips() {
  // Nearly every change puts a clip before all that is on disk already.
  const ClipList list = clips_.value();
  const ClipList saved = clipsFile_.held().value_or(ClipList());
  const std::size_t added = list.size() - std::min(list.size(), saved.size());
  const bool grown = std::equal(list.begin() + static_cast<std::ptrdiff_t>(added), list.end(),
                                saved.begin(), saved.end());
  clipsFile_.save(list,
                  [&](ByteSink& sink) { encodeClips(list, grown ? added : list.size(), sink); });
}

void ClipStore::saveTombstones() {
  tombstonesFile_.save(deletedIds_, [this](ByteSink& sink) { encodeIds(*deletedIds_, sink); });
}

}  // namespace brimlo
