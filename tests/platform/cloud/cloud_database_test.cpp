#include <gtest/gtest.h>

#include <thread>

#include "support/cloud_backends.h"

/// What holds for every kind of account.
namespace brimlo {
namespace {

using namespace std::string_literals;
using namespace test;

template <typename T>
class CloudDatabaseTest : public testing::Test {
 protected:
  T backend;
};
using Backends = testing::Types<FakeBackend, SqliteBackend, PostgresBackend>;
TYPED_TEST_SUITE(CloudDatabaseTest, Backends);

TYPED_TEST(CloudDatabaseTest, RecordsComeBackAsTheyWereHoweverMany) {
  const std::string planes = "aéあ😀\U000200a4\U000e0041\U0010ffff";
  std::string large;  // more than goes into one portion
  while (large.size() < (9 << 20)) large += planes;
  std::vector<CloudRecord> records = {
      {{"Clip", "plain"},
       {{"text", "t"}, {"savedAt", Date{1700000000.123456}}, {"source", "action"}}},
      {{"Clip", "quoted '\"\\%_$1"}, {{"text", planes}, {"savedAt", Date{-1e-3}}}},
      {{"Clip", "nul"}, {{"text", "\0a\0"s}, {"source", "\0"s}}},
      {{"Clip", "empty"}, {{"text", ""}}},
      {{"Clip", "no text"}, {{"savedAt", Date{0}}}},
      {{"Clip", "large"},
       {{"text", large}, {"tags", std::vector{""s, "a,\"\\"s, "\0\n"s, planes}}}},
      {{"Template", "plain"}, {{"title", "other table"}, {"body", planes}}},
  };
  // More than come in one page.
  for (int i = 0; i < 10'000; ++i) records.push_back(*clipRecord(std::to_string(i)));
  std::vector<RecordPtr> saving;
  std::vector<RecordID> deleting;
  std::map<std::string, Contents> expected;
  for (const CloudRecord& record : records) {
    saving.push_back(std::make_shared<CloudRecord>(record));
    deleting.push_back(record.id);
    expected[record.id.type][record.id.name] = record;
  }
  const auto writer = this->backend.session(), reader = this->backend.session();
  save(*writer, saving);
  for (const auto& [type, contents] : expected) {
    EXPECT_TRUE(contentsOf(*writer, type.c_str()) == contents) << type;
    EXPECT_TRUE(contentsOf(*reader, type.c_str()) == contents) << type;
  }
  save(*writer, {}, deleting);
  for (const auto& session : {&writer, &reader}) EXPECT_EQ(namesIn(**session), Names());
}

/// The fake is for one thread.
template <typename T>
class SharedDatabaseTest : public CloudDatabaseTest<T> {};
using SharedBackends = testing::Types<SqliteBackend, PostgresBackend>;
TYPED_TEST_SUITE(SharedDatabaseTest, SharedBackends);

TYPED_TEST(SharedDatabaseTest, TwoMayMakeTheTablesAndPushAtOnce) {
  const auto push = [this](const std::string& prefix) {
    const auto session = this->backend.session();
    for (int i = 0; i < 40; ++i) {
      statusOf(*session);
      session->records("Clip");
      EXPECT_FALSE(session->modifyRecords({clipRecord(prefix + std::to_string(i))},
                                          {{"Clip", prefix + std::to_string(i - 10)}}));
    }
    return contentsOf(*session);
  };
  const auto watcher = this->backend.session();
  Contents one, other;
  std::thread first([&] { one = push("a"); }), second([&] { other = push("b"); });
  for (int i = 0; i < 20; ++i) contentsOf(*watcher);
  first.join();
  second.join();
  const Contents all = contentsOf(*this->backend.session());
  EXPECT_EQ(all.size(), 20u);
  EXPECT_EQ(contentsOf(*watcher), all);
  EXPECT_TRUE(one == all || other == all) << "whoever came last saw everything";
}

/// What makes a run that finds nothing new cheap.
TYPED_TEST(SharedDatabaseTest, AStoreTellsOnlyWhatIsNew) {
  const auto store = this->backend.store(), other = this->backend.store();
  const auto push = [](RecordStore& pushing, const char* name) {
    pushing.currentPlace();
    const RecordPtr record = clipRecord(name);
    return std::get<RecordStore::Push>(pushing.push(std::span(&record, 1), {}));
  };
  const auto mine = push(*store, "mine"), theirs = push(*other, "theirs");
  EXPECT_EQ(theirs.before, mine.after);
  EXPECT_EQ(std::get<Place>(store->currentPlace()), theirs.after);
  const std::pair<Place, Names> cases[] = {
      {{}, {"mine", "theirs"}}, {mine.after, {"theirs"}}, {theirs.after, {}}};
  for (const auto& [known, told] : cases) {
    const auto changes = std::get<RecordStore::Changes>(store->changesSince(known));
    Names names;
    for (const RecordPtr& record : changes.saved) names.insert(record->id.name);
    EXPECT_EQ(names, told);
    EXPECT_EQ(changes.anew, known == Place());
    EXPECT_EQ(changes.place, theirs.after);
  }
}

}  // namespace
}  // namespace brimlo
