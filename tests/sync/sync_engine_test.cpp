#include "sync/sync_engine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "support/fake_cloud.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

using Strings = std::vector<std::string>;

/// Clips in the short form "id:text@savedAt", each with a tag behind "#" (only "#": an empty list
/// of tags) or sent by a phone ("!"): "a:x@6#tag b:y@5!".
ClipList clips(const std::string& shortForms) {
  std::vector<ClipPtr> list;
  std::istringstream words(shortForms);
  for (std::string word; words >> word;) {
    const auto colon = word.find(':'), at = word.find('@'), tag = word.find('#');
    Clip clip{word.substr(0, colon),
              word.substr(colon + 1, at - colon - 1),
              std::stod(word.substr(at + 1)),
              word.ends_with('!') ? "action" : "manual",
              {}};
    if (word.ends_with('#')) {
      clip.tags.emplace();
    } else if (tag != word.npos) {
      clip.tags = {word.substr(tag + 1)};
    }
    list.push_back(std::make_shared<Clip>(clip));
  }
  return ClipList(std::move(list));
}

std::string shortForms(const ClipList& clips) {
  std::string forms;
  for (const ClipPtr& clip : clips) {
    forms += (forms.empty() ? "" : " ") + clip->id + ":" + clip->text + "@" +
             std::to_string(std::lround(clip->savedAt));
    for (const std::string& tag : clip->tags.value_or(Strings())) forms += "#" + tag;
  }
  return forms;
}

IdSetPtr ids(IdSet set) {
  return std::make_shared<const IdSet>(std::move(set));
}

