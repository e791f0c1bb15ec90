#include "store/clip_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "support/fake_file_system.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::string_literals;
using AddResult = ClipStore::AddResult;
using Texts = std::vector<std::string>;

const std::string kClips = "/data/clips.json", kTombstones = "/data/deletedClipIds.json";

std::string object(const std::string& id, const std::string& text, const std::string& savedAt,
                   const std::string& more = "") {
  return R"({"id":")" + id + R"(","text":")" + text + R"(","savedAt":)" + savedAt +
         R"(,"source":"manual")" + more + "}";
}

class ClipStoreTest : public testing::Test {
 protected:
  ClipStore make() { return ClipStore(files, log, "/data"); }

  static Texts texts(const ClipStore& store) {
    Texts texts;
    for (const ClipPtr& clip : store.clips().value()) texts.push_back(clip->text);
    return texts;
  }

  test::FakeFileSystem files;
  test::FakeLog log;
};

TEST_F(ClipStoreTest, ANewTextBecomesAClipAndIsSavedAtOnce) {
  ClipStore store = make();
  EXPECT_EQ(store.add("caf\u00e9\n\"\\\x01/\0"s, "manual", 1'700'000'000'000.125),
            AddResult::kChanged);
  const Clip& clip = *store.clips().value()[0];
  EXPECT_EQ(files.files[kClips], R"([{"id":")" + clip.id +
                                     R"(","text":"café\n\"\\\u0001/\u0000",)" +
                                     R"("savedAt":1700000000000.125,"source":"manual"}])");
  EXPECT_EQ(clip.id.size(), 36u);
  EXPECT_EQ(clip.id.find_first_not_of("0123456789ABCDEF-"), std::string::npos);
  EXPECT_EQ(*make().clips().value()[0], clip);
  EXPECT_EQ(store.add("", "manual", 2e12), AddResult::kUnchanged);
  EXPECT_EQ(store.add("cafe\u0301\n\"\\\x01/\0"s, "action", 2e12), AddResult::kUnchanged);
  EXPECT_EQ(*store.clips().value()[0], clip);
  EXPECT_EQ(files.writes, 1);
  EXPECT_EQ(store.add("  \n", "manual", 2e12), AddResult::kChanged);
}

TEST_F(ClipStoreTest, AnOlderTextMovesUpWithItsIdentity) {
  files.files[kClips] = "[" + object("A", "new", "30", R"(,"x":{"y":[1]},"tags":null)") + "," +
                        object("B", "caf\u00e9", "20", R"(,"tags":["x","y"])") + "," +
                        object("C", "old", "10") + "," + object("D", "cafe\u0301", "5") + "]";
  ClipStore store = make();
  store.add("cafe\u0301", "action", 40);
  EXPECT_EQ(texts(store), (Texts{"cafe\u0301", "new", "old"}));
  const Clip expected{"B", "cafe\u0301", 40, "action", Texts{"x", "y"}};
  EXPECT_EQ(*make().clips().value()[0], expected);
}

TEST_F(ClipStoreTest, ItsOrderIsThatOfTimeAndAmongEqualTimesTheLaterAdditionIsFirst) {
  ClipStore store = make();
  std::mt19937 random(1);
  std::vector<std::pair<std::string, double>> model;  // what the history should be
  for (int i = 0; i < 1000; ++i) {
    const std::string text = "text " + std::to_string(random() % 100);
    const double time = static_cast<double>(random() % 100);
    if (!model.empty() && model.front().first == text) continue;
    std::erase_if(model, [&](const auto& clip) { return clip.first == text; });
    const auto place = std::find_if(model.begin(), model.end(),
                                    [&](const auto& clip) { return clip.second <= time; });
    model.insert(place, {text, time});
    store.add(text, "manual", time);
  }
  std::vector<std::pair<std::string, double>> history;
  for (const ClipPtr& clip : store.clips().value()) history.emplace_back(clip->text, clip->savedAt);
  EXPECT_EQ(history, model);
}

TEST_F(ClipStoreTest, AWriteIsLeftOutOnlyWhereTheFileIsKnownToHoldTheHistory) {
  const std::string newer = object("A", "a", "2"), older = object("B", "b", "1");
  const std::pair<std::optional<std::string>, int> cases[] = {
      {std::nullopt, 1},
      {"[]", 0},
      {"[ " + newer + ", " + older + " ]", 0},
      {"[" + older + "," + newer + "]", 1},  // another order
      {"[" + newer, 1},
  };
  for (const auto& [content, writes] : cases) {
    files = {};
    if (content) files.files[kClips] = *content;
    ClipStore store = make();
    for (int i = 0; i < 2; ++i) {
      store.replaceAll(store.clips().value());  // a sync run that found nothing new
      EXPECT_EQ(files.writes, writes) << content.value_or("no file");
    }
  }
}

