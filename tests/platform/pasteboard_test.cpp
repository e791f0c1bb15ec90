#include <gtest/gtest.h>

#include <QProcess>
#include <chrono>

#include "platform/x11/selection_owner.h"
#include "platform/x11/x11_pasteboard.h"
#include "support/fakes.h"
#include "support/wait.h"
#include "support/x11_peer.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using test::Offer;
using test::wait;
using test::X11Peer;

/// A pasteboard, and the other clients around it.
class World {
 public:
  virtual ~World() = default;
  virtual Pasteboard& pasteboard() = 0;
  enum class Contents { kText, kImage, kSecret, kNone };
  virtual void copy(const std::string& text, Contents contents = Contents::kText) = 0;
  virtual void paste() = 0;
  /// Returns once everything that was begun so far is done.
  virtual void sync() = 0;
  /// Lets time pass until `holds`.
  virtual bool comes(const std::function<bool()>& holds) = 0;
};

class FakeWorld : public World {
 public:
  FakeWorld() { fake_.change("at the start"); }
  Pasteboard& pasteboard() override { return fake_; }
  void copy(const std::string& text, Contents contents) override {
    fake_.change(contents == Contents::kText ? std::optional(text) : std::nullopt);
  }
  void paste() override { fake_.take(); }
  void sync() override {}
  bool comes(const std::function<bool()>& holds) override {
    loop_.advance(1s);
    return holds();
  }

 private:
  test::FakeRunLoop loop_;
  test::FakePasteboard fake_{loop_};
};

class X11World : public World {
 public:
  X11World() {
    peer->own({.texts = {{"UTF8_STRING", "at the start"}}});
    x11_->serve();
    wait([&] { return real_.string().has_value(); });
  }
  Pasteboard& pasteboard() override { return real_; }
  void copy(const std::string& text, Contents contents = Contents::kText) override {
    if (contents == Contents::kNone) return peer->clear();
    Offer offer = {.texts = {{contents == Contents::kImage ? "image/png" : "UTF8_STRING", text}}};
    if (contents == Contents::kSecret) offer.texts["x-kde-passwordManagerHint"] = "public";
    own(std::move(offer));
  }
  void paste() override { EXPECT_EQ(pastedElsewhere(), real_.string()); }
  void sync() override {
    // A claim takes effect with the server's second answer; all that came before that is handled.
    for (int answers = 0; answers < 2;) {
      const int before = answers;
      time_.now([&](xcb_timestamp_t) { ++answers; });
      wait([&] { return answers > before; });
    }
  }
  bool comes(const std::function<bool()>& holds) override { return wait(holds); }

  /// A copy by the other client, until it shows.
  void own(Offer offer) {
    const std::int64_t before = real_.changeCount();
    peer->own(std::move(offer));
    ASSERT_TRUE(wait([&] { return real_.changeCount() != before; }));
  }
  void ownerGoesAway() {
    const auto clipboard = x11_->atoms().clipboard;
    const xcb_window_t gone = selectionOwner(*x11_, clipboard);
    peer = std::make_unique<X11Peer>();
    wait([&] { return selectionOwner(*x11_, clipboard) != gone; });
    sync();
  }
  /// What another program gets that asks for `target`; none when it is refused.
  std::optional<std::string> pastedElsewhere(const char* target = "UTF8_STRING") {
    QProcess xclip;
    xclip.start("xclip", {"-o", "-selection", "clipboard", "-t", target});
    wait([&] { return xclip.state() == QProcess::NotRunning; });
    return xclip.exitCode() == 0 ? std::optional(xclip.readAllStandardOutput().toStdString())
                                 : std::nullopt;
  }

  std::unique_ptr<X11Peer> peer = std::make_unique<X11Peer>();
  test::FakeLog log;

 private:
  std::unique_ptr<X11Connection> x11_ = X11Connection::open().connection;
  X11Time time_{*x11_};
  X11Pasteboard real_{*x11_, time_, log};
};

class PasteboardContract : public testing::TestWithParam<bool> {
 protected:
  std::unique_ptr<World> world = GetParam() ? std::unique_ptr<World>(std::make_unique<X11World>())
                                            : std::make_unique<FakeWorld>();
  Pasteboard& pasteboard = world->pasteboard();
  std::int64_t count = pasteboard.changeCount();
};

INSTANTIATE_TEST_SUITE_P(, PasteboardContract, testing::Bool(),
                         [](const auto& test) { return test.param ? "X11" : "Fake"; });

