#include "sync/merge.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/sync_machine.h"
#include "sync/record_conversions.h"

namespace brimlo {
namespace {

using namespace test;

TEST(RecordConversions, EachComesBackAndAMissingOrForeignFieldFallsBack) {
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
    if (!expected) continue;
    EXPECT_EQ(clipFromRecord(recordFromClip(*expected)), expected);
  }
  EXPECT_EQ(recordFromClip(*clips("a:x@1#")[0]).field("tags"), nullptr);
  EXPECT_EQ(templateFromRecord({{"Template", "id"}, {{"body", "b"}}}), std::nullopt);
  EXPECT_EQ(templateFromRecord({{"Template", "id"}, {{"title", "t"}, {"createdAt", 1.0}}}),
            (Template{"id", "t", "", 0}));
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

}  // namespace
}  // namespace brimlo
