#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/cloud/mirrored_database.h"
#include "platform/cloud/postgres_store.h"
#include "platform/cloud/sqlite_store.h"
#include "support/fake_cloud.h"
#include "support/fakes.h"

namespace brimlo::test {

using Parameters = std::vector<std::pair<std::string, std::string>>;

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "brimlo-cloud-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

/// The server that the test was started beside.
inline Parameters server(const std::string& database, const std::string& user = "postgres") {
  return {{"host", std::getenv("PGHOST")},
          {"port", std::getenv("PGPORT")},
          {"dbname", database},
          {"user", user}};
}

inline void sql(const std::string& database, const std::string& script) {
  auto opened = PostgresConnection::open(server(database), {});
  ASSERT_TRUE(std::holds_alternative<std::unique_ptr<PostgresConnection>>(opened));
  const auto fault =
      std::get<std::unique_ptr<PostgresConnection>>(opened)->runScript(script.c_str());
  ASSERT_FALSE(fault) << fault->what;
}

inline std::string freshDatabase() {
  static int count = 0;
  const std::string name = "t" + std::to_string(++count);
  sql("postgres", "CREATE DATABASE " + name);
  return name;
}

/// Where sessions of one account begin: each is another machine's, or another process's.
class Backend {
 public:
  virtual ~Backend() = default;
  virtual std::unique_ptr<CloudDatabase> session() = 0;
};

class FakeBackend : public Backend {
 public:
  std::unique_ptr<CloudDatabase> session() override {
    auto session = std::make_unique<FakeCloud>(records_);
    session->pageSize = 5'000;
    return session;
  }

 private:
  std::shared_ptr<FakeCloud::Records> records_ = std::make_shared<FakeCloud::Records>();
};

class SqliteBackend : public Backend {
 public:
  std::unique_ptr<CloudDatabase> session() override {
    return std::make_unique<MirroredDatabase>(store(), log);
  }
  std::unique_ptr<RecordStore> store() {
    return std::make_unique<SqliteStore>(
        folder / "sync.sqlite", [this] { return seed; }, log);
  }

  TemporaryFolder folder;
  std::vector<RecordPtr> seed;
  FakeLog log;
};

class PostgresBackend : public Backend {
 public:
  std::unique_ptr<CloudDatabase> session() override { return session(server(database)); }
  std::unique_ptr<CloudDatabase> session(const Parameters& parameters) {
    return std::make_unique<MirroredDatabase>(
        std::make_unique<PostgresStore>(parameters, patience, log), log);
  }
  std::unique_ptr<RecordStore> store() {
    return std::make_unique<PostgresStore>(server(database), patience, log);
  }

  std::string database = freshDatabase();
  PostgresPatience patience;
  FakeLog log;
};

}  // namespace brimlo::test
