#include "sync/sync_scheduler.h"

#include <gtest/gtest.h>

#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fakes.h"
#include "sync/local_templates.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

using Strings = std::vector<std::string>;

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
  Strings texts() {
    Strings found;
    for (const ClipPtr& clip : store.clips().value()) found.push_back(clip->text);
    return found;
  }
  Strings templateIds() {
    Strings found;
    for (const Template& held : templates.templates().value()) found.push_back(held.id);
    return found;
  }
  const std::string& status() { return scheduler.syncStatus().value(); }

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
  for (const char* id : {"1st", "2nd", "3rd", "4th"}) templateInCloud(id, 9 - id[0]);
  cloud.put({{"Template", "5th"}, {{"body", "without a title"}}});
  EXPECT_EQ(status(), "sync.status.idle");
  EXPECT_TRUE(localTemplateRecords(files, "/data").empty());
  sync();
  EXPECT_EQ(texts().front(), "text of 11");
  EXPECT_EQ(templateIds(), (Strings{"1st", "2nd", "3rd", "4th"}));
  EXPECT_EQ(status(), "sync.status.done 12");
  EXPECT_EQ(log.lines, Strings{"sync ok: 12 clips, 4 templates, 0 new action"});
  const int writes = files.writes;
  int published = 0;
  const auto watch = store.clips().observeChanges([&](const ClipList&) { ++published; });
  sync();
  EXPECT_EQ(published, 1);
  EXPECT_EQ(files.writes, writes) << "a run that changes nothing";
  // What a new database would begin with.
  const auto records = localTemplateRecords(files, "/data");
  ASSERT_EQ(records.size(), 4u);
  EXPECT_EQ(*records[0], recordFromTemplate(templates.templates().value()[0]));
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
  templateInCloud("t", 1);
  sync();
  cloud.status = CloudDatabase::AccountStatus::kNoAccount;
  store.clearAll();
  sync();
  EXPECT_EQ(status(), "sync.status.unavailable");
  EXPECT_EQ(log.lines.back(), "sync unavailable: account:noAccount");
  EXPECT_EQ(store.deletedIds()->size(), 1u);
  EXPECT_EQ(templateIds(), Strings{"t"});
}

TEST_F(SyncSchedulerTest, TombstonesStayUntilThePushSucceeds) {
  store.add("a", "manual", 1);
  sync();
  store.clearAll();
  cloud.failing = {"modify"};
  sync();
  EXPECT_EQ(store.deletedIds()->size(), 1u);
  EXPECT_EQ(status(), "sync.status.done 0");
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
  EXPECT_EQ(texts(), (Strings{"and again", "during", "text of remote", "here"}));
  EXPECT_EQ(cloud.all().size(), 2u);
  sync();
  EXPECT_EQ(cloud.all().size(), 4u);

  // Cleared during a run: nothing of it comes back, and its tombstones outlive that run's push.
  inCloud("new", 5);
  sync([&] { store.clearAll(); });
  EXPECT_EQ(texts(), Strings{"text of new"});
  EXPECT_EQ(store.deletedIds()->size(), 4u);
  sync();
  EXPECT_EQ(cloud.all().size(), 1u);
  EXPECT_TRUE(store.deletedIds()->empty());
}

TEST_F(SyncSchedulerTest, AFailedTemplateQueryKeepsTheTemplates) {
  for (const char* id : {"1st", "2nd", "3rd", "4th"}) templateInCloud(id, 9 - id[0]);
  sync();
  inCloud("a", 1);
  cloud.failing = {"Template 3"};
  sync();
  EXPECT_EQ(templateIds().size(), 4u);
  EXPECT_EQ(log.lines.back(), "sync ok: 1 clips, 0 templates, 0 new action");
  cloud.failing.clear();
  cloud.all().clear();
  sync();
  EXPECT_EQ(templateIds(), Strings());
  EXPECT_EQ(files.files["/data/templates.json"], "[]");
}

TEST_F(SyncSchedulerTest, OnlyTheNewestActionClipIsAppliedAndOnce) {
  Strings applied;
  bool applies = true;
  scheduler.setOnActionClip([&](const Clip& clip) {
    applied.push_back(clip.id);
    return applies;
  });
  inCloud("first", 1e12 + 1, "action");
  inCloud("second", 1e12 + 2, "action");
  sync();
  EXPECT_EQ(applied, Strings{"second"});
  EXPECT_EQ(status(), "sync.status.applied_iphone");
  EXPECT_EQ(log.lines, (Strings{"sync ok: 2 clips, 0 templates, 2 new action",
                                "auto-applied iPhone clip to pasteboard"}));
  sync();
  EXPECT_EQ(applied.size(), 1u);
  EXPECT_EQ(status(), "sync.status.done 2");
  applies = false;
  inCloud("third", 1e12 + 3, "action");
  sync();
  EXPECT_EQ(log.lines.back(), "sync ok: 3 clips, 0 templates, 1 new action");
  EXPECT_EQ(status(), "sync.status.done 3");
}

}  // namespace
}  // namespace brimlo
