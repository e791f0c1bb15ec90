#include <gtest/gtest.h>

#include "capture/clipboard_monitor.h"
#include "capture/password_filter.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

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
  test::FakePasteboard pasteboard;
  std::unique_ptr<ClipboardMonitor> monitor;
  std::vector<std::string> reported;
};

TEST_F(ClipboardMonitorTest, ReportsEachNewTextAndReadsOnlyWhenTheCountMoved) {
  loop.advance(2s);
  EXPECT_EQ(pasteboard.stringReads, 0);
  copy(" a ");
  copy(std::nullopt);  // an image
  copy(" \n\u00a0");
  copy("a");
  copy("a");
  pasteboard.change("lost between two polls");
  copy("b");
  EXPECT_EQ(reported, (std::vector<std::string>{" a ", "a", "a", "b"}));
}

TEST_F(ClipboardMonitorTest, ItsOwnTextIsNotReported) {
  monitor->writeOwnText("own");
  EXPECT_EQ(pasteboard.string(), "own");
  loop.advance(1s);
  copy(std::nullopt);
  copy(" ");
  copy("own");  // once more, by somebody else: the suppression holds until a text was seen
  EXPECT_TRUE(reported.empty());
  copy("own");
  monitor->writeOwnText("own");
  copy("other");
  copy("own");
  EXPECT_EQ(reported, (std::vector<std::string>{"own", "other", "own"}));
}

TEST_F(ClipboardMonitorTest, StartsAnewStopsAndMayEndWithAPollQueued) {
  loop.advance(400ms);
  monitor->start();
  EXPECT_EQ(loop.runningTimers(), 1u);
  pasteboard.change("a");
  loop.advance(400ms);
  EXPECT_TRUE(reported.empty());
  loop.advance(100ms);
  EXPECT_EQ(reported.size(), 1u);
  monitor->stop();
  copy("b");
  EXPECT_EQ(reported.size(), 1u);
  monitor->setOnNewText(nullptr);
  monitor->poll();
  monitor->start();
  loop.async([this] { monitor.reset(); });
  loop.advance(1s);
}

TEST(PasswordFilter, TellsPasswordsFromOtherTexts) {
  const std::pair<std::string, bool> cases[] = {
      {"", false},
      {"Pass0r!", false},  // seven characters
      {"Passw0rd", true},
      {"passw0rd", false},  // two kinds
      {"Password", false},
      {"Pass_word", true},
      {"pass-w0rd", true},
      {"PASS~W0RD", true},
      {"`{abcdef1", true},
      {" \n\tPassw0rd!\u00a0\r\n", true},
      {"Pass w0rd!", false},
      {"Passw0rd\u00a0!", false},
      {"Pässw0rd!", false},
      {"Passw0rd\x7f", false},
      {"\u200bPassw0rd", false},
      {std::string(61, 'a') + "B1!", true},  // 64
      {std::string(62, 'a') + "B1!", false},
      {"http://Host1.example", false},
      {"hTTpS://Host1.example", false},
      {"https:/Host1.example", true},
      {"ftp://Host1.example", true},
      {"xhttp://Host1", true},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(isPasswordLike(text), expected) << text;
}

}  // namespace
}  // namespace brimlo