TEST_P(PasteboardContract, TheCountMovesOnceForEveryNewContentsAndTheTextIsTheirs) {
  EXPECT_EQ(pasteboard.string(), "at the start");
  const std::pair<std::function<void()>, std::optional<std::string>> steps[] = {
      {[&] { world->copy("é日本\0x"s); }, "é日本\0x"s},
      {[&] { world->copy("same"); }, "same"},
      {[&] { world->copy("same"); }, "same"},
      {[&] { world->copy("\x89PNG", World::Contents::kImage); }, std::nullopt},
      {[&] { world->copy("after"); }, "after"},
      {[&] { world->copy("", World::Contents::kNone); }, std::nullopt},
      {[&] { world->copy("secret", World::Contents::kSecret); }, std::nullopt},
      {[&] { world->copy(""); }, ""},
      {[&] { pasteboard.clearContents(); }, std::nullopt},
      {[&] { pasteboard.clearContents(), pasteboard.setString("own"); }, "own"},
      {[&] { pasteboard.setString("again"); }, "again"},
      {[&] { world->copy("other"); }, "other"},
      {[&] { pasteboard.setString("own"); }, "own"},
      {[&] { pasteboard.clearContents(); }, std::nullopt},
  };
  for (const auto& [step, text] : steps) {
    step();
    world->sync();
    EXPECT_EQ(pasteboard.changeCount(), ++count) << text.value_or("none");
    EXPECT_EQ(pasteboard.string(), text);
  }
}

TEST_P(PasteboardContract, TheTakingOfATextIsToldOnceAndNotWaitedForLong) {
  int told = 0;
  pasteboard.setString("own");
  EXPECT_EQ(pasteboard.string(), "own") << "at once";
  pasteboard.whenTaken([&] { ++told; });
  world->sync();
  EXPECT_EQ(told, 0);
  world->paste();
  EXPECT_EQ(told, 1);
  world->paste();
  EXPECT_EQ(told, 1);
  pasteboard.whenTaken([&] { ++told; });
  EXPECT_TRUE(world->comes([&] { return told == 2; })) << "nobody takes it";
}

class X11PasteboardTest : public testing::Test {
 protected:
  X11World world;
  Pasteboard& pasteboard = world.pasteboard();
  const std::int64_t start = pasteboard.changeCount();
};

TEST_F(X11PasteboardTest, ATextOutlivesItsOwnerAndASecretDoesNotComeBack) {
  world.copy("kept");
  world.ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "kept");
  EXPECT_EQ(world.pastedElsewhere(), "kept");
  world.copy("secret", World::Contents::kSecret);
  world.ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 2);
  EXPECT_EQ(pasteboard.string(), std::nullopt);
}

TEST_F(X11PasteboardTest, ReadsWhateverEncodingTheOwnerHas) {
  const std::pair<Offer, std::optional<std::string>> cases[] = {
      {{.texts = {{"STRING", "caf\xe9"}}}, "café"},
      {{.texts = {{"COMPOUND_TEXT", "\x1b%G☃\x1b%@"}, {"STRING", "?"}}}, "☃"},
      {{.texts = {{"TEXT", "caf\xe9"}}, .types = {{"TEXT", "STRING"}}}, "café"},
      {{.texts = {{"text/plain;charset=utf-8", "é"}}}, "é"},
      {{.texts = {{"text/plain", "é"}, {"text/html", "<b>"}, {"image/png", "\x89"}}}, "é"},
      {{.texts = {{"UTF8_STRING", "a\xff\xc3"}, {"STRING", "worse"}}}, "a\ufffd\ufffd"},
      {{.texts = {{"STRING", "old"}}, .manner = Offer::Manner::kKnowsNoTargets}, "old"},
      {{.texts = {{"TARGETS", "text"}, {"UTF8_STRING", "text"}}, .types = {{"TARGETS", "STRING"}}},
       "text"},
      {{.texts = {{"text/uri-list", "file:///a"}}}, std::nullopt},
      {{.texts = {{"UTF8_STRING", "slow"}}, .delay = 300ms}, "slow"},
  };
  for (const auto& [offer, text] : cases) {
    world.own(offer);
    EXPECT_EQ(pasteboard.string(), text);
  }
}

TEST_F(X11PasteboardTest, TextsOfManyMegabytesPassBothWays) {
  std::string large(std::size_t{20} * 1024 * 1024, 'x');
  for (std::size_t i = 0; i < large.size(); i += 4099) large[i] = static_cast<char>('a' + i % 26);
  world.own({.texts = {{"UTF8_STRING", large}}, .chunk = 1'000'000});
  ASSERT_TRUE(pasteboard.string() == large);
  world.ownerGoesAway();
  EXPECT_TRUE(world.pastedElsewhere() == large);
  world.own({.texts = {{"UTF8_STRING", std::string(10'000'000, 'y')}}});
  EXPECT_EQ(pasteboard.string()->size(), 10'000'000u);
}

