#include "platform/cloud/account_database.h"

#include <utility>

#include "platform/cloud/postgres_store.h"
#include "platform/cloud/sqlite_store.h"

namespace brimlo {
namespace {

/// Stands for an account that cannot be used.
class RefusedStore : public RecordStore {
 public:
  explicit RefusedStore(Refusal refusal) : refusal_(std::move(refusal)) {}

  std::variant<Place, Refusal, CloudError> currentPlace() override { return refusal_; }
  std::variant<Changes, CloudError> changesSince(const Place&) override {
    return CloudError{refusal_.why};
  }
  std::variant<Push, PushFault> push(std::span<const RecordPtr>,
                                     std::span<const RecordID>) override {
    return PushFault{PushFault::Kind::kRequest, refusal_.why};
  }

 private:
  Refusal refusal_;
};

}  // namespace

AccountDatabase::AccountDatabase(Places places, std::function<std::vector<RecordPtr>()> seed,
                                 const PostgresPatience& patience, SystemLog& log)
    : places_(std::move(places)), seed_(std::move(seed)), patience_(patience), log_(log) {}

std::unique_ptr<RecordStore> AccountDatabase::makeStore() const {
  if (const auto* refused = std::get_if<RefusedAccount>(&account_)) {
    return std::make_unique<RefusedStore>(refused->refusal);
  }
  if (const auto* postgres = std::get_if<PostgresAccount>(&account_)) {
    return std::make_unique<PostgresStore>(postgres->parameters, patience_, log_);
  }
  return std::make_unique<SqliteStore>(places_.embedded, seed_, log_);
}

std::variant<CloudDatabase::AccountStatus, CloudError> AccountDatabase::accountStatus() {
  Account account = readAccount(places_.accountFile);
  if (!database_ || account != account_) {
    account_ = std::move(account);
    database_ = std::make_unique<MirroredDatabase>(makeStore(), log_);
  }
  return database_->accountStatus();
}

std::string AccountDatabase::contentsStamp() const {
  return database_ ? database_->contentsStamp() : "";
}

std::variant<CloudDatabase::Page, CloudError> AccountDatabase::records(std::string_view type) {
  if (!database_) return CloudError{"the account was not looked up"};
  return database_->records(type);
}

std::variant<CloudDatabase::Page, CloudError> AccountDatabase::recordsContinuing(
    const Cursor& cursor) {
  return database_->recordsContinuing(cursor);
}

std::optional<CloudError> AccountDatabase::modifyRecords(const std::vector<RecordPtr>& saving,
                                                         const std::vector<RecordID>& deleting) {
  return database_->modifyRecords(saving, deleting);
}

}  // namespace brimlo
