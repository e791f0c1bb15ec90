#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/background_queue.h"
#include "platform/cloud_database.h"
#include "platform/entitlements.h"
#include "support/journal.h"

namespace brimlo::test {

/// A database in memory that pages, and fails on demand. Several may show the same records.
class FakeCloud : public CloudDatabase {
 public:
  using Records = std::map<std::pair<std::string, std::string>, RecordPtr>;

  explicit FakeCloud(std::shared_ptr<Records> shown = std::make_shared<Records>())
      : records_(std::move(shown)) {}

  std::variant<AccountStatus, CloudError> accountStatus() override {
    asked.push_back("account");
    if (failing.contains("account")) return CloudError{"no answer"};
    return status;
  }

  std::string contentsStamp() const override {
    std::string stamp = "contents";
    for (const auto& [id, record] : *records_) {
      stamp += " " + std::to_string(reinterpret_cast<std::uintptr_t>(record.get()));
    }
    return stamp;
  }

  std::variant<Page, CloudError> records(std::string_view type) override {
    return recordsContinuing({std::string(type), 0});
  }

  std::variant<Page, CloudError> recordsContinuing(const Cursor& cursor) override {
    asked.push_back(cursor.type + " " + std::to_string(cursor.position));
    if (failing.contains(asked.back())) return CloudError{"gone"};
    Page page;
    std::size_t at = 0;
    for (const auto& [id, record] : *records_) {
      if (id.first != cursor.type || at++ < cursor.position) continue;
      if (page.records.size() == pageSize) {
        page.cursor = Cursor{cursor.type, cursor.position + pageSize};
        break;
      }
      page.records.push_back(record);
    }
    return page;
  }

  std::optional<CloudError> modifyRecords(const std::vector<RecordPtr>& saving,
                                          const std::vector<RecordID>& deleting) override {
    asked.push_back("modify");
    if (failing.contains("modify")) return CloudError{"gone"};
    for (const RecordPtr& record : saving) put(record);
    for (const RecordID& id : deleting) records_->erase({id.type, id.name});
    return std::nullopt;
  }

  /// Another machine saves a record; a null one is one that the database fails to give.
  void put(const RecordPtr& record) { (*records_)[{record->id.type, record->id.name}] = record; }
  void put(CloudRecord record) { put(std::make_shared<CloudRecord>(std::move(record))); }
  Records& all() { return *records_; }

  std::size_t pageSize = 3;
  AccountStatus status = AccountStatus::kAvailable;
  std::set<std::string> failing;   ///< requests as they stand in `asked`
  std::vector<std::string> asked;  ///< "account", "Clip 0", "Clip 3", "modify"

 private:
  std::shared_ptr<Records> records_;
};

/// Blocks that run when told.
class FakeBackground : public BackgroundQueue, public Journaling {
 public:
  void async(std::function<void()> block) override {
    note("background");
    blocks_.push_back(std::move(block));
  }

  /// Runs what is queued now.
  void run() {
    for (auto& block : std::exchange(blocks_, {})) block();
  }

 private:
  std::vector<std::function<void()>> blocks_;
};

class FakeEntitlements : public Entitlements {
 public:
  std::optional<std::vector<std::string>> stringList(std::string_view name) const override {
    return name == "com.apple.developer.icloud-services" ? services : std::nullopt;
  }

  std::optional<std::vector<std::string>> services{{"CloudKit"}};
};

}  // namespace brimlo::test
