#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/cloud/record_store.h"
#include "platform/cloud_database.h"
#include "platform/system_log.h"

namespace brimlo {

/// A database that keeps in memory what it has pulled: queries are answered from there, and the
/// store is asked only for what changed. So a run that finds nothing new costs one small exchange,
/// that of `accountStatus`, however many records there are.
class MirroredDatabase : public CloudDatabase {
 public:
  MirroredDatabase(std::unique_ptr<RecordStore> store, SystemLog& log);

  std::variant<AccountStatus, CloudError> accountStatus() override;
  std::string contentsStamp() const override;
  std::variant<Page, CloudError> records(std::string_view type) override;
  std::variant<Page, CloudError> recordsContinuing(const Cursor& cursor) override;
  /// Pushes in portions: those that arrived before a connection broke need not be pushed again.
  std::optional<CloudError> modifyRecords(const std::vector<RecordPtr>& saving,
                                          const std::vector<RecordID>& deleting) override;

 private:
  using Records = std::vector<RecordPtr>;  // of one type, by name

  std::optional<CloudError> refresh();
  std::optional<CloudError> push(std::span<const RecordPtr> saving,
                                 std::span<const RecordID> deleting);
  void apply(std::span<const RecordPtr> saved, std::span<const RecordID> deleted);

  std::unique_ptr<RecordStore> store_;
  SystemLog& log_;
  std::map<std::string, Records, std::less<>> mirror_;
  Place mirrored_;              // what mirror_ holds
  Place current_;               // what the store had at the last look
  std::string accountTrouble_;  // what the log was told last; empty when all is well
  std::string pushTrouble_;
};

}  // namespace brimlo