TEST_F(X11PasteboardTest, AnOwnerThatDoesNotAnswerHidesNothing) {
  X11Peer slow, trickling;
  const Offer late = {.texts = {{"UTF8_STRING", "late"}}, .delay = 300ms, .chunk = 1};
  const std::pair<X11Peer*, Offer> owners[] = {
      {world.peer.get(), {.texts = {}, .manner = Offer::Manner::kSilent}},
      {&slow, {.texts = {{"UTF8_STRING", "late"}}, .delay = 400ms}},
      {&trickling, {.texts = {{"UTF8_STRING", std::string(100, 't')}}, .chunk = 1}},
      {&trickling, late}};
  for (const auto& [owner, offer] : owners) {
    owner->own(offer);
    world.sync();
    EXPECT_EQ(pasteboard.changeCount(), start);
    EXPECT_EQ(pasteboard.string(), "at the start");
  }
  X11Peer next;
  next.own({.texts = {{"UTF8_STRING", "next"}}});
  EXPECT_TRUE(wait([&] { return pasteboard.changeCount() != start; }));
  EXPECT_TRUE(wait([&] { return slow.answers > 0 && trickling.answers > 1; }));
  world.sync();
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "next");
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesBeforeItHasHandedOverLosesItsContentsAlone) {
  for (const Offer& offer :
       {Offer{.texts = {{"UTF8_STRING", std::string(100, 'i')}}, .chunk = 7, .diesAfterChunks = 3},
        Offer{.texts = {}, .manner = Offer::Manner::kSilent}}) {
    const std::int64_t before = pasteboard.changeCount();
    X11Peer dying;
    dying.own(offer);
    world.sync();
    if (offer.diesAfterChunks == 0) dying.die();
    ASSERT_TRUE(wait([&] { return pasteboard.changeCount() == before + 1; }));
    EXPECT_EQ(pasteboard.string(), std::nullopt);
    world.copy("next");
    EXPECT_EQ(pasteboard.string(), "next");
  }
  EXPECT_TRUE(world.log.has("contents lost"));
}

TEST_F(X11PasteboardTest, ATextAboveTheLimitIsRefused) {
  world.own({.texts = {{"UTF8_STRING", "x"}}, .chunk = 1, .announces = kLargestText + 1});
  EXPECT_EQ(pasteboard.string(), std::nullopt);
  EXPECT_TRUE(world.log.has("larger than 256 MiB"));
  world.copy("next");
  EXPECT_EQ(pasteboard.string(), "next");
}

TEST_F(X11PasteboardTest, AfterAFloodOfCopiesTheLastIsThere) {
  X11Peer second;
  for (int i = 0; i < 2000; ++i) {
    (i % 2 ? *world.peer : second).own({.texts = {{"UTF8_STRING", std::to_string(i)}}});
    QCoreApplication::processEvents();
  }
  EXPECT_TRUE(wait([&] { return pasteboard.string() == "1999"; }));
  EXPECT_LE(pasteboard.changeCount(), start + 2000);
}

TEST_F(X11PasteboardTest, OffersItsTextAsTheConventionsAsk) {
  pasteboard.setString("é☃");
  world.sync();
  const std::pair<const char*, std::optional<std::string>> cases[] = {
      {"STRING", "\xe9?"},
      {"TEXT", "é☃"},
      {"text/plain;charset=utf-8", "é☃"},
      {"image/png", std::nullopt}};
  for (const auto& [target, text] : cases) EXPECT_EQ(world.pastedElsewhere(target), text) << target;
  EXPECT_NE(world.pastedElsewhere("TARGETS")->find("TIMESTAMP\nMULTIPLE\nUTF8_STRING\n"),
            std::string::npos);
}

TEST_F(X11PasteboardTest, ARequestorThatLeavesInTheMiddleHarmsNobody) {
  const std::string large(5'000'000, 'z');
  pasteboard.setString(large);
  world.sync();
  {
    QProcess leaving;
    leaving.start("xclip", {"-o", "-selection", "clipboard"});
    wait([&] { return leaving.bytesAvailable() > 0 || leaving.state() == QProcess::NotRunning; });
    leaving.kill();
    leaving.waitForFinished();
  }
  EXPECT_TRUE(world.pastedElsewhere() == large);
}

}  // namespace
}  // namespace brimlo