TEST(RecordConversions, AFieldThatIsMissingOrOfAnotherTypeFallsBack) {
  const Date nan{std::numeric_limits<double>::quiet_NaN()};
  struct Case {
    std::vector<std::pair<std::string, FieldValue>> fields;
    std::optional<Clip> clip;
  };
  const Clip fallback{"id", "t", 0, "manual", {}};
  const Case cases[] = {
      {{{"text", "t"}}, fallback},
      {{{"text", 5.0}}, std::nullopt},
      {{{"savedAt", Date{5}}}, std::nullopt},
      {{{"text", "t"}, {"savedAt", 5.0}, {"source", Date{1}}, {"tags", "x"}}, fallback},
      {{{"text", "t"}, {"savedAt", nan}}, fallback},
      {{{"tags", Strings{"a", "b"}}, {"source", "action"}, {"savedAt", Date{1.5}}, {"text", ""}},
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
  for (double savedAt = 1.6e12; savedAt < 2.1e12; savedAt *= 1.001) {
    const Clip original{"id", std::string("a\0b", 3), savedAt, "x", {{"tag"}}};
    EXPECT_EQ(clipFromRecord(recordFromClip(original)), original);
  }
  EXPECT_EQ(recordFromClip(*clips("a:x@1#")[0]).field("tags"), nullptr);
  const Template made{"id", "title", "body", 1e12};
  EXPECT_EQ(templateFromRecord(recordFromTemplate(made)), made);
}

TEST(MergeClips, TheNewerWinsTheOverlayTiesAndTagsSurvive) {
  struct Case {
    const char *what, *base, *overlay;
    IdSet deleted;
    const char* merged;
  };
  const Case cases[] = {
      {"a tie", "a:cloud@5", "a:here@5", {}, "a:here@5"},
      {"newer there", "a:cloud@6", "a:here@5", {}, "a:cloud@6"},
      {"tags of the loser", "a:x@6#", "a:y@5#t", {}, "a:x@6#t"},
      {"tags of both", "a:x@6#u", "a:y@5#t", {}, "a:x@6#u"},
      {"deleted on either side", "a:x@6", "b:y@5", {"a", "b", "c"}, ""},
      {"one text, two ids", "a:x@6", "b:x@5 c:y@4", {}, "a:x@6 c:y@4"},
      {"one text in two spellings", "a:e\u0301@6", "b:\u00e9@7", {}, "b:\u00e9@7"},
      {"one text, one time", "a:x@6", "b:x@6", {}, "a:x@6"},
      {"one text, one time, the other way", "b:x@6", "a:x@6", {}, "a:x@6"},
      {"three of one text", "a:x@5 b:x@7 c:x@6", "", {}, "b:x@7"},
      {"one id twice in the cloud", "a:x@9 a:y@5", "", {}, "a:y@5"},
      {"a text whose newest clip is deleted", "a:x@9", "b:x@5", {"a"}, "b:x@5"},
      {"order", "d:1@1 c:2@3", "b:3@2 a:4@1", {}, "c:2@3 b:3@2 a:4@1 d:1@1"},
      {"an overlay that is not in order", "", "a:1@1 b:2@2", {}, "b:2@2 a:1@1"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(shortForms(mergeClips(clips(c.base), clips(c.overlay), c.deleted)), c.merged)
        << c.what;
  }
}

TEST(MergeClips, WhatComesOutUnchangedIsTheVeryList) {
  const ClipList overlay = clips("a:x@6 b:y@5"), base = clips("b:y@5 a:x@6");
  EXPECT_EQ(mergeClips(base, overlay, {}), overlay);
  EXPECT_NE(mergeClips(base, overlay, {"b"}), overlay);
}

TEST(CarryChanges, WhatCameIsAddedAndWhatWasClearedStaysAway) {
  const ClipList kept = clips("b:y@2 a:x@1");
  const auto with = [&](const std::string& more, std::size_t keeping = 2) {
    const ClipList first = clips(more);
    std::vector<ClipPtr> all(first.begin(), first.end());
    for (std::size_t i = 0; i < keeping; ++i) all.push_back(kept[i]);
    return ClipList(std::move(all));
  };
  const HistoryState before{kept, ids({"old"})};
  struct Case {
    const char* what;
    HistoryState now;
    const char* carried;
  };
  const Case cases[] = {
      {"added", {with("c:z@4"), before.deletedIds}, "c:z@4 r:remote@3 b:y@2 a:x@1"},
      {"copied again: the same id, newer",
       {with("a:x@4", 1), before.deletedIds},
       "a:x@4 r:remote@3 b:y@2"},
      {"cleared", {with("d:x@5", 0), ids({"old", "a", "b"})}, "d:x@5 r:remote@3"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(shortForms(carryChanges(with("r:remote@3"), before, c.now)), c.carried) << c.what;
  }
  EXPECT_EQ(carryChanges(before.clips, before, cases[0].now), cases[0].now.clips);
}

class SyncEngineTest : public testing::Test {
 protected:
  SyncOutcome run(const std::string& local, IdSet deleted = {}, double since = 0) {
    cloud.asked.clear();
    SettledState settled;
    return runSync({clips(local), ids(std::move(deleted))}, since, cloud, entitlements, settled);
  }
  void inCloud(const std::string& shortForms) {
    for (const ClipPtr& clip : clips(shortForms)) cloud.put(recordFromClip(*clip));
  }
  Strings cloudIds() {
    Strings found;
    for (const auto& [id, record] : cloud.all()) found.push_back(id.second);
    return found;
  }
  bool pushed() { return std::count(cloud.asked.begin(), cloud.asked.end(), "modify") > 0; }

  test::FakeCloud cloud;
  test::FakeEntitlements entitlements;
};

TEST_F(SyncEngineTest, WithoutTheEntitlementNothingIsAsked) {
  const std::string key = "com.apple.developer.icloud-services";
  entitlements.lists.clear();
  EXPECT_EQ(run("").reason, "no-entitlement");
  for (const Strings& services : {Strings(), {"cloudkit"}}) {
    entitlements.lists[key] = services;
    EXPECT_EQ(run("").reason, "no-entitlement");
    EXPECT_EQ(cloud.asked, Strings());
  }
  entitlements.lists[key] = {"Other", "CloudKit-Anonymous"};
  EXPECT_EQ(run("").status, SyncOutcome::Status::ok);
}

TEST_F(SyncEngineTest, EveryFailureBeforeThePullHasItsReasonAndWritesNothing) {
  using Status = CloudDatabase::AccountStatus;
  struct Case {
    Status status;
    std::set<std::string> failing;
    const char* reason;
  };
  inCloud("0:0@0 1:1@1 2:2@2 3:3@3");
  for (const auto& [status, failing, reason] :
       {Case{Status::kCouldNotDetermine, {}, "account:couldNotDetermine"},
        {Status::kRestricted, {}, "account:restricted"},
        {Status::kNoAccount, {}, "account:noAccount"},
        {Status::kTemporarilyUnavailable, {}, "account:temporarilyUnavailable"},
        {Status::kAvailable, {"account"}, "accountStatus:no answer"},
        {Status::kAvailable, {"Clip 0"}, "pull:gone"},
        {Status::kAvailable, {"Clip 3"}, "pull:gone"}}) {
    cloud.status = status;
    cloud.failing = failing;
    const SyncOutcome outcome = run("a:x@1", {"1"});
    EXPECT_EQ(outcome.status, SyncOutcome::Status::unavailable);
    EXPECT_EQ(outcome.reason, reason);
    EXPECT_TRUE(outcome.mergedClips.empty());
    EXPECT_FALSE(outcome.pushApplied || pushed());
  }
}

TEST_F(SyncEngineTest, WhereNothingChangedSinceTheLastRunNothingIsAskedForButTheAccount) {
  HistoryState history{clips("a:x@1"), ids({})};
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
  EXPECT_EQ(asked(), 4u) << "with a push";
  EXPECT_EQ(asked(), 1u);
  inCloud("b:y@2");
  EXPECT_EQ(asked(), 3u);
  EXPECT_EQ(history.clips.size(), 2u);
  EXPECT_EQ(asked(), 1u);
  history.deletedIds = ids({"b"});
  EXPECT_EQ(asked(), 4u);
  EXPECT_EQ(cloudIds(), (Strings{"a", "t"}));
  cloud.status = CloudDatabase::AccountStatus::kNoAccount;
  EXPECT_EQ(runSync(history, 0, cloud, entitlements, settled).reason, "account:noAccount");
}

TEST_F(SyncEngineTest, WhatTheCloudLacksOrHasInAnOlderFormIsPushed) {
  struct Case {
    const char *there, *here;
    bool pushed;
  };
  for (const auto& [there, here, expected] :
       {Case{"", "a:x@1e12", true},
        {"a:x@1e12", "a:x@1e12", false},
        {"a:x@1e12", "a:x@1000000000000.3", false},  // the same, but for a record's rounding
        {"a:x@1e12", "a:x@1000000000002", true},
        {"a:x@1000000000002", "a:x@1e12", false}}) {
    cloud.all().clear();
    inCloud(there);
    const double merged = run(here).mergedClips[0]->savedAt;
    EXPECT_EQ(pushed(), expected) << there << " " << here;
    EXPECT_NEAR(clipFromRecord(*cloud.all().begin()->second)->savedAt, merged, 0.5);
  }
}

TEST_F(SyncEngineTest, WhatTheMergeDroppedIsDeletedAndWhatCannotBeReadIsLeftAlone) {
  inCloud("gone:x@5 older:same@5");
  cloud.put({{"Clip", "odd"}, {{"text", 5.0}}});
  cloud.all()[{"Clip", "unreadable"}] = nullptr;
  const SyncOutcome outcome = run("newer:same@6", {"gone", "never there"});
  EXPECT_EQ(shortForms(outcome.mergedClips), "newer:same@6");
  EXPECT_EQ(cloudIds(), (Strings{"newer", "odd", "unreadable"}));
}

TEST_F(SyncEngineTest, NewActionClipsAreThoseThatCameSinceTheLaunch) {
  inCloud("at-launch:1@1000! known:2@1003! first:3@1001! second:4@1002! no-action:5@1004");
  const SyncOutcome outcome = run("known:2@900", {}, 1000);
  EXPECT_EQ(shortForms(ClipList(outcome.newActionClips)), "second:4@1002 first:3@1001");
}

}  // namespace
}  // namespace brimlo
