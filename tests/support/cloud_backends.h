#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/cloud/mirrored_database.h"
#include "platform/cloud/postgres_store.h"
#include "platform/cloud/sqlite_store.h"
#include "support/fake_cloud.h"
#include "support/fakes.h"

namespace brimlo::test {

using Status = CloudDatabase::AccountStatus;

inline std::string freshName() {
  static int count = 0;
  return "t" + std::to_string(++count);
}

/// A path in the temporary folder of the server that the test was started beside.
inline std::string freshFile() {
  return std::getenv("PGHOST") + ("/" + freshName());
}

/// The three kinds of account. Each session is another machine's, or another process's.
class FakeBackend {
 public:
  std::unique_ptr<CloudDatabase> session() {
    auto session = std::make_unique<FakeCloud>(records_);
    session->pageSize = 5'000;
    return session;
  }

 private:
  std::shared_ptr<FakeCloud::Records> records_ = std::make_shared<FakeCloud::Records>();
};

class SqliteBackend {
 public:
  std::unique_ptr<RecordStore> store() {
    return std::make_unique<SqliteStore>(
        file, [this] { return seed; }, log);
  }
  std::unique_ptr<CloudDatabase> session() {
    return std::make_unique<MirroredDatabase>(store(), log);
  }

  std::string file = freshFile();
  std::vector<RecordPtr> seed;
  FakeLog log;
};

/// A database of its own on that server, where everybody is who they say; over TCP a password is
/// asked for. `more`: what is different from a session of the administrator on the socket.
class PostgresBackend {
 public:
  PostgresBackend() { sql("CREATE DATABASE " + database, {{"dbname", "postgres"}}); }

  std::unique_ptr<RecordStore> store(const PostgresParameters& more = {}) {
    return std::make_unique<PostgresStore>(parameters(more), patience, log);
  }
  std::unique_ptr<CloudDatabase> session(const PostgresParameters& more = {}) {
    return std::make_unique<MirroredDatabase>(store(more), log);
  }

  void sql(const std::string& script, const PostgresParameters& more = {}) {
    EXPECT_EQ(sqlFault(script, more), "") << script;
  }
  /// The code with which the server refuses `script`; empty when it does not.
  std::string sqlFault(const std::string& script, const PostgresParameters& more) {
    auto opened = PostgresConnection::open(parameters(more), {});
    if (const auto* fault = std::get_if<PostgresConnection::Fault>(&opened)) return fault->what;
    const auto& connection = std::get<std::unique_ptr<PostgresConnection>>(opened);
    const auto fault = connection->runScript(script.c_str());
    return fault ? fault->state : "";
  }

  std::string database = freshName();
  PostgresPatience patience;
  FakeLog log;

 private:
  PostgresParameters parameters(PostgresParameters more) const {
    const PostgresParameters usual = {{"host", std::getenv("PGHOST")},
                                      {"port", std::getenv("PGPORT")},
                                      {"dbname", database},
                                      {"user", "postgres"}};
    more.insert(more.begin(), usual.begin(),
                usual.end());  // of two with one keyword, the last wins
    return more;
  }
};

inline RecordPtr clipRecord(const std::string& name, std::string text = "t") {
  return std::make_shared<CloudRecord>(CloudRecord{
      {"Clip", name}, {{"text", std::move(text)}, {"savedAt", Date{5}}, {"source", "manual"}}});
}

inline Status statusOf(CloudDatabase& database) {
  const auto answer = database.accountStatus();
  if (const auto* error = std::get_if<CloudError>(&answer)) ADD_FAILURE() << error->description;
  return std::holds_alternative<Status>(answer) ? std::get<Status>(answer) : Status::kAvailable;
}

using Contents = std::map<std::string, CloudRecord>;

/// All records of `type` by name, as a run pulls them.
inline Contents contentsOf(CloudDatabase& database, const char* type = "Clip") {
  Contents contents;
  EXPECT_EQ(statusOf(database), Status::kAvailable);
  auto answer = database.records(type);
  while (const auto* page = std::get_if<CloudDatabase::Page>(&answer)) {
    for (const RecordPtr& record : page->records) contents[record->id.name] = *record;
    if (!page->cursor) return contents;
    answer = database.recordsContinuing(*page->cursor);
  }
  ADD_FAILURE() << std::get<CloudError>(answer).description;
  return contents;
}

using Names = std::set<std::string>;

inline Names namesIn(CloudDatabase& database) {
  Names names;
  for (const auto& [name, record] : contentsOf(database)) names.insert(name);
  return names;
}

/// Pushes as a run does that does not look at what came.
inline void save(CloudDatabase& database, const std::vector<RecordPtr>& saving,
                 const std::vector<RecordID>& deleting = {}) {
  EXPECT_EQ(statusOf(database), Status::kAvailable);
  const auto error = database.modifyRecords(saving, deleting);
  EXPECT_FALSE(error) << error->description;
}

}  // namespace brimlo::test
