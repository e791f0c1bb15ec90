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

using Texts = std::map<std::string, std::string>;
constexpr char kText[] = "UTF8_STRING", kSecretHint[] = "x-kde-passwordManagerHint";

/// A pasteboard, and the other clients around it.
class World {
 public:
  virtual ~World() = default;
  virtual Pasteboard& pasteboard() = 0;
  /// Another client copies texts by these types; where there are none, it clears the pasteboard.
  virtual void copy(const Texts& texts) = 0;
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
  void copy(const Texts& texts) override {
    const bool plain = texts.size() == 1 && texts.contains(kText);
    fake_.change(plain ? std::optional(texts.at(kText)) : std::nullopt);
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
    peer->own({.texts = {{kText, "at the start"}}});
    x11_->serve();
    wait([&] { return real_.string().has_value(); });
  }
  Pasteboard& pasteboard() override { return real_; }
  void copy(const Texts& texts) override {
    if (texts.empty()) return peer->clear();
    own({.texts = texts});
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
  std::optional<std::string> pastedElsewhere(const char* target = kText) {
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
  const auto copy = [&](const Texts& texts) { return [&, texts] { world->copy(texts); }; };
  const std::pair<std::function<void()>, std::optional<std::string>> steps[] = {
      {copy({{kText, "é日本\0x"s}}), "é日本\0x"s},
      {copy({{kText, "same"}}), "same"},
      {copy({{kText, "same"}}), "same"},
      {copy({{"image/png", "\x89PNG"}}), std::nullopt},
      {copy({{kText, "after"}}), "after"},
      {copy({}), std::nullopt},
      {copy({{kText, "secret"}, {kSecretHint, "public"}}), std::nullopt},
      {copy({{kText, ""}}), ""},
      {[&] { pasteboard.clearContents(); }, std::nullopt},
      {[&] { pasteboard.clearContents(), pasteboard.setString("own"); }, "own"},
      {[&] { pasteboard.setString("again"); }, "again"},
      {copy({{kText, "other"}}), "other"},
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
  world.copy({{kText, "kept"}});
  world.ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "kept");
  EXPECT_EQ(world.pastedElsewhere(), "kept");
  world.copy({{kText, "secret"}, {kSecretHint, "public"}});
  world.ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 2);
  EXPECT_EQ(pasteboard.string(), std::nullopt);
}

TEST_F(X11PasteboardTest, ReadsWhateverTheOwnerOffers) {
  const std::pair<Offer, std::optional<std::string>> cases[] = {
      {{.texts = {{"STRING", "caf\xe9"}}}, "café"},
      {{.texts = {{"COMPOUND_TEXT", "\x1b%G☃\x1b%@"}, {"STRING", "?"}}}, "☃"},
      {{.texts = {{"TEXT", "caf\xe9"}}, .types = {{"TEXT", "STRING"}}}, "café"},
      {{.texts = {{"text/plain;charset=utf-8", "é"}}}, "é"},
      {{.texts = {{"text/plain", "é"}, {"text/html", "<b>"}, {"image/png", "\x89"}}}, "é"},
      {{.texts = {{kText, "a\xff\xc3"}, {"STRING", "worse"}}}, "a\ufffd\ufffd"},
      {{.texts = {{"STRING", "old"}}, .manner = Offer::Manner::kKnowsNoTargets}, "old"},
      {{.texts = {{"TARGETS", "text"}, {kText, "text"}}, .types = {{"TARGETS", "STRING"}}}, "text"},
      {{.texts = {{"text/uri-list", "file:///a"}}}, std::nullopt},
      {{.texts = {{kText, "x"}}, .chunk = 1, .announces = kLargestText + 1}, std::nullopt},
      {{.texts = {{kText, "slow"}}, .delay = 300ms}, "slow"},
  };
  for (const auto& [offer, text] : cases) {
    world.own(offer);
    EXPECT_EQ(pasteboard.string(), text);
  }
  EXPECT_TRUE(world.log.has("larger than 256 MiB"));
}

TEST_F(X11PasteboardTest, TextsOfManyMegabytesPassBothWays) {
  std::string large(std::size_t{20} * 1024 * 1024, 'x');
  for (std::size_t i = 0; i < large.size(); i += 4099) large[i] = static_cast<char>('a' + i % 26);
  world.own({.texts = {{kText, large}}, .chunk = 1'000'000});
  ASSERT_TRUE(pasteboard.string() == large);
  world.ownerGoesAway();
  {
    QProcess leaving;
    leaving.start("xclip", {"-o", "-selection", "clipboard"});
    EXPECT_TRUE(wait([&] { return leaving.bytesAvailable() > 0; }));
    leaving.kill();
    leaving.waitForFinished();
  }
  EXPECT_TRUE(world.pastedElsewhere() == large);
  world.own({.texts = {{kText, std::string(10'000'000, 'y')}}});
  EXPECT_EQ(pasteboard.string()->size(), 10'000'000u);
}

TEST_F(X11PasteboardTest, AnOwnerThatDoesNotAnswerHidesNothing) {
  X11Peer slow, trickling;
  const Offer late = {.texts = {{kText, "late"}}, .delay = 300ms, .chunk = 1};
  const std::pair<X11Peer*, Offer> owners[] = {
      {world.peer.get(), {.texts = {}, .manner = Offer::Manner::kSilent}},
      {&slow, {.texts = {{kText, "late"}}, .delay = 400ms}},
      {&trickling, {.texts = {{kText, std::string(100'000, 't')}}, .chunk = 1}},
      {&trickling, late}};
  for (const auto& [owner, offer] : owners) {
    owner->own(offer);
    world.sync();
    EXPECT_EQ(pasteboard.changeCount(), start);
    EXPECT_EQ(pasteboard.string(), "at the start");
  }
  X11Peer next;
  next.own({.texts = {{kText, "next"}}});
  EXPECT_TRUE(wait([&] { return pasteboard.changeCount() != start; }));
  EXPECT_TRUE(wait([&] { return slow.requests > 0 && trickling.requests > 1; }));
  world.sync();
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "next");
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesBeforeItHasHandedOverLosesItsContentsAlone) {
  for (const Offer& offer :
       {Offer{.texts = {{kText, std::string(100, 'i')}}, .chunk = 7, .diesAfter = 21},
        Offer{.texts = {}, .manner = Offer::Manner::kSilent}}) {
    const std::int64_t before = pasteboard.changeCount();
    X11Peer dying;
    dying.own(offer);
    ASSERT_TRUE(wait([&] { return dying.requests > 0; }));
    if (offer.diesAfter == 0) dying.die();
    ASSERT_TRUE(wait([&] { return pasteboard.changeCount() == before + 1; }));
    EXPECT_EQ(pasteboard.string(), std::nullopt);
    world.copy({{kText, "next"}});
    EXPECT_EQ(pasteboard.string(), "next");
  }
  EXPECT_TRUE(world.log.has("contents lost"));
}

TEST_F(X11PasteboardTest, AfterAFloodOfCopiesTheLastIsThere) {
  X11Peer second;
  for (int i = 0; i < 2000; ++i) {
    (i % 2 ? *world.peer : second).own({.texts = {{kText, std::to_string(i)}}});
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

}  // namespace
}  // namespace brimlo