TEST_F(ClipStoreTest, ASaveTakesOverWhatIsOnDiskOnlyWhileThatIsTheRestOfTheHistory) {
  files.files[kClips] = "[ " + object("A", "a", "1") + " ]";  // the same, in another form
  ClipStore store = make();
  const auto takesOver = [&](const std::string& text, double time) {
    store.add(text, "manual", time);
    EXPECT_EQ(texts(make()), texts(store));
    return files.copiedOver;
  };
  EXPECT_FALSE(takesOver("b", 2));
  EXPECT_TRUE(takesOver("c", 3));
  EXPECT_FALSE(takesOver("a", 5));    // moved up
  EXPECT_FALSE(takesOver("old", 0));  // went to the end
  EXPECT_TRUE(takesOver("e", 6));
  files.files[kClips] = "[]";  // somebody else's doing
  EXPECT_FALSE(takesOver("f", 7));
  files.diskFull = true;
  store.add("g", "manual", 8);
  files.diskFull = false;
  EXPECT_TRUE(takesOver("h", 9));
  store.clearAll();
  EXPECT_FALSE(takesOver("i", 10));
}

TEST_F(ClipStoreTest, ADamagedHistoryIsNamedKeptAsideAndNeverOverwritten) {
  const std::string good = object("A", "a\\n", "1.5", R"(,"tags":["t"])");
  const std::string noSource = "[" + good + R"(,{"id":"B","text":"b","savedAt":1}])";
  std::vector<std::string> contents = {
      "unreadable", "{}", "null", "[1]", "[" + good + "] []", noSource, std::string(4096, '\0')};
  for (const std::string& bad :
       {object("A", "a", R"("1")"), object("A", "a", "1e999"), object("A", "\xff", "1"),
        object("A", "\\ud800", "1"), object("A", "a", "1", R"(,"tags":[1])")}) {
    contents.push_back("[" + bad + "]");
  }
  for (std::size_t length = 0; length <= good.size(); ++length) {
    contents.push_back("[" + good.substr(0, length));
  }
  for (const std::string& path : {kClips, kTombstones}) {
    for (const std::string& content : contents) {
      files = {};
      log = {};
      files.files[path] = content;
      if (content == "unreadable") files.unreadable[path] = std::errc::permission_denied;
      ClipStore store = make();
      EXPECT_TRUE(store.clips().value().empty() && store.deletedIds()->empty()) << content;
      ASSERT_EQ(log.lines.size(), 1u) << content;
      EXPECT_TRUE(log.has("is damaged (")) << log.lines[0];
      const bool named = path == kClips && content == noSource;
      EXPECT_EQ(log.has("(clip 1 has no \"source\")"), named);
      store.add("next", "manual", 1);
      store.clearAll();
      EXPECT_EQ(files.files[path + ".damaged"], content);
      EXPECT_EQ(make().deletedIds()->size(), 1u);
    }
  }
}

TEST_F(ClipStoreTest, AFullDiskIsNamedOnceAndWhatItRefusedIsSavedLater) {
  const auto syncWithoutNews = [](ClipStore& store) { store.replaceAll(store.clips().value()); };
  const std::function<void(ClipStore&)> retries[] = {&ClipStore::saveUnsaved, syncWithoutNews};
  for (const auto& retry : retries) {
    files = {};
    log = {};
    ClipStore store = make();
    store.add("a", "manual", 1);
    files.diskFull = true;
    store.add("b", "manual", 2);
    store.clearAll();
    store.add("c", "manual", 3);
    retry(store);
    EXPECT_EQ(log.lines.size(), 2u);  // one for each file
    EXPECT_EQ(texts(make()), Texts{"a"});
    files.diskFull = false;
    retry(store);
    retry(store);
    EXPECT_EQ(files.writes, 3);
    EXPECT_TRUE(log.has("saved clips.json again"));
    EXPECT_EQ(texts(make()), Texts{"c"});
    EXPECT_EQ(make().deletedIds()->size(), 2u);
  }
}

TEST_F(ClipStoreTest, ClearingLeavesTombstonesUntilTheyAreForgotten) {
  files.files[kTombstones] = R"(["old"])";
  ClipStore store = make();
  store.add("a", "manual", 1);
  store.clearAll();
  EXPECT_EQ(files.files[kClips], "[]");
  EXPECT_EQ(make().deletedIds()->size(), 2u);
  const IdSetPtr pushed = store.deletedIds();
  store.add("a", "manual", 2);
  store.clearAll();  // while the push of the first two is under way
  store.clearTombstones(pushed);
  EXPECT_EQ(make().deletedIds()->size(), 1u);
  store.clearTombstones(store.deletedIds());
  EXPECT_EQ(files.files[kTombstones], "[]");
}

TEST_F(ClipStoreTest, ReplacingSortsStablyKeepsRepetitionsAndSharesTheClips) {
  ClipStore store = make();
  std::vector<ClipPtr> list;
  for (const auto& [id, time] : {std::pair("a", 1.0), {"b", 2.0}, {"c", 1.0}}) {
    list.push_back(std::make_shared<Clip>(Clip{id, "same", time, "x", {}}));
  }
  store.replaceAll(ClipList(list));
  const ClipList& sorted = store.clips().value();
  EXPECT_TRUE(sorted[0] == list[1] && sorted[1] == list[0] && sorted[2] == list[2]);
  store.add("other", "manual", 3);
  store.add("same", "manual", 4);  // all three go, and the newest one's identity stays
  EXPECT_EQ(texts(store), (Texts{"same", "other"}));
  EXPECT_EQ(store.clips().value()[0]->id, "b");
}

}  // namespace
}  // namespace brimlo
