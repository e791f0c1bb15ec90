#pragma once

#include <memory>
#include <vector>

#include "platform/cloud/postgres_connection.h"
#include "platform/cloud/record_store.h"
#include "platform/system_log.h"

namespace brimlo {

/// Records on a PostgreSQL server that many machines and people share. A person is a role of the
/// database and sees only their own records, by row-level security. The connection is kept, and
/// renewed when it breaks.
class PostgresStore : public RecordStore {
 public:
  PostgresStore(PostgresParameters parameters, const PostgresPatience& patience, SystemLog& log);

  std::variant<Place, Refusal, CloudError> currentPlace() override;
  std::variant<Changes, CloudError> changesSince(const Place& known) override;
  std::variant<Push, PushFault> push(std::span<const RecordPtr> saving,
                                     std::span<const RecordID> deleting) override;

 private:
  using Fault = PostgresConnection::Fault;

  std::optional<Fault> connect();
  std::optional<Fault> look(std::int64_t& version, Place& place);
  std::optional<Fault> makeSchema();
  std::optional<Fault> exchange(const std::vector<PostgresConnection::Statement>& statements);
  void dropBrokenConnection();

  PostgresParameters parameters_;
  PostgresPatience patience_;
  SystemLog& log_;
  std::unique_ptr<PostgresConnection> connection_;  // null or usable, between calls
};

}  // namespace brimlo
