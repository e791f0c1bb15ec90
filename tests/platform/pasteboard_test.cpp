#include <gtest/gtest.h>

#include <QProcess>
#include <chrono>

#include "platform/x11/x11_connection.h"
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

void settle(std::chrono::milliseconds time = 60ms) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) QCoreApplication::processEvents();
}

/// What happens around a pasteboard, whichever it is.
class World {
 public:
  virtual ~World() = default;
  virtual Pasteboard& pasteboard() = 0;
  virtual void copy(const std::string& text) = 0;
  virtual void copyImage() = 0;
  virtual void copySecret(const std::string& text) = 0;
  virtual void ownerGoesAway() = 0;
  virtual void ownerClears() = 0;
};

class FakeWorld : public World {
 public:
  FakeWorld() { fake_.change("at the start"); }
  Pasteboard& pasteboard() override { return fake_; }
  void copy(const std::string& text) override { fake_.change(text); }
  void copyImage() override { fake_.change(std::nullopt); }
  void copySecret(const std::string&) override { fake_.change(std::nullopt); }
  void ownerGoesAway() override {}
  void ownerClears() override { fake_.change(std::nullopt); }

 private:
  test::FakePasteboard fake_;
};

class X11World : public World {
 public:
  X11World() {
    peer->own({.texts = {{"UTF8_STRING", "at the start"}}});
    x11_ = X11Connection::open().connection;
    x11_->serve();
    time_ = std::make_unique<X11Time>(*x11_);
    real_ = std::make_unique<X11Pasteboard>(*x11_, *time_, log);
    wait([&] { return real_->string().has_value(); });
  }
  Pasteboard& pasteboard() override { return *real_; }
  void copy(const std::string& text) override { own({.texts = {{"UTF8_STRING", text}}}); }
  void copyImage() override { own({.texts = {{"image/png", "\x89PNG"}}}); }
  void copySecret(const std::string& text) override {
    own({.texts = {{"UTF8_STRING", text}, {"x-kde-passwordManagerHint", "public"}}});
  }
  void ownerGoesAway() override {
    peer = std::make_unique<X11Peer>();
    settle();
  }
  void ownerClears() override {
    peer->clear();
    settle();
  }

  /// A copy by the other client, until it shows.
  void own(Offer offer) {
    const std::int64_t before = real_->changeCount();
    peer->own(std::move(offer));
    ASSERT_TRUE(wait([&] { return real_->changeCount() != before; }));
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
  std::unique_ptr<X11Connection> x11_;
  std::unique_ptr<X11Time> time_;
  std::unique_ptr<X11Pasteboard> real_;
};

class PasteboardContract : public testing::TestWithParam<bool> {
 protected:
  std::unique_ptr<World> world = GetParam() ? std::unique_ptr<World>(std::make_unique<X11World>())
                                            : std::make_unique<FakeWorld>();
  Pasteboard& pasteboard = world->pasteboard();
  const std::int64_t start = pasteboard.changeCount();
};

INSTANTIATE_TEST_SUITE_P(, PasteboardContract, testing::Bool(),
                         [](const auto& test) { return test.param ? "X11" : "Fake"; });

TEST_P(PasteboardContract, TheCountMovesOnceForEveryNewContentsAndTheTextIsTheirs) {
  EXPECT_EQ(pasteboard.string(), "at the start");
  std::int64_t count = start;
  const auto expect = [&](const std::optional<std::string>& text) {
    EXPECT_EQ(pasteboard.changeCount(), ++count);
    EXPECT_EQ(pasteboard.string(), text);
  };
  world->copy("é日本\0x"s);
  expect("é日本\0x"s);
  world->copy("same");
  expect("same");
  world->copy("same");
  expect("same");
  world->copyImage();
  expect(std::nullopt);
  world->copy("after");
  expect("after");
  world->ownerClears();
  expect(std::nullopt);
  world->copySecret("secret");
  expect(std::nullopt);
  world->copy("");
  expect("");
}

TEST_P(PasteboardContract, ATextOutlivesItsOwnerAndASecretDoesNotComeBack) {
  world->copy("kept");
  world->ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "kept");
  world->copySecret("secret");
  world->ownerGoesAway();
  EXPECT_EQ(pasteboard.changeCount(), start + 2);
  EXPECT_EQ(pasteboard.string(), std::nullopt);
}

TEST_P(PasteboardContract, OwnTextsMoveTheCountOnceAndYieldToTheNextCopy) {
  pasteboard.clearContents();
  EXPECT_EQ(pasteboard.string(), std::nullopt);
  pasteboard.setString("own");
  EXPECT_EQ(pasteboard.changeCount(), start + 1);
  EXPECT_EQ(pasteboard.string(), "own");
  settle();
  pasteboard.setString("again");
  settle();
  EXPECT_EQ(pasteboard.changeCount(), start + 2);
  EXPECT_EQ(pasteboard.string(), "again");
  world->copy("other");
  EXPECT_EQ(pasteboard.changeCount(), start + 3);
  EXPECT_EQ(pasteboard.string(), "other");
  pasteboard.clearContents();
  settle();
  EXPECT_EQ(pasteboard.changeCount(), start + 4);
  EXPECT_EQ(pasteboard.string(), std::nullopt);
}

