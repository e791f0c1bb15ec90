#include "sync/sync_scheduler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/sync_machine.h"
#include "sync/local_templates.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

using namespace test;

class SyncTest : public testing::Test {
 protected:
  void inCloud(const std::string& shortForms) {
    for (const ClipPtr& clip : clips(shortForms)) cloud.put(recordFromClip(*clip));
  }
  void templatesInCloud(const Strings& ids) {
    double createdAt = 9;
    for (const std::string& id : ids) cloud.put(recordFromTemplate({id, "t", "b", --createdAt}));
  }
  Strings cloudIds() {
    Strings found;
    for (const auto& [id, record] : cloud.all()) found.push_back(id.second);
    return found;
  }
  bool pushed() { return std::count(cloud.asked.begin(), cloud.asked.end(), "modify") > 0; }

  /// What a run asks of the database.
  std::size_t asked() {
    cloud.asked.clear();
    here.sync();
    return cloud.asked.size();
  }
  Strings templateIds() {
    Strings found;
    for (const Template& held : here.templates.templates().value()) found.push_back(held.id);
    return found;
  }
  const std::string& status() { return here.scheduler.syncStatus().value(); }

  FakeFileSystem files;
  FakeRunLoop loop;
  std::unique_ptr<FakeCloud> session = std::make_unique<FakeCloud>();
  FakeCloud& cloud = *session;
  Machine here{std::move(session), files, loop};
};

TEST_F(SyncTest, ARunBringsTheCloudHereAndSaysSo) {
  inCloud("a:1@1 b:2@2 c:3@3 d:4@4");
  templatesInCloud({"1st", "2nd", "3rd", "4th"});
  cloud.put({{"Template", "5th"}, {{"body", "without a title"}}});
  EXPECT_EQ(status(), "sync.status.idle");
  EXPECT_TRUE(localTemplateRecords(files, "/data").empty());
  here.sync([&] { here.scheduler.syncNow(0); });  // dropped: a run is under way
  here.background.run();
  loop.drain();
  EXPECT_EQ(shortForms(here.store.clips().value()), "d:4@4 c:3@3 b:2@2 a:1@1");
  EXPECT_EQ(templateIds(), (Strings{"1st", "2nd", "3rd", "4th"}));
  EXPECT_EQ(status(), "sync.status.done 4");
  EXPECT_EQ(here.log.lines, Strings{"sync ok: 4 clips, 4 templates, 0 new action"});
  EXPECT_FALSE(pushed());
  const int writes = files.writes;
  int published = 0;
  const auto watch = here.store.clips().observeChanges([&](const ClipList&) { ++published; });
  here.sync();
  EXPECT_EQ(published, 1);
  EXPECT_EQ(files.writes, writes) << "a run that changes nothing";
  // What a new database would begin with.
  const auto records = localTemplateRecords(files, "/data");
  ASSERT_EQ(records.size(), 4u);
  EXPECT_EQ(*records[0], recordFromTemplate(here.templates.templates().value()[0]));
}

TEST_F(SyncTest, EveryFailureBeforeThePullHasItsReasonAndChangesNothing) {
  using Status = CloudDatabase::AccountStatus;
  here.store.replaceAll(clips("deleted:x@1"));
  here.store.clearAll();
  here.store.replaceAll(clips("a:x@1"));
  here.templates.setTemplates({{"t", "title", "body", 1}});
  inCloud("deleted:x@1 0:0@0 1:1@1 2:2@2");
  using Services = std::optional<Strings>;
  const Services entitled = {{"Other", "CloudKit-Anonymous"}};
  struct Case {
    Services services;
    Status status;
    std::set<std::string> failing;
    const char* reason;
  };
  for (const auto& [services, status, failing, reason] :
       {Case{std::nullopt, Status::kAvailable, {}, "no-entitlement"},
        {{{"cloudkit"}}, Status::kAvailable, {}, "no-entitlement"},
        {entitled, Status::kCouldNotDetermine, {}, "account:couldNotDetermine"},
        {entitled, Status::kRestricted, {}, "account:restricted"},
        {entitled, Status::kNoAccount, {}, "account:noAccount"},
        {entitled, Status::kTemporarilyUnavailable, {}, "account:temporarilyUnavailable"},
        {entitled, Status::kAvailable, {"account"}, "accountStatus:no answer"},
        {entitled, Status::kAvailable, {"Clip 0"}, "pull:gone"},
        {entitled, Status::kAvailable, {"Clip 3"}, "pull:gone"}}) {
    here.entitlements.services = services;
    cloud.status = status;
    cloud.failing = failing;
    EXPECT_EQ(asked() == 0, services != entitled) << reason;
    EXPECT_EQ(here.log.lines.back(), std::string("sync unavailable: ") + reason);
    EXPECT_EQ(this->status(), "sync.status.unavailable");
    EXPECT_FALSE(pushed());
  }
  EXPECT_EQ(shortForms(here.store.clips().value()), "a:x@1");
  EXPECT_EQ(*here.store.deletedIds(), IdSet{"deleted"});
  EXPECT_EQ(templateIds(), Strings{"t"});
  cloud.failing.clear();
  here.sync();
  EXPECT_EQ(status(), "sync.status.done 4");
}

