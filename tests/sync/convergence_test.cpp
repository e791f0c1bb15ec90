#include <gtest/gtest.h>

#include <random>
#include <set>

#include "support/cloud_backends.h"
#include "support/sync_machine.h"

namespace brimlo {
namespace {

using namespace test;

template <typename Backend>
class ConvergenceTest : public testing::Test {};
using Backends = testing::Types<FakeBackend, SqliteBackend, PostgresBackend>;
TYPED_TEST_SUITE(ConvergenceTest, Backends);

TYPED_TEST(ConvergenceTest, WhateverHappensBothMachinesAndTheDatabaseComeToTheSame) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    TypeParam backend;
    FakeRunLoop loop;
    FakeFileSystem disks[3];
    std::optional<Machine> machines[2];
    for (int i : {0, 1}) machines[i].emplace(backend.session(), disks[i], loop);
    std::mt19937 random(seed);
    std::set<std::string> sinceClear;
    for (int step = 0; step < 300; ++step) {
      const std::size_t which = random() % 2;
      Machine& machine = *machines[which];
      loop.now += 1000.25;
      const unsigned chance = random() % 100;
      if (chance < 45) {
        const std::string text = std::to_string(random() % 25);
        machine.store.add(text, "manual", loop.now);
        sinceClear.insert(text);
      } else if (chance < 47) {
        machine.store.clearAll();
        sinceClear.clear();
      } else if (chance < 51) {
        machines[which].emplace(backend.session(), disks[which], loop);
      } else if (chance < 65) {
        machine.scheduler.syncNow(0);
      } else if (chance < 80) {
        machine.background.run();
      } else if (chance < 90) {
        loop.drain();
      } else {
        machine.sync();
      }
    }
    for (int round = 0; round < 4; ++round) {
      for (auto& machine : machines) machine->sync();
    }
    // A third machine, which has nothing, comes to the same by what the database holds.
    Machine third(backend.session(), disks[2], loop);
    third.sync();
    for (auto& machine : machines) {
      const ClipList& history = machine->store.clips().value();
      EXPECT_EQ(shortForms(history), shortForms(third.store.clips().value()));
      std::set<std::string> texts;
      for (const ClipPtr& clip : history) texts.insert(clip->text);
      EXPECT_EQ(texts.size(), history.size()) << "no text twice";
      for (const std::string& text : sinceClear) EXPECT_TRUE(texts.contains(text)) << text;
      EXPECT_TRUE(machine->store.deletedIds()->empty());
      const auto written = [&] {
        return machine->cloud->contentsStamp() + std::to_string(machine->files.writes);
      };
      const std::string before = written();
      machine->sync();
      EXPECT_EQ(written(), before) << "nothing had changed";
    }
  }
}

}  // namespace
}  // namespace brimlo
