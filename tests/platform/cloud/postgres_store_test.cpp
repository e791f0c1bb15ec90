#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "support/cloud_backends.h"
#include "support/relay.h"

/// A server that many share, and that fails in its own ways.
namespace brimlo {
namespace {

using namespace std::chrono_literals;
using namespace test;

/// Two people on one server, whose administrator made the tables.
class PostgresPeopleTest : public testing::Test {
 protected:
  PostgresPeopleTest() {
    statusOf(*backend.session());  // makes the tables
    backend.sql(
        "DO $$ BEGIN CREATE ROLE people; CREATE ROLE anna LOGIN IN ROLE people;"
        "  CREATE ROLE bert LOGIN IN ROLE people PASSWORD 'right'; CREATE ROLE nobody LOGIN;"
        "EXCEPTION WHEN duplicate_object THEN NULL; END $$;"
        "GRANT USAGE ON SCHEMA brimlo TO people;"
        "GRANT SELECT ON ALL TABLES IN SCHEMA brimlo TO people;"
        "GRANT INSERT, UPDATE, DELETE ON brimlo.account, brimlo.change, brimlo.clip,"
        "  brimlo.template, brimlo.deleted TO people;");
  }
  std::unique_ptr<CloudDatabase> person(const std::string& role) {
    return backend.session({{"user", role}});
  }

