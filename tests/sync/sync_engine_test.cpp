#include "sync/sync_engine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/fake_cloud.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

using Tags = std::optional<std::vector<std::string>>;

ClipPtr clip(const std::string& id, const std::string& text, double savedAt,
             const std::string& source = "manual", Tags tags = {}) {
  return std::make_shared<Clip>(Clip{id, text, savedAt, source, std::move(tags)});
}

ClipList listOf(std::vector<ClipPtr> clips) {
  return ClipList(std::move(clips));
}

/// Each clip as "id:text@time", with its tags behind a "#".
std::vector<std::string> shown(const ClipList& clips) {
  std::vector<std::string> lines;
  for (const ClipPtr& shownClip : clips) {
    std::string line = shownClip->id + ":" + shownClip->text + "@" +
                       std::to_string(std::lround(shownClip->savedAt));
    for (const std::string& tag : shownClip->tags.value_or(std::vector<std::string>())) {
      line += "#" + tag;
    }
    lines.push_back(line);
  }
  return lines;
}

TEST(RecordConversions, AFieldThatIsMissingOrOfAnotherTypeFallsBack) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    std::vector<std::pair<std::string, FieldValue>> fields;
    std::optional<Clip> clip;
  };
  const Case cases[] = {
      {{{"text", "t"}}, Clip{"id", "t", 0, "manual", {}}},
      {{{"text", 5.0}}, std::nullopt},
      {{{"savedAt", Date{5}}}, std::nullopt},
      {{{"text", "t"}, {"savedAt", 5.0}, {"source", Date{1}}, {"tags", "x"}},
       Clip{"id", "t", 0, "manual", {}}},
      {{{"text", "t"}, {"savedAt", Date{nan}}}, Clip{"id", "t", 0, "manual", {}}},
      {{{"tags", std::vector<std::string>{"a", "b"}},
        {"source", "action"},
        {"savedAt", Date{1.5}},
        {"text", ""}},
       Clip{"id", "", 1500, "action", {{"a", "b"}}}},
  };
  for (const auto& [fields, expected] : cases) {
    EXPECT_EQ(clipFromRecord({{"Clip", "id"}, fields}), expected);
  }
  EXPECT_EQ(templateFromRecord({{"Template", "id"}, {{"body", "b"}}}), std::nullopt);
  EXPECT_EQ(templateFromRecord({{"Template", "id"}, {{"title", "t"}, {"createdAt", 1.0}}}),
            (Template{"id", "t", "", 0}));
}

TEST(RecordConversions, AClipComesBackAsItWas) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> times(1.6e12, 2.1e12);
  for (int i = 0; i < 1000; ++i) {
    const Clip original{"id", std::string("a\0b", 3), times(random), "x", {{"tag"}}};
    EXPECT_EQ(clipFromRecord(recordFromClip(original)), original);
  }
  const Clip empty{"id", "t", 1, "manual", std::vector<std::string>()};
  EXPECT_EQ(recordFromClip(empty).field("tags"), nullptr);
  const Template made{"id", "title", "body", 1e12};
  EXPECT_EQ(templateFromRecord(recordFromTemplate(made)), made);
}

