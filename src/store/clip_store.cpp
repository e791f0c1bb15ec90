#include "store/clip_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/uuid.h"
#include "store/clip_file.h"

namespace brimlo {
namespace {

bool isNewer(const ClipPtr& a, const ClipPtr& b) {
  return a->savedAt > b->savedAt;
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
  }
}

ClipStore::AddResult ClipStore::add(const CanonicalText& text, std::string source, double savedAt) {
  if (text.text().empty()) return AddResult::kUnchanged;
  const ClipList current = clips_.value();
  if (std::exchange(indexStale_, false)) index_.rebuild(current);
  const std::vector<const Clip*> same = index_.find(text);
  const auto hasText = [&](const ClipPtr& clip) {
    return std::find(same.begin(), same.end(), clip.get()) != same.end();
  };
  if (!current.empty() && hasText(current[0])) return AddResult::kUnchanged;

  auto clip = std::make_shared<Clip>(Clip{{}, text.text(), savedAt, std::move(source), {}});
  const Clip* replaced = nullptr;  // the newest one with this text
  std::vector<ClipPtr> list;
  list.reserve(current.size() + 1);
  list.push_back(clip);
  for (const ClipPtr& other : current) {
    if (!hasText(other)) {
      list.push_back(other);
      continue;
    }
    if (!replaced) replaced = other.get();
    index_.erase(text.hash(), *other);
  }
  clip->id = replaced ? replaced->id : makeUuid();
  if (replaced) clip->tags = replaced->tags;
  index_.insert(text.hash(), *clip);

  // Of equal times the later addition is first.
  const auto place = std::partition_point(
      list.begin() + 1, list.end(), [&](const ClipPtr& other) { return isNewer(other, clip); });
  std::rotate(list.begin(), list.begin() + 1, place);
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