class X11PasteboardTest : public testing::Test {
 protected:
  X11World world;
  Pasteboard& pasteboard = world.pasteboard();
};

TEST_F(X11PasteboardTest, ReadsWhateverEncodingTheOwnerHas) {
  struct Case {
    Offer offer;
    std::optional<std::string> text;
  };
  const std::string compound = "caf\xe9 \x1b\x2d\x4c\xbf\xe0 \x1b%G\xe2\x98\x83\x1b%@";
  const Case cases[] = {
      {{.texts = {{"STRING", "caf\xe9"}}}, "café"},
      {{.texts = {{"COMPOUND_TEXT", compound}, {"STRING", "caf\xe9 ??"}}}, "café Пр ☃"},
      {{.texts = {{"TEXT", "caf\xe9"}}, .types = {{"TEXT", "STRING"}}}, "café"},
      {{.texts = {{"TEXT", compound}}, .types = {{"TEXT", "COMPOUND_TEXT"}}}, "café Пр ☃"},
      {{.texts = {{"text/plain;charset=utf-8", "é"}}}, "é"},
      {{.texts = {{"text/plain", "\xe9"}}}, "é"},
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
  std::string large(std::size_t{64} * 1024 * 1024, 'x');
  for (std::size_t i = 0; i < large.size(); i += 4099) large[i] = static_cast<char>('a' + i % 26);
  world.own({.texts = {{"UTF8_STRING", large}}, .chunk = 1'000'000});
  ASSERT_TRUE(pasteboard.string() == large);
  world.ownerGoesAway();
  EXPECT_TRUE(world.pastedElsewhere() == large);
  world.own({.texts = {{"UTF8_STRING", std::string(10'000'000, 'y')}}});
  EXPECT_EQ(pasteboard.string()->size(), 10'000'000u);
}

TEST_F(X11PasteboardTest, AnOwnerThatDoesNotAnswerHidesNothing) {
  const std::int64_t before = pasteboard.changeCount();
  const auto tooEarly = [&] {
    settle();
    EXPECT_EQ(pasteboard.changeCount(), before);
    EXPECT_EQ(pasteboard.string(), "at the start");
  };
  world.peer->own({.texts = {}, .manner = Offer::Manner::kSilent});
  tooEarly();
  X11Peer slow, trickling;
  slow.own({.texts = {{"UTF8_STRING", "late"}}, .delay = 700ms});
  tooEarly();
  trickling.own({.texts = {{"UTF8_STRING", std::string(100, 't')}}, .chunk = 1});
  trickling.own({.texts = {{"UTF8_STRING", "text"}}, .delay = 400ms, .chunk = 1});
  tooEarly();
  world.peer->own({.texts = {{"UTF8_STRING", "next"}}});
  ASSERT_TRUE(wait([&] { return pasteboard.changeCount() != before; }));
  settle(1500ms);  // the late answers come now, and are nobody's
  EXPECT_EQ(pasteboard.changeCount(), before + 1);
  EXPECT_EQ(pasteboard.string(), "next");
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesBeforeItHasHandedOverLosesItsContentsAlone) {
  for (const Offer& offer :
       {Offer{.texts = {{"UTF8_STRING", std::string(100, 'i')}}, .chunk = 7, .diesAfterChunks = 3},
        Offer{.texts = {}, .manner = Offer::Manner::kSilent}}) {
    const std::int64_t before = pasteboard.changeCount();
    X11Peer dying;
    dying.own(offer);
    settle();
    dying.die();
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
  const std::int64_t before = pasteboard.changeCount();
  X11Peer second;
  for (int i = 0; i < 2000; ++i) {
    (i % 2 ? *world.peer : second).own({.texts = {{"UTF8_STRING", std::to_string(i)}}});
    QCoreApplication::processEvents();
  }
  EXPECT_TRUE(wait([&] { return pasteboard.string() == "1999"; }));
  EXPECT_LE(pasteboard.changeCount(), before + 2000);
}

TEST_F(X11PasteboardTest, OffersItsTextAsTheConventionsAsk) {
  pasteboard.setString("é☃");
  settle();
  EXPECT_EQ(world.pastedElsewhere("STRING"), "\xe9?");
  EXPECT_EQ(world.pastedElsewhere("TEXT"), "é☃");
  EXPECT_EQ(world.pastedElsewhere("text/plain;charset=utf-8"), "é☃");
  EXPECT_EQ(world.pastedElsewhere("image/png"), std::nullopt);
  EXPECT_NE(world.pastedElsewhere("TARGETS")->find("TIMESTAMP\nMULTIPLE\nUTF8_STRING\n"),
            std::string::npos);
}

TEST_F(X11PasteboardTest, ARequestorThatLeavesInTheMiddleHarmsNobody) {
  const std::string large(5'000'000, 'z');
  pasteboard.setString(large);
  settle();
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