TEST(MergeClips, TheNewerWinsTheOverlayTiesAndTagsSurvive) {
  struct Case {
    const char* what;
    std::vector<ClipPtr> base, overlay;
    IdSet deleted;
    std::vector<std::string> merged;
  };
  const Tags tags{{"t"}}, none{std::vector<std::string>()};
  const Case cases[] = {
      {"a tie", {clip("a", "cloud", 5)}, {clip("a", "here", 5)}, {}, {"a:here@5"}},
      {"newer there", {clip("a", "cloud", 6)}, {clip("a", "here", 5)}, {}, {"a:cloud@6"}},
      {"tags of the loser",
       {clip("a", "x", 6, "", none)},
       {clip("a", "y", 5, "", tags)},
       {},
       {"a:x@6#t"}},
      {"tags of both",
       {clip("a", "x", 6, "", Tags{{"u"}})},
       {clip("a", "y", 5, "", tags)},
       {},
       {"a:x@6#u"}},
      {"deleted on either side", {clip("a", "x", 6)}, {clip("b", "y", 5)}, {"a", "b", "c"}, {}},
      {"one text, two ids",
       {clip("a", "x", 6)},
       {clip("b", "x", 5), clip("c", "y", 4)},
       {},
       {"a:x@6", "c:y@4"}},
      {"one text in two spellings",
       {clip("a", "e\u0301", 6)},
       {clip("b", "\u00e9", 7)},
       {},
       {"b:\u00e9@7"}},
      {"one text, one time", {clip("a", "x", 6)}, {clip("b", "x", 6)}, {}, {"a:x@6"}},
      {"one text, one time, the other way",
       {clip("b", "x", 6)},
       {clip("a", "x", 6)},
       {},
       {"a:x@6"}},
      {"three of one text",
       {clip("a", "x", 5), clip("b", "x", 7), clip("c", "x", 6)},
       {},
       {},
       {"b:x@7"}},
      {"one id twice in the cloud", {clip("a", "x", 9), clip("a", "y", 5)}, {}, {}, {"a:y@5"}},
      {"a text whose newest clip is deleted",
       {clip("a", "x", 9)},
       {clip("b", "x", 5)},
       {"a"},
       {"b:x@5"}},
      {"order",
       {clip("d", "1", 1), clip("c", "2", 3)},
       {clip("b", "3", 2), clip("a", "4", 1)},
       {},
       {"c:2@3", "b:3@2", "a:4@1", "d:1@1"}},
      {"an overlay that is not in order",
       {},
       {clip("a", "1", 1), clip("b", "2", 2)},
       {},
       {"b:2@2", "a:1@1"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(shown(mergeClips(listOf(c.base), listOf(c.overlay), c.deleted)), c.merged) << c.what;
  }
}

TEST(MergeClips, WhatComesOutUnchangedIsTheVeryList) {
  const ClipList overlay = listOf({clip("a", "x", 6), clip("b", "y", 5)});
  const ClipList base = listOf({clip("b", "y", 5), clip("a", "x", 6)});
  EXPECT_EQ(mergeClips(base, overlay, {}), overlay);
  EXPECT_NE(mergeClips(base, overlay, {"b"}), overlay);
}

TEST(CarryChanges, WhatCameIsAddedAndWhatWasClearedStaysAway) {
  const ClipPtr a = clip("a", "x", 1), b = clip("b", "y", 2);
  const auto ids = [](IdSet set) { return std::make_shared<const IdSet>(std::move(set)); };
  const HistoryState before{listOf({b, a}), ids({"old"})};
  const ClipList merged = listOf({clip("r", "remote", 3), b, a});
  const HistoryState added{listOf({clip("c", "z", 4), b, a}), before.deletedIds};
  EXPECT_EQ(shown(carryChanges(merged, before, added)),
            (std::vector<std::string>{"c:z@4", "r:remote@3", "b:y@2", "a:x@1"}));
  // Copied again: the same id, newer.
  const HistoryState moved{listOf({clip("a", "x", 4), b}), before.deletedIds};
  EXPECT_EQ(shown(carryChanges(merged, before, moved)),
            (std::vector<std::string>{"a:x@4", "r:remote@3", "b:y@2"}));
  const HistoryState cleared{listOf({clip("d", "x", 5)}), ids({"old", "a", "b"})};
  EXPECT_EQ(shown(carryChanges(merged, before, cleared)),
            (std::vector<std::string>{"d:x@5", "r:remote@3"}));
  EXPECT_EQ(carryChanges(before.clips, before, added), added.clips);
}

class SyncEngineTest : public testing::Test {
 protected:
  SyncOutcome run(std::vector<ClipPtr> local, IdSet deleted = {}, double since = 0) {
    cloud.asked.clear();
    SettledState settled;
    return runSync({listOf(std::move(local)), std::make_shared<IdSet>(std::move(deleted))}, since,
                   cloud, entitlements, settled);
  }
  void inCloud(const ClipPtr& there) { cloud.put(recordFromClip(*there)); }

  std::vector<std::string> cloudIds() {
    std::vector<std::string> ids;
    for (const auto& [id, record] : cloud.all()) ids.push_back(id.second);
    return ids;
  }
  bool pushed() {
    return std::find(cloud.asked.begin(), cloud.asked.end(), "modify") != cloud.asked.end();
  }

  test::FakeCloud cloud;
  test::FakeEntitlements entitlements;
};

TEST_F(SyncEngineTest, WithoutTheEntitlementNothingIsAsked) {
  using Lists = std::map<std::string, std::vector<std::string>>;
  const std::string key = "com.apple.developer.icloud-services";
  for (const Lists& lists : {Lists{}, Lists{{key, {}}}, Lists{{key, {"cloudkit"}}}}) {
    entitlements.lists = lists;
    EXPECT_EQ(run({}).reason, "no-entitlement");
    EXPECT_TRUE(cloud.asked.empty());
  }
  entitlements.lists = {{key, {"Other", "CloudKit-Anonymous"}}};
  EXPECT_EQ(run({}).status, SyncOutcome::Status::ok);
}

TEST_F(SyncEngineTest, EveryFailureBeforeThePullHasItsReasonAndWritesNothing) {
  using Status = CloudDatabase::AccountStatus;
  for (const auto& [status, reason] :
       {std::pair(Status::kCouldNotDetermine, "account:couldNotDetermine"),
        {Status::kRestricted, "account:restricted"},
        {Status::kNoAccount, "account:noAccount"},
        {Status::kTemporarilyUnavailable, "account:temporarilyUnavailable"}}) {
    cloud.status = status;
    EXPECT_EQ(run({clip("a", "x", 1)}).reason, reason);
  }
  cloud.status = Status::kAvailable;
  for (int i = 0; i < 4; ++i) inCloud(clip(std::to_string(i), std::to_string(i), i));
  for (const auto& [request, reason] : {std::pair("account", "accountStatus:no answer"),
                                        {"Clip 0", "pull:gone"},
                                        {"Clip 3", "pull:gone"}}) {
    cloud.failing = {request};
    const SyncOutcome outcome = run({clip("a", "x", 1)}, {"1"});
    EXPECT_EQ(outcome.status, SyncOutcome::Status::unavailable);
    EXPECT_EQ(outcome.reason, reason);
    EXPECT_TRUE(outcome.mergedClips.empty());
    EXPECT_FALSE(outcome.pushApplied);
    EXPECT_FALSE(pushed());
  }
}

TEST_F(SyncEngineTest, NothingToDoIsNoRequest) {
  const SyncOutcome outcome = run({});
  EXPECT_TRUE(outcome.pushApplied);
  EXPECT_TRUE(outcome.templatesPulled);
  EXPECT_EQ(cloud.asked, (std::vector<std::string>{"account", "Clip 0", "Template 0"}));
}

TEST_F(SyncEngineTest, WhereNothingChangedSinceTheLastRunNothingIsAskedForButTheAccount) {
  HistoryState history{listOf({clip("a", "x", 1)}), std::make_shared<IdSet>()};
  cloud.put({{"Template", "t"}, {{"title", "t"}}});
  SettledState settled;
  const auto asked = [&] {
    cloud.asked.clear();
    const SyncOutcome outcome = runSync(history, 0, cloud, entitlements, settled);
    EXPECT_EQ(outcome.status, SyncOutcome::Status::ok);
    EXPECT_TRUE(outcome.pushApplied && outcome.templatesPulled);
    EXPECT_EQ(outcome.templates.size(), 1u);
    history.clips = outcome.mergedClips;
    return cloud.asked.size();
  };
  EXPECT_EQ(asked(), 4u);  // with a push
  EXPECT_EQ(asked(), 1u);
  inCloud(clip("b", "y", 2));
  EXPECT_EQ(asked(), 3u);
  EXPECT_EQ(history.clips.size(), 2u);
  EXPECT_EQ(asked(), 1u);
  history.deletedIds = std::make_shared<IdSet>(IdSet{"b"});
  EXPECT_EQ(asked(), 4u);
  EXPECT_EQ(cloudIds(), (std::vector<std::string>{"a", "t"}));
  cloud.status = CloudDatabase::AccountStatus::kNoAccount;
  EXPECT_EQ(runSync(history, 0, cloud, entitlements, settled).reason, "account:noAccount");
}

TEST_F(SyncEngineTest, WhatTheCloudLacksOrHasInAnOlderFormIsPushed) {
  struct Case {
    double there, here;
    bool pushed;
  };
  for (const auto& [there, here, expected] : {Case{1e12, 1e12, false},
                                              {1e12, 1e12 + 0.3, false},
                                              {1e12, 1e12 + 2, true},
                                              {1e12 + 2, 1e12, false}}) {
    cloud.all().clear();
    inCloud(clip("a", "x", there));
    EXPECT_EQ(run({clip("a", "x", here)}).mergedClips[0]->savedAt, std::max(there, here));
    EXPECT_EQ(pushed(), expected) << there << " " << here;
  }
  run({clip("b", "y", 3e12), clip("a", "x", 2e12)});
  EXPECT_EQ(cloudIds(), (std::vector<std::string>{"a", "b"}));
  run({clip("b", "y", 3e12), clip("a", "x", 2e12)});
  EXPECT_FALSE(pushed());
}

TEST_F(SyncEngineTest, WhatTheMergeDroppedIsDeletedAndWhatCannotBeReadIsLeftAlone) {
  inCloud(clip("gone", "x", 5));
  inCloud(clip("older", "same", 5));
  cloud.put({{"Clip", "odd"}, {{"text", 5.0}}});
  cloud.all()[{"Clip", "unreadable"}] = nullptr;
  const SyncOutcome outcome = run({clip("newer", "same", 6)}, {"gone", "never there"});
  EXPECT_EQ(shown(outcome.mergedClips), (std::vector<std::string>{"newer:same@6"}));
  EXPECT_EQ(cloudIds(), (std::vector<std::string>{"newer", "odd", "unreadable"}));
}

TEST_F(SyncEngineTest, AFailedPushIsPlannedAgain) {
  cloud.failing = {"modify"};
  EXPECT_FALSE(run({clip("a", "x", 1)}).pushApplied);
  cloud.failing.clear();
  EXPECT_TRUE(run({clip("a", "x", 1)}).pushApplied);
  EXPECT_EQ(cloudIds(), std::vector<std::string>{"a"});
}

TEST_F(SyncEngineTest, NewActionClipsAreThoseThatCameSinceTheLaunch) {
  inCloud(clip("at the launch", "1", 1000, "action"));
  inCloud(clip("known", "2", 1003, "action"));
  inCloud(clip("first", "3", 1001, "action"));
  inCloud(clip("second", "4", 1002, "action"));
  inCloud(clip("no action", "5", 1004));
  const SyncOutcome outcome = run({clip("known", "2", 900)}, {}, 1000);
  EXPECT_EQ(shown(ClipList(outcome.newActionClips)),
            (std::vector<std::string>{"second:4@1002", "first:3@1001"}));
}

TEST_F(SyncEngineTest, TemplatesComeAsTheQueryGaveThemOrAreUnknown) {
  for (const char* id : {"1", "2", "3", "4"}) {
    cloud.put({{"Template", id}, {{"title", std::string("t") + id}}});
  }
  cloud.put({{"Template", "5"}, {{"body", "no title"}}});
  const SyncOutcome outcome = run({});
  ASSERT_EQ(outcome.templates.size(), 4u);
  EXPECT_EQ(outcome.templates[3].title, "t4");
  cloud.failing = {"Template 3"};
  const SyncOutcome failed = run({});
  EXPECT_EQ(failed.status, SyncOutcome::Status::ok);
  EXPECT_FALSE(failed.templatesPulled);
  EXPECT_TRUE(failed.templates.empty());
}

}  // namespace
}  // namespace brimlo