TEST_F(SyncTest, WhereNothingChangedSinceTheLastRunOnlyTheAccountIsAskedFor) {
  here.store.replaceAll(clips("a:x@1"));
  templatesInCloud({"t"});
  EXPECT_EQ(asked(), 4u) << "with a push";
  EXPECT_EQ(asked(), 1u);
  inCloud("b:y@2");
  EXPECT_EQ(asked(), 3u);
  EXPECT_EQ(asked(), 1u);
  here.store.clearAll();
  EXPECT_EQ(asked(), 4u);
  EXPECT_EQ(cloudIds(), Strings{"t"});
}

TEST_F(SyncTest, WhatTheCloudLacksOrHasInAnOlderFormIsPushed) {
  struct Case {
    const char *there, *here;
    bool pushed;
  };
  for (const auto& [there, given, expected] :
       {Case{"", "a:x@1e12", true},
        {"a:x@1e12", "a:x@1e12", false},
        {"a:x@1e12", "a:x@1000000000000.3", false},  // the same, but for a record's rounding
        {"a:x@1e12", "a:x@1000000000002", true},
        {"a:x@1000000000002", "a:x@1e12", false}}) {
    cloud.all().clear();
    inCloud(there);
    here.store.replaceAll(clips(given));
    EXPECT_GT(asked(), 1u);
    EXPECT_EQ(pushed(), expected) << there << " " << given;
    EXPECT_NEAR(clipFromRecord(*cloud.all().begin()->second)->savedAt,
                here.store.clips().value()[0]->savedAt, 0.5);
  }
}

TEST_F(SyncTest, WhatTheMergeDroppedIsDeletedAndWhatCannotBeReadIsLeftAlone) {
  here.store.replaceAll(clips("gone:x@5 never-there:y@5"));
  here.store.clearAll();
  here.store.replaceAll(clips("newer:same@6"));
  inCloud("gone:x@5 older:same@5");
  cloud.put({{"Clip", "odd"}, {{"text", 5.0}}});
  cloud.all()[{"Clip", "unreadable"}] = nullptr;
  cloud.failing = {"modify"};
  here.sync();
  EXPECT_EQ(here.store.deletedIds()->size(), 2u) << "until the push succeeds";
  cloud.failing.clear();
  here.sync();
  EXPECT_EQ(files.files["/data/deletedClipIds.json"], "[]");
  EXPECT_EQ(shortForms(here.store.clips().value()), "newer:same@6");
  EXPECT_EQ(cloudIds(), (Strings{"newer", "odd", "unreadable"}));
}

TEST_F(SyncTest, WhatHappensDuringARunIsNotLost) {
  here.store.add("here", "manual", 1);
  inCloud("remote:remote@2");
  // While the outcome is carried over, yet another copy arrives.
  here.sync([&] {
    here.store.add("during", "manual", 3);
    loop.drain();
    here.store.add("and again", "manual", 4);
  });
  EXPECT_EQ(here.store.clips().value().size(), 4u);
  here.sync();
  EXPECT_EQ(cloud.all().size(), 4u);

  const int writes = files.writes;
  here.sync([&] { here.store.add("once more", "manual", 5); });
  EXPECT_EQ(files.writes, writes + 1) << "only that copy's own";
  here.sync();

  // Cleared during a run: nothing of it comes back, and its tombstones outlive that run's push.
  inCloud("new:new@6");
  here.sync([&] { here.store.clearAll(); });
  EXPECT_EQ(shortForms(here.store.clips().value()), "new:new@6");
  EXPECT_EQ(here.store.deletedIds()->size(), 5u);
  here.sync();
  EXPECT_EQ(cloudIds(), Strings{"new"});
}

TEST_F(SyncTest, AFailedTemplateQueryKeepsTheTemplates) {
  templatesInCloud({"1st", "2nd", "3rd", "4th"});
  here.sync();
  inCloud("a:x@1");
  cloud.failing = {"Template 3"};
  here.sync();
  EXPECT_EQ(templateIds().size(), 4u);
  EXPECT_EQ(here.log.lines.back(), "sync ok: 1 clips, 0 templates, 0 new action");
  cloud.failing.clear();
  cloud.all().clear();
  here.sync();
  EXPECT_EQ(files.files["/data/templates.json"], "[]");
}

TEST_F(SyncTest, OnlyTheNewestClipThatAPhoneSentSinceTheLaunchIsAppliedAndOnce) {
  Strings applied;
  bool applies = true;
  here.scheduler.setOnActionClip([&](const Clip& clip) {
    applied.push_back(clip.id);
    return applies;
  });
  here.store.replaceAll(clips("known:known@900"));
  inCloud("at-launch:0@1e12! first:1@1000000000001! second:2@1000000000002!");
  inCloud("known:known@1000000000003! no-action:5@1000000000004");
  here.sync();
  EXPECT_EQ(applied, Strings{"second"});
  EXPECT_EQ(status(), "sync.status.applied_iphone");
  EXPECT_EQ(here.log.lines, (Strings{"sync ok: 5 clips, 0 templates, 2 new action",
                                     "auto-applied iPhone clip to pasteboard"}));
  here.sync();
  EXPECT_EQ(applied.size(), 1u);
  EXPECT_EQ(status(), "sync.status.done 5");
  applies = false;
  inCloud("third:3@1000000000005!");
  here.sync();
  EXPECT_EQ(applied.back(), "third");
  EXPECT_EQ(status(), "sync.status.done 6");
}

}  // namespace
}  // namespace brimlo
