#include <gtest/gtest.h>

#include <random>
#include <set>

#include "support/cloud_backends.h"
#include "support/fake_file_system.h"
#include "sync/sync_scheduler.h"

namespace brimlo {
namespace {

/// A machine with its files, on which the program runs, is stopped and started again.
class Machine {
 public:
  using Session = std::function<std::unique_ptr<CloudDatabase>()>;

  Machine(Session session, test::FakeRunLoop& loop) : session_(std::move(session)), loop_(loop) {
    start();
  }

  void start() {
    program_.reset();
    program_ = std::make_unique<Program>(*this);
  }

  ClipStore& store() { return program_->store; }
  void beginSync() { program_->scheduler.syncNow(0); }
  void work() { program_->background.run(); }
  void sync() {
    beginSync();
    while (program_->scheduler.isSyncing().value()) {
      work();
      loop_.drain();
    }
  }
  /// Changes with every push and every write of a file.
  std::string written() { return program_->cloud->contentsStamp() + std::to_string(files_.writes); }

 private:
  struct Program {
    explicit Program(Machine& machine)
        : cloud(machine.session_()),
          store(machine.files_, machine.log_, "/data"),
          templates(machine.files_, machine.log_, "/data"),
          scheduler({background, *cloud, machine.entitlements_, machine.log_, machine.loop_,
                     machine.strings_},
                    store, templates) {}
    test::FakeBackground background;
    std::unique_ptr<CloudDatabase> cloud;
    ClipStore store;
    TemplateStore templates;
    SyncScheduler scheduler;
  };

  Session session_;
  test::FakeRunLoop& loop_;
  test::FakeFileSystem files_;
  test::FakeEntitlements entitlements_;
  test::FakeLog log_;
  test::FakeStrings strings_;
  std::unique_ptr<Program> program_;
};

/// Each clip as one line, in order.
std::vector<std::string> linesOf(Machine& machine) {
  std::vector<std::string> lines;
  for (const ClipPtr& clip : machine.store().clips().value()) {
    lines.push_back(clip->id + " " + clip->text + " " + std::to_string(clip->savedAt));
  }
  return lines;
}

template <typename Backend>
class ConvergenceTest : public testing::Test {};
using Backends = testing::Types<test::FakeBackend, test::SqliteBackend, test::PostgresBackend>;
TYPED_TEST_SUITE(ConvergenceTest, Backends);

TYPED_TEST(ConvergenceTest, WhateverHappensBothMachinesAndTheDatabaseComeToTheSame) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    TypeParam backend;
    test::FakeRunLoop loop;
    const auto session = [&backend] { return backend.session(); };
    Machine machines[] = {{session, loop}, {session, loop}};
    std::mt19937 random(seed);
    std::set<std::string> sinceClear;
    for (int step = 0; step < 300; ++step) {
      Machine& machine = machines[random() % 2];
      loop.now += 1000.25;
      const unsigned chance = random() % 100;
      if (chance < 45) {
        const std::string text = "text " + std::to_string(random() % 25);
        machine.store().add(text, "manual", loop.now);
        sinceClear.insert(text);
      } else if (chance < 47) {
        machine.store().clearAll();
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
    // A third machine, which has nothing, comes to the same by what the database holds.
    Machine third(session, loop);
    third.sync();
    for (Machine& machine : machines) {
      EXPECT_EQ(linesOf(machine), linesOf(third));
      std::set<std::string> texts;
      for (const ClipPtr& clip : machine.store().clips().value()) texts.insert(clip->text);
      EXPECT_EQ(texts.size(), machine.store().clips().value().size()) << "no text twice";
      for (const std::string& text : sinceClear) EXPECT_TRUE(texts.contains(text)) << text;
      EXPECT_TRUE(machine.store().deletedIds()->empty());
      const std::string written = machine.written();
      machine.sync();
      EXPECT_EQ(machine.written(), written) << "where nothing changed";
    }
  }
}

}  // namespace
}  // namespace brimlo
