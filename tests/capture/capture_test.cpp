#include <gtest/gtest.h>

#include "capture/clipboard_monitor.h"
#include "capture/password_filter.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class ClipboardMonitorTest : public testing::Test {
 protected:
  ClipboardMonitorTest() {
    pasteboard.change("before the start");
    monitor = std::make_unique<ClipboardMonitor>(pasteboard, loop, loop);
    monitor->setOnNewText([this](const CanonicalText& text) { reported.push_back(text.text()); });
    monitor->start();
  }

  void copy(std::optional<std::string> text) {
    pasteboard.change(std::move(text));
    loop.advance(500ms);
  }

  test::FakeRunLoop loop;
  test::FakePasteboard pasteboard{loop};
  std::unique_ptr<ClipboardMonitor> monitor;
  Texts reported;
};

TEST_F(ClipboardMonitorTest, ReportsEachNewTextAndReadsOnlyWhenTheCountMoved) {
  loop.advance(2s);
  EXPECT_EQ(pasteboard.stringReads, 0);
  for (const char* text : {" a ", " \n\u00a0", "a", "a"}) copy(text);
  copy(std::nullopt);  // an image
  pasteboard.change("lost between two polls");
  copy("b");
  EXPECT_EQ(reported, (Texts{" a ", "a", "a", "b"}));
}

TEST_F(ClipboardMonitorTest, ItsOwnTextIsNotReported) {
  monitor->writeOwnText("own");
  EXPECT_EQ(pasteboard.string(), "own");
  loop.advance(1s);
  copy(std::nullopt);
  copy(" ");
  copy("own");  // offered again by somebody else; from now on a copy of it is a new one
  EXPECT_EQ(reported, Texts());
  copy("own");
  monitor->writeOwnText("own");
  copy("other");
  copy("own");
  EXPECT_EQ(reported, (Texts{"own", "other", "own"}));
}

TEST_F(ClipboardMonitorTest, StartsAnewStopsAndMayEndWithAPollQueued) {
  loop.advance(400ms);
  monitor->start();
  pasteboard.change("a");
  loop.advance(400ms);
  EXPECT_EQ(reported, Texts());
  loop.advance(100ms);
  monitor->stop();
  copy("b");
  monitor->start();
  const auto end = loop.scheduleRepeating(500ms, [this] { monitor.reset(); });
  copy("c");  // the tick before that one has queued a poll
  EXPECT_EQ(reported, Texts{"a"});
}

TEST(PasswordFilter, TellsPasswordsFromOtherTexts) {
  for (const std::string text :
       {"Passw0rd", "Pass_word", "pass-w0rd", "PASS~W0RD", "`{abcdef1", "ftp://Host1.example",
        " \n\tPassw0rd!\u00a0\r\n", "https:/Host1.example", "xhttp://Host1"}) {
    EXPECT_TRUE(isPasswordLike(text)) << text;
  }
  for (const std::string text :
       {"", "Pass0r!", "passw0rd", "Password", "Pass w0rd!", "Passw0rd\u00a0!", "Pässw0rd!",
        "Passw0rd\x7f", "\u200bPassw0rd", "http://Host1.example", "hTTpS://Host1.example"}) {
    EXPECT_FALSE(isPasswordLike(text)) << text;
  }
  EXPECT_TRUE(isPasswordLike(std::string(61, 'a') + "B1!"));
  EXPECT_FALSE(isPasswordLike(std::string(62, 'a') + "B1!")) << "more than 64 characters";
}

}  // namespace
}  // namespace brimlo
