#include <gtest/gtest.h>

#include <random>
#include <set>

#include "support/cloud_backends.h"
#include "support/fake_file_system.h"
#include "sync/sync_scheduler.h"

namespace brimlo {
namespace {

/// Passes on to a database what it is asked, and counts the pushes.
class Watched : public CloudDatabase {
 public:
  explicit Watched(std::unique_ptr<CloudDatabase> database) : database_(std::move(database)) {}

  std::variant<AccountStatus, CloudError> accountStatus() override {
    return database_->accountStatus();
  }
  std::string contentsStamp() const override { return database_->contentsStamp(); }
  std::variant<Page, CloudError> records(std::string_view type) override {
    return database_->records(type);
  }
  std::variant<Page, CloudError> recordsContinuing(const Cursor& cursor) override {
    return database_->recordsContinuing(cursor);
  }
  std::optional<CloudError> modifyRecords(const std::vector<RecordPtr>& saving,
                                          const std::vector<RecordID>& deleting) override {
    ++pushes;
    return database_->modifyRecords(saving, deleting);
  }

  int pushes = 0;

 private:
  std::unique_ptr<CloudDatabase> database_;
};

/// A machine with its files, on which the program runs, is stopped and started again.
class Machine {
 public:
  Machine(test::Backend& backend, test::FakeRunLoop& loop) : backend_(backend), loop_(loop) {
    start();
  }

  void start() {
    scheduler_.reset();
    background_.emplace();
    cloud = std::make_unique<Watched>(backend_.session());
    store.emplace(files, log_, "/data");
    templates_.emplace(files, log_, "/data");
    scheduler_.emplace(
        SyncScheduler::Services{*background_, *cloud, entitlements_, log_, loop_, strings_}, *store,
        *templates_);
  }

  void beginSync() { scheduler_->syncNow(0); }
  void work() { background_->run(); }
  void sync() {
    beginSync();
    while (scheduler_->isSyncing().value()) {
      work();
      loop_.drain();
    }
  }

  std::set<std::tuple<std::string, std::string, double>> clips() const {
    std::set<std::tuple<std::string, std::string, double>> found;
    for (const ClipPtr& clip : store->clips().value()) {
      found.emplace(clip->id, clip->text, clip->savedAt);
    }
    return found;
  }

  test::FakeFileSystem files;
  std::unique_ptr<Watched> cloud;
  std::optional<ClipStore> store;

 private:
  test::Backend& backend_;
  test::FakeRunLoop& loop_;
  test::FakeEntitlements entitlements_;
  test::FakeLog log_;
  test::FakeStrings strings_;
  std::optional<test::FakeBackground> background_;
  std::optional<TemplateStore> templates_;
  std::optional<SyncScheduler> scheduler_;
};

template <typename Backend>
class ConvergenceTest : public testing::Test {};
using Backends = testing::Types<test::FakeBackend, test::SqliteBackend, test::PostgresBackend>;
TYPED_TEST_SUITE(ConvergenceTest, Backends);

TYPED_TEST(ConvergenceTest, WhateverHappensBothMachinesAndTheDatabaseComeToTheSame) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    TypeParam backend;
    test::FakeRunLoop loop;
    Machine machines[] = {{backend, loop}, {backend, loop}};
    std::mt19937 random(seed);
    std::set<std::string> sinceClear;
    for (int step = 0; step < 300; ++step) {
      Machine& machine = machines[random() % 2];
      loop.now += 1000.25;
      const unsigned chance = random() % 100;
      if (chance < 45) {
        const std::string text = "text " + std::to_string(random() % 25);
        machine.store->add(text, "manual", loop.now);
        sinceClear.insert(text);
      } else if (chance < 47) {
        machine.store->clearAll();
        sinceClear.clear();
      } else if (chance < 51) {
        machine.start();
      } else if (chance < 65) {
        machine.beginSync();
      } else if (chance < 80) {
        machine.work();
      } else if (chance < 90) {
        loop.drain();
      } else {
        machine.sync();
      }
    }
    for (int round = 0; round < 4; ++round) {
      for (Machine& machine : machines) machine.sync();
    }
    EXPECT_EQ(machines[0].clips(), machines[1].clips()) << seed;
    for (Machine& machine : machines) {
      std::set<std::string> texts;
      for (const ClipPtr& clip : machine.store->clips().value()) texts.insert(clip->text);
      EXPECT_EQ(texts.size(), machine.store->clips().value().size()) << "no text twice";
      for (const std::string& text : sinceClear) EXPECT_TRUE(texts.contains(text)) << seed << text;
      EXPECT_TRUE(machine.store->deletedIds()->empty());
    }
    // A third machine, which has nothing, comes to the same by what the database holds.
    Machine third(backend, loop);
    third.sync();
    EXPECT_EQ(third.clips(), machines[0].clips());
    for (Machine& machine : machines) {
      const int pushes = machine.cloud->pushes, writes = machine.files.writes;
      machine.sync();
      EXPECT_EQ(machine.cloud->pushes, pushes);
      EXPECT_EQ(machine.files.writes, writes);
    }
  }
}

}  // namespace
}  // namespace brimlo
