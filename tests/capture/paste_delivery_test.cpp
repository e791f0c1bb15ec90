#include "capture/paste_delivery.h"

#include <gtest/gtest.h>

#include "support/fake_file_system.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class PasteDeliveryTest : public testing::Test {
 protected:
  void paste(const std::string& text, const std::string& source = "manual") {
    delivery.pasteText(text, source, target);
  }

  test::FakeRunLoop loop;
  test::FakeFileSystem files;
  test::FakePasteboard pasteboard;
  test::FakeLog log;
  test::FakeDefaults defaults;
  test::FakeStrings strings;
  test::FakeDesktop desktop;
  ClipStore store{files, log, "/data"};
  ClipboardMonitor monitor{pasteboard, loop, loop};
  PasteDelivery delivery{{.accessibility = desktop,
                          .clock = loop,
                          .defaults = defaults,
                          .keys = desktop,
                          .log = log,
                          .notifications = desktop,
                          .pasteboard = pasteboard,
                          .queue = loop,
                          .strings = strings,
                          .workspace = desktop},
                         monitor,
                         store};
  std::optional<RunningApplication> target = RunningApplication{"Editor", WindowId{7}};
};

TEST_F(PasteDeliveryTest, ATrustedPasteActivatesTheTargetAndPostsCommandVAfter80Milliseconds) {
  int reported = 0;
  monitor.setOnNewText([&](const CanonicalText&) { ++reported; });
  monitor.start();
  paste("e\u0301 text", "action");
  EXPECT_EQ(pasteboard.string(), "e\u0301 text");
  EXPECT_EQ(store.clips().value()[0]->source, "action");
  EXPECT_EQ(store.clips().value()[0]->savedAt, loop.now);
  loop.advance(79ms);
  EXPECT_EQ(desktop.asked, Lines{"activate Editor"});
  loop.advance(1ms);
  EXPECT_EQ(desktop.events, (std::vector<KeyEvent>{{9, true, 0x100000}, {9, false, 0x100000}}));
  EXPECT_EQ(log.lines, (Lines{"paste (6 chars, src=action)", "AX trusted -> auto-paste to Editor",
                              "posted Cmd-V"}));
  loop.advance(2s);
  EXPECT_EQ(reported, 0);
}

TEST_F(PasteDeliveryTest, ATargetMayBeMissingNamelessOrGone) {
  target.reset();
  paste("a");
  loop.advance(80ms);
  EXPECT_EQ(desktop.asked, Lines{"post"});
  EXPECT_EQ(log.lines[1], "AX trusted -> auto-paste to ?");
  pasteboard.take();
  log = {};
  target = RunningApplication{"", WindowId{7}};
  paste("b");
  loop.advance(80ms);
  EXPECT_EQ(log.lines[1], "AX trusted -> auto-paste to ?");
  pasteboard.take();
  log = {};
  target = RunningApplication{"Quit", WindowId{8}};
  desktop.gone = true;
  paste("c");
  loop.advance(80ms);
  EXPECT_EQ(log.lines, (Lines{"paste (1 chars, src=manual)", "AX trusted -> auto-paste to Quit",
                              "the remembered application is gone; pasting to what is in front",
                              "posted Cmd-V"}));
}

TEST_F(PasteDeliveryTest, PastesFollowEachOtherOnceTheTextWasTaken) {
  paste("first");
  loop.advance(40ms);
  paste("second");
  paste("third");
  EXPECT_EQ(pasteboard.string(), "first");
  loop.advance(40ms);
  EXPECT_EQ(desktop.events.size(), 2u);
  EXPECT_EQ(pasteboard.string(), "first");
  pasteboard.take();
  EXPECT_EQ(pasteboard.string(), "second");
  loop.advance(80ms);
  EXPECT_EQ(desktop.events.size(), 4u);
  desktop.postResult = KeyEventPoster::Result::kFailed;
  pasteboard.take();
  loop.advance(80ms);  // nobody will take what could not be pasted
  EXPECT_EQ(log.lines.back(), "failed to create CGEvent for Cmd-V");
  paste("fourth");
  EXPECT_EQ(pasteboard.string(), "fourth");
  EXPECT_EQ(store.clips().value().size(), 4u);
}

TEST_F(PasteDeliveryTest, WithoutTrustThePersonIsToldAndAskedOnceBeforeTheOnboardingIsDone) {
  desktop.trusted = false;
  const std::string notice = "notify notify.copied.title, notify.copied.body";
  paste("a");
  EXPECT_EQ(desktop.asked, (Lines{notice, "prompt"}));
  EXPECT_EQ(defaults.writes, Lines{"didPromptAccessibility=true"});
  EXPECT_EQ(log.lines,
            (Lines{"paste (1 chars, src=manual)", "AX not trusted -> clipboard-only fallback",
                   "prompted accessibility permission (first time only)"}));
  paste("b");
  EXPECT_EQ(desktop.asked, (Lines{notice, "prompt", notice}));
  defaults.values = {{"macOnboardingDone", true}};
  paste("c");
  EXPECT_EQ(desktop.asked, (Lines{notice, "prompt", notice, notice}));
  EXPECT_EQ(defaults.writes.size(), 1u);
  loop.advance(1s);
  EXPECT_TRUE(desktop.events.empty());
  EXPECT_EQ(pasteboard.string(), "c");
}

TEST_F(PasteDeliveryTest, AnEmptyTextDoesNothingAndBlanksAreDelivered) {
  const auto count = pasteboard.changeCount();
  paste("");
  EXPECT_EQ(pasteboard.changeCount(), count);
  EXPECT_TRUE(log.lines.empty() && store.clips().value().empty());
  paste("  ");
  EXPECT_EQ(store.clips().value().size(), 1u);
}

}  // namespace
}  // namespace brimlo
