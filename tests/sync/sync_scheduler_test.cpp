#include "sync/sync_scheduler.h"

#include <gtest/gtest.h>

#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fakes.h"
#include "sync/local_templates.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

class SyncSchedulerTest : public testing::Test {
 protected:
  void inCloud(const std::string& id, double savedAt, const std::string& source = "manual") {
    cloud.put(recordFromClip({id, "text of " + id, savedAt, source, {}}));
  }
  void templateInCloud(const std::string& id, double createdAt) {
    cloud.put(recordFromTemplate({id, "title", "body", createdAt}));
  }

  /// One run, with `meanwhile` between the run's body and its outcome.
  void sync(const std::function<void()>& meanwhile = [] {}) {
    scheduler.syncNow(1e12);
    background.run();
    meanwhile();
    while (scheduler.isSyncing().value()) {
      loop.drain();
      background.run();
    }
    background.run();
  }
  std::vector<std::string> ids() {
    std::vector<std::string> found;
    for (const ClipPtr& clip : store.clips().value()) found.push_back(clip->id);
    return found;
  }
  std::vector<std::string> texts() {
    std::vector<std::string> found;
    for (const ClipPtr& clip : store.clips().value()) found.push_back(clip->text);
    return found;
  }

  test::FakeFileSystem files;
  test::FakeLog log;
  test::FakeRunLoop loop;
  test::FakeCloud cloud;
  test::FakeBackground background;
  test::FakeEntitlements entitlements;
  test::FakeStrings strings;
  ClipStore store{files, log, "/data"};
  TemplateStore templates{files, log, "/data"};
  SyncScheduler scheduler{{background, cloud, entitlements, log, loop, strings}, store, templates};
};

TEST_F(SyncSchedulerTest, ARunBringsTheCloudHereAndSaysSo) {
  for (int i = 0; i < 12; ++i) inCloud(std::to_string(i), i);
  for (const char* id : {"old", "new", "middle"}) templateInCloud(id, id[0]);
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.idle");
  EXPECT_TRUE(localTemplateRecords(files, "/data").empty());
  sync();
  EXPECT_EQ(ids().front(), "11");
  EXPECT_EQ(templates.templates().value()[0].id, "old");
  EXPECT_EQ(templates.templates().value()[2].id, "middle");
  ASSERT_EQ(localTemplateRecords(files, "/data").size(), 3u) << "what a new database begins with";
  EXPECT_EQ(*localTemplateRecords(files, "/data")[0],
            recordFromTemplate(templates.templates().value()[0]));
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.done 12");
  EXPECT_EQ(log.lines, std::vector<std::string>{"sync ok: 12 clips, 3 templates, 0 new action"});
  const int writes = files.writes;
  int published = 0;
  const auto watch = store.clips().observeChanges([&](const ClipList&) { ++published; });
  sync();
  EXPECT_EQ(published, 1);
  EXPECT_EQ(files.writes, writes) << "a run that changes nothing";
}

TEST_F(SyncSchedulerTest, ARequestWhileARunIsUnderWayIsDropped) {
  scheduler.syncNow(1e12);
  scheduler.syncNow(1e12);
  EXPECT_TRUE(scheduler.isSyncing().value());
  background.run();
  loop.drain();
  EXPECT_FALSE(scheduler.isSyncing().value());
  EXPECT_EQ(log.lines.size(), 1u);
}

TEST_F(SyncSchedulerTest, WithoutTheCloudNothingChanges) {
  store.add("a", "manual", 1);
  store.clearAll();
  store.add("b", "manual", 2);
  templateInCloud("t", 1);
  sync();
  cloud.status = CloudDatabase::AccountStatus::kNoAccount;
  store.clearAll();
  sync();
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.unavailable");
  EXPECT_EQ(log.lines.back(), "sync unavailable: account:noAccount");
  EXPECT_EQ(store.deletedIds()->size(), 1u);
  EXPECT_EQ(templates.templates().value().size(), 1u);
  EXPECT_FALSE(scheduler.isSyncing().value());
}

TEST_F(SyncSchedulerTest, TombstonesStayUntilThePushSucceeds) {
  store.add("a", "manual", 1);
  sync();
  store.clearAll();
  cloud.failing = {"modify"};
  sync();
  EXPECT_EQ(store.deletedIds()->size(), 1u);
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.done 0");
  cloud.failing.clear();
  sync();
  EXPECT_EQ(files.files["/data/deletedClipIds.json"], "[]");
  EXPECT_TRUE(cloud.all().empty());
}

TEST_F(SyncSchedulerTest, WhatHappensDuringARunIsNotLost) {
  store.add("here", "manual", 1);
  inCloud("remote", 2);
  // While the outcome is carried over, yet another copy arrives.
  sync([&] {
    store.add("during", "manual", 3);
    loop.drain();
    store.add("and again", "manual", 4);
  });
  EXPECT_EQ(texts(), (std::vector<std::string>{"and again", "during", "text of remote", "here"}));
  EXPECT_EQ(cloud.all().size(), 2u);
  sync();
  EXPECT_EQ(cloud.all().size(), 4u);

  // Cleared during a run: nothing of it comes back, and its tombstones outlive that run's push.
  inCloud("new", 5);
  sync([&] { store.clearAll(); });
  EXPECT_EQ(ids(), std::vector<std::string>{"new"});
  EXPECT_EQ(store.deletedIds()->size(), 4u);
  sync();
  EXPECT_EQ(cloud.all().size(), 1u);
  EXPECT_TRUE(store.deletedIds()->empty());
}

TEST_F(SyncSchedulerTest, AFailedTemplateQueryKeepsTheTemplates) {
  templateInCloud("t", 1);
  sync();
  inCloud("a", 1);
  cloud.failing = {"Template 0"};
  sync();
  EXPECT_EQ(templates.templates().value().size(), 1u);
  EXPECT_EQ(log.lines.back(), "sync ok: 1 clips, 0 templates, 0 new action");
  cloud.failing.clear();
  cloud.all().clear();
  sync();
  EXPECT_TRUE(templates.templates().value().empty());
  EXPECT_EQ(files.files["/data/templates.json"], "[]");
}

TEST_F(SyncSchedulerTest, OnlyTheNewestActionClipIsAppliedAndOnce) {
  std::vector<std::string> applied;
  bool applies = true;
  scheduler.setOnActionClip([&](const Clip& clip) {
    if (applies) applied.push_back(clip.id);
    return applies;
  });
  inCloud("first", 1e12 + 1, "action");
  inCloud("second", 1e12 + 2, "action");
  sync();
  EXPECT_EQ(applied, std::vector<std::string>{"second"});
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.applied_iphone");
  EXPECT_EQ(log.lines, (std::vector<std::string>{"sync ok: 2 clips, 0 templates, 2 new action",
                                                 "auto-applied iPhone clip to pasteboard"}));
  sync();
  EXPECT_EQ(applied.size(), 1u);
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.done 2");
  applies = false;
  inCloud("third", 1e12 + 3, "action");
  sync();
  EXPECT_EQ(log.lines.back(), "sync ok: 3 clips, 0 templates, 1 new action");
  EXPECT_EQ(scheduler.syncStatus().value(), "sync.status.done 3");
}

}  // namespace
}  // namespace brimlo
