#include "platform/cloud/mirrored_database.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace brimlo {
namespace {

constexpr std::size_t kPageRecords = 10'000;
constexpr std::size_t kPushRecords = 1'000;
constexpr std::size_t kPushBytes = std::size_t{8} << 20;

bool byName(const RecordPtr& a, const RecordPtr& b) {
  return a->id.name < b->id.name;
}

std::size_t sizeOf(const CloudRecord& record) {
  std::size_t size = record.id.name.size();
  for (const auto& [key, value] : record.fields) {
    if (const auto* text = std::get_if<std::string>(&value)) size += text->size();
  }
  return size;
}

/// How many of `records` go in one portion: at least one.
std::size_t portion(std::span<const RecordPtr> records) {
  std::size_t count = 0, bytes = 0;
  while (count < records.size() && count < kPushRecords) {
    bytes += sizeOf(*records[count]);
    if (count > 0 && bytes > kPushBytes) break;
    ++count;
  }
  return count;
}

/// There is a run every half minute; a trouble that lasts is logged once.
void logOnce(SystemLog& log, std::string& told, const std::string& trouble) {
  if (std::exchange(told, trouble) != trouble) log.write("sync database: " + trouble);
}

}  // namespace

MirroredDatabase::MirroredDatabase(std::unique_ptr<RecordStore> store, SystemLog& log)
    : store_(std::move(store)), log_(log) {}

std::variant<CloudDatabase::AccountStatus, CloudError> MirroredDatabase::accountStatus() {
  auto answer = store_->currentPlace();
  if (auto* error = std::get_if<CloudError>(&answer)) return std::move(*error);
  if (const auto* refusal = std::get_if<RecordStore::Refusal>(&answer)) {
    logOnce(log_, accountTrouble_, refusal->why);
    return refusal->status;
  }
  if (!accountTrouble_.empty()) log_.write("sync database: available again");
  accountTrouble_.clear();
  current_ = std::get<Place>(std::move(answer));
  return AccountStatus::kAvailable;
}

std::string MirroredDatabase::contentsStamp() const {
  return current_.revision < 0 ? "" : std::to_string(current_.revision) + " " + current_.stamp;
}

std::variant<CloudDatabase::Page, CloudError> MirroredDatabase::records(std::string_view type) {
  if (auto error = refresh()) return std::move(*error);
  return recordsContinuing({std::string(type), 0});
}

std::variant<CloudDatabase::Page, CloudError> MirroredDatabase::recordsContinuing(
    const Cursor& cursor) {
  const Records& all = mirror_[cursor.type];
  const std::size_t begin = std::min(cursor.position, all.size());
  const std::size_t end = std::min(all.size(), begin + kPageRecords);
  Page page{{all.begin() + static_cast<std::ptrdiff_t>(begin),
             all.begin() + static_cast<std::ptrdiff_t>(end)},
            std::nullopt};
  if (end < all.size()) page.cursor = Cursor{cursor.type, end};
  return page;
}

std::optional<CloudError> MirroredDatabase::refresh() {
  if (mirrored_ == current_) return std::nullopt;
  auto answer = store_->changesSince(mirrored_);
  if (auto* error = std::get_if<CloudError>(&answer)) return std::move(*error);
  const auto& changes = std::get<RecordStore::Changes>(answer);
  if (changes.anew) mirror_.clear();
  apply(changes.saved, changes.deleted);
  mirrored_ = current_ = changes.place;
  return std::nullopt;
}

void MirroredDatabase::apply(std::span<const RecordPtr> saved, std::span<const RecordID> deleted) {
  // Deletions first: a record that was saved may have been deleted before.
  std::map<std::string_view, std::set<std::string_view>> gone;
  for (const RecordID& id : deleted) gone[id.type].insert(id.name);
  for (const auto& [type, names] : gone) {
    if (const auto found = mirror_.find(type); found != mirror_.end()) {
      std::erase_if(found->second, [names = &names](const RecordPtr& record) {
        return names->contains(record->id.name);
      });
    }
  }
  std::map<std::string_view, Records> came;
  for (const RecordPtr& record : saved) came[record->id.type].push_back(record);
  for (auto& [type, records] : came) {
    std::sort(records.begin(), records.end(), byName);
    Records& known = mirror_[std::string(type)];
    Records merged;
    merged.reserve(known.size() + records.size());
    std::set_union(records.begin(), records.end(), known.begin(), known.end(),
                   std::back_inserter(merged), byName);  // of two equals, takes the first one
    known = std::move(merged);
  }
}

std::optional<CloudError> MirroredDatabase::modifyRecords(const std::vector<RecordPtr>& saving,
                                                          const std::vector<RecordID>& deleting) {
  std::span<const RecordPtr> toSave(saving);
  std::span<const RecordID> toDelete(deleting);
  while (!toSave.empty() || !toDelete.empty()) {
    const std::size_t saves = portion(toSave);
    const std::size_t deletes = std::min(toDelete.size(), kPushRecords);
    if (auto error = push(toSave.first(saves), toDelete.first(deletes))) return error;
    toSave = toSave.subspan(saves);
    toDelete = toDelete.subspan(deletes);
  }
  return std::nullopt;
}

std::optional<CloudError> MirroredDatabase::push(std::span<const RecordPtr> saving,
                                                 std::span<const RecordID> deleting) {
  const auto answer = store_->push(saving, deleting);
  if (const auto* pushed = std::get_if<RecordStore::Push>(&answer)) {
    // If somebody else's changes came in between, the next query pulls both theirs and these.
    if (pushed->before == mirrored_) {
      apply(saving, deleting);
      mirrored_ = current_ = pushed->after;
    }
    return std::nullopt;
  }
  const auto& fault = std::get<RecordStore::PushFault>(answer);
  if (fault.kind == RecordStore::PushFault::Kind::kRequest) {
    logOnce(log_, pushTrouble_, "push failed: " + fault.why);
    return CloudError{fault.why};
  }
  if (saving.size() + deleting.size() == 1) {
    logOnce(log_, pushTrouble_, "a record was refused: " + fault.why);
    return std::nullopt;
  }
  // One of them is at fault; the others must arrive all the same.
  const std::size_t saves = saving.size() / 2, deletes = (deleting.size() + 1) / 2;
  if (auto error = push(saving.first(saves), deleting.first(deletes))) return error;
  return push(saving.subspan(saves), deleting.subspan(deletes));
}

}  // namespace brimlo
