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
  test::FakePasteboard pasteboard{loop};
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
  const Clip& clip = *store.clips().value()[0];
  EXPECT_TRUE(clip.source == "action" && clip.savedAt == loop.now);
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
  const std::string front = "the remembered application is gone; pasting to what is in front";
  const struct {
    std::optional<RunningApplication> target;
    Lines lines;
  } cases[] = {
      {std::nullopt, {"AX trusted -> auto-paste to ?"}},
      {RunningApplication{"", WindowId{7}}, {"AX trusted -> auto-paste to ?"}},
      {RunningApplication{"Quit", WindowId{8}}, {"AX trusted -> auto-paste to Quit", front}}};
  for (const auto& [to, lines] : cases) {
    log = {};
    target = to;
    desktop.gone = lines.size() > 1;
    paste("a");
    loop.advance(80ms);
    pasteboard.take();
    EXPECT_EQ(Lines(log.lines.begin() + 1, log.lines.end() - 1), lines);
    EXPECT_EQ(log.lines.back(), "posted Cmd-V");
  }
}

TEST_F(PasteDeliveryTest, PastesFollowEachOtherOnceTheTextWasTaken) {
  for (const char* text : {"first", "second", "third"}) paste(text);
  loop.advance(80ms);
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
  EXPECT_EQ(log.lines,
            (Lines{"paste (1 chars, src=manual)", "AX not trusted -> clipboard-only fallback",
                   "prompted accessibility permission (first time only)"}));
  paste("b");
  EXPECT_EQ(desktop.asked, (Lines{notice, "prompt", notice}));
  EXPECT_EQ(defaults.writes, Lines{"didPromptAccessibility=true"});
  defaults.values = {{"macOnboardingDone", true}};
  paste("c");
  EXPECT_EQ(desktop.asked, (Lines{notice, "prompt", notice, notice}));
  loop.advance(1s);
  EXPECT_TRUE(desktop.events.empty());
  for (const char* text : {"  ", ""}) paste(text);
  EXPECT_EQ(pasteboard.string(), "  ") << "an empty text is not delivered";
}

}  // namespace
}  // namespace brimlo
