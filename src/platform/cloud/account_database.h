#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/cloud/account.h"
#include "platform/cloud/mirrored_database.h"
#include "platform/cloud/postgres_connection.h"

namespace brimlo {

/// The database of the person's account. The account's file is read anew at every run, so that a
/// changed line takes effect without a restart.
class AccountDatabase : public CloudDatabase {
 public:
  struct Places {
    std::string accountFile;  ///< see `readAccount`
    std::string embedded;     ///< the file of the embedded database
  };
  /// `seed`: gives the records that a new embedded database begins with.
  AccountDatabase(Places places, std::function<std::vector<RecordPtr>()> seed,
                  const PostgresPatience& patience, SystemLog& log);

  std::variant<AccountStatus, CloudError> accountStatus() override;
  std::string contentsStamp() const override;
  std::variant<Page, CloudError> records(std::string_view type) override;
  std::variant<Page, CloudError> recordsContinuing(const Cursor& cursor) override;
  std::optional<CloudError> modifyRecords(const std::vector<RecordPtr>& saving,
                                          const std::vector<RecordID>& deleting) override;

 private:
  std::unique_ptr<RecordStore> makeStore() const;

  Places places_;
  std::function<std::vector<RecordPtr>()> seed_;
  PostgresPatience patience_;
  SystemLog& log_;
  Account account_;
  std::unique_ptr<MirroredDatabase> database_;
};

}  // namespace brimlo