  PostgresBackend backend;
};

TEST_F(PostgresPeopleTest, EachSeesAndChangesNothingButTheirOwn) {
  const auto anna = person("anna"), bert = person("bert");
  save(*anna, {clipRecord("same id", "anna's"), clipRecord("a")});
  EXPECT_EQ(namesIn(*bert), Names());
  save(*bert, {clipRecord("same id", "bert's")}, {{"Clip", "a"}});
  EXPECT_EQ(namesIn(*bert), Names{"same id"});
  EXPECT_EQ(namesIn(*anna), (Names{"a", "same id"}));
  const auto administrator = backend.session();  // who may see everything
  statusOf(*administrator);
  EXPECT_EQ(administrator->contentsStamp(), "0 ");
  EXPECT_EQ(namesIn(*administrator), Names());
  EXPECT_EQ(administrator->contentsStamp(), "0 ");

  // And by hand, with what the role may do.
  const PostgresParameters asBert = {{"user", "bert"}};
  backend.sql(
      "DO $$ BEGIN ASSERT NOT EXISTS (SELECT FROM (SELECT owner FROM brimlo.account"
      " UNION SELECT owner FROM brimlo.change UNION SELECT owner FROM brimlo.clip"
      " UNION SELECT owner FROM brimlo.deleted) AS seen WHERE owner <> 'bert'); END $$",
      asBert);
  for (const char* attempt :
       {"INSERT INTO brimlo.clip (owner, id, text) VALUES ('anna', 'planted', 'x')",
        "UPDATE brimlo.clip SET owner = 'anna'",
        "INSERT INTO brimlo.account VALUES ('anna', 99, gen_random_uuid())", "TRUNCATE brimlo.clip",
        "DROP POLICY own ON brimlo.clip", "SELECT brimlo.next_revision('anna')",
        "UPDATE brimlo.version SET version = 9"}) {
    EXPECT_EQ(backend.sqlFault(attempt, asBert), "42501") << attempt;
  }
  backend.sql("DELETE FROM brimlo.clip", asBert);
  EXPECT_EQ(namesIn(*anna).size(), 2u);
  EXPECT_EQ(namesIn(*bert), Names());
}

TEST_F(PostgresPeopleTest, TheStateOfTheAccountSaysWhatIsWrong) {
  const auto overTcp = [](const char* password, const char* sslmode) {
    return PostgresParameters{
        {"host", "127.0.0.1"}, {"user", "bert"}, {"password", password}, {"sslmode", sslmode}};
  };
  struct Case {
    const char* what;
    PostgresParameters parameters;
    Status status;
  };
  const Case cases[] = {
      {"right", overTcp("right", "prefer"), Status::kAvailable},
      {"wrong password", overTcp("wrong", "prefer"), Status::kNoAccount},
      {"no encryption", overTcp("right", "require"), Status::kRestricted},
      {"no such role", {{"user", "carol"}}, Status::kNoAccount},
      {"no such database", {{"dbname", "nowhere"}}, Status::kNoAccount},
      {"may not use the tables", {{"user", "nobody"}}, Status::kRestricted},
      {"may not make them", {{"user", "nobody"}, {"dbname", "postgres"}}, Status::kRestricted},
      {"nobody listens", {{"host", "127.0.0.1"}, {"port", "9"}}, Status::kTemporarilyUnavailable},
  };
  for (const Case& c : cases) {
    backend.log.lines.clear();
    EXPECT_EQ(statusOf(*backend.session(c.parameters)), c.status) << c.what;
    EXPECT_EQ(backend.log.lines.size(), c.status == Status::kAvailable ? 0u : 1u) << c.what;
    EXPECT_FALSE(backend.log.has("right")) << "the password";
  }
  backend.sql("UPDATE brimlo.version SET version = 2");
  EXPECT_EQ(statusOf(*person("anna")), Status::kRestricted);
}

TEST(PostgresStore, AReaderWhosePlaceTheServerDoesNotKnowPullsEverythingAnew) {
  PostgresBackend backend;
  const auto a = backend.session(), b = backend.session(), c = backend.session();
  for (const char* name : {"1", "2", "3"}) save(*a, {clipRecord(name)});
  EXPECT_EQ(namesIn(*b), (Names{"1", "2", "3"}));
  // A backup from before "3" is restored, and the next change gets the number that "3" had.
  backend.sql(
      "SET session_replication_role = replica; DELETE FROM brimlo.clip WHERE revision = 3;"
      "DELETE FROM brimlo.change WHERE revision = 3; UPDATE brimlo.account SET revision = 2,"
      " stamp = (SELECT stamp FROM brimlo.change WHERE revision = 2);");
  EXPECT_EQ(namesIn(*c), (Names{"1", "2"}));
  save(*c, {clipRecord("4")});
  for (const auto* session : {&a, &b}) EXPECT_EQ(namesIn(**session), (Names{"1", "2", "4"}));

  backend.sql("INSERT INTO brimlo.template (id, title) VALUES ('t', 't')");
  for (const std::string table : {"clip", "template"}) {
    EXPECT_EQ(contentsOf(*a, "Template").size(), 1u);
    backend.sql("TRUNCATE brimlo." + table);
  }
  EXPECT_TRUE(contentsOf(*a, "Template").empty()) << "emptied, with no change in between";
  for (const char* reset : {"TRUNCATE brimlo.clip", "DROP SCHEMA brimlo CASCADE"}) {
    backend.sql(reset);
    EXPECT_EQ(namesIn(*a), Names()) << reset;
    save(*a, {clipRecord("5")});
    EXPECT_EQ(namesIn(*b), Names{"5"}) << reset;
  }

  // What has changed is forgotten after a month, and `b` was away for longer.
  save(*a, {}, {{"Clip", "5"}});
  backend.sql("UPDATE brimlo.change SET at = now() - interval '31 days'");
  save(*a, {clipRecord("6")});
  backend.sql(
      "DO $$ BEGIN ASSERT (SELECT count(*) FROM brimlo.change) = 1;"
      " ASSERT NOT EXISTS (SELECT FROM brimlo.deleted); END $$");
  EXPECT_EQ(namesIn(*b), Names{"6"});
}

TEST(PostgresStore, ARecordTooLargeOrRefusedHoldsUpNoOther) {
  PostgresBackend backend;
  const auto session = backend.session(), other = backend.session();
  save(*session, {clipRecord("good"), clipRecord("monster")});
  backend.sql(
      "UPDATE brimlo.clip SET text = convert_to(repeat('x', 270000000), 'UTF8')"
      " WHERE id = 'monster';"
      "ALTER TABLE brimlo.clip ADD CHECK (text <> 'refused') NOT VALID;");
  EXPECT_EQ(contentsOf(*session).at("monster").field("text"), nullptr);
  std::string longId;  // more than an index takes, even compressed
  for (int i = 0; i < 10'000; ++i) longId += std::to_string(i * 7919);
  std::vector<RecordPtr> saving = {clipRecord("bad", "refused"), clipRecord(longId)};
  Names expected = {"monster"};
  for (const std::string name : {"1", "2", "3", "4", "5", "6"}) {
    saving.push_back(clipRecord(name));
    expected.insert(name);
  }
  std::swap(saving[1], saving[5]);
  save(*session, saving, {{"Clip", "good"}});
  EXPECT_TRUE(backend.log.has("a record was refused"));
  for (const auto& each : {&session, &other}) EXPECT_EQ(namesIn(**each), expected);
}

/// A session whose server is reached through a network that fails.
class PostgresNetworkTest : public testing::Test {
 protected:
  std::unique_ptr<CloudDatabase> session() {
    return backend.session(
        {{"host", "127.0.0.1"}, {"port", std::to_string(relay.port())}, {"password", "postgres"}});
  }

  PostgresBackend backend;
  Relay relay{std::atoi(std::getenv("PGPORT"))};
};

TEST_F(PostgresNetworkTest, AHangingServerIsGivenUp) {
  backend.patience = {.connecting = 300ms, .silence = 300ms, .exchange = 1s};
  const auto session = this->session();
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string name : {"a", "b"}) {
    relay.setSilent(true);
    EXPECT_EQ(statusOf(*session), Status::kTemporarilyUnavailable);
    relay.setSilent(false);
    statusOf(*session);
    relay.setSilent(true);
    EXPECT_TRUE(session->modifyRecords({clipRecord(name)}, {}));
    relay.setSilent(false);
    save(*session, {clipRecord(name)});
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);

  // The connection that was kept broke while nobody used it.
  backend.sql(
      "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
      " WHERE datname = current_database() AND pid <> pg_backend_pid()");
  EXPECT_EQ(namesIn(*session), (Names{"a", "b"}));
}

TEST_F(PostgresNetworkTest, AConnectionThatBreaksAnywhereLosesNothing) {
  const auto session = this->session(), other = backend.session();
  int broken = 0;
  for (int round = 0; round < 60; ++round) {
    const auto name = [&](const char* kind, int of) { return kind + std::to_string(round % of); };
    const std::string text = std::to_string(round);
    save(*other, {clipRecord(name("other ", 7), text)}, {{"Clip", name("mine ", 5)}});
    relay.cutAfter(static_cast<std::size_t>(round) * 120 + 1);
    const bool pulled = statusOf(*session) == Status::kAvailable &&
                        std::holds_alternative<CloudDatabase::Page>(session->records("Clip"));
    broken += !pulled || session->modifyRecords({clipRecord(name("mine ", 3), text)}, {});
    relay.cutAfter(std::nullopt);
    // The server may still be carrying out what had reached it before the cut.
    Contents known, stored;
    for (int tries = 0; tries == 0 || (known != stored && tries < 100); ++tries) {
      known = contentsOf(*session);
      stored = contentsOf(*backend.session());
    }
    ASSERT_EQ(known, stored) << round;
  }
  EXPECT_GT(broken, 10);
  EXPECT_LT(broken, 60);
}

}  // namespace
}  // namespace brimlo
