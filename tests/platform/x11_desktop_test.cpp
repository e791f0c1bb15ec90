// The applications and the keyboard of a real X server. Run with a window manager and without.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QProcess>

#include "platform/qt/qt_run_loop.h"
#include "platform/x11/x11_key_events.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_window_id.h"
#include "platform/x11/x11_workspace.h"
#include "support/fakes.h"
#include "support/wait.h"

namespace brimlo {
namespace {

using Result = KeyEventPoster::Result;
using test::wait;

class X11DesktopTest : public testing::Test {
 protected:
  X11DesktopTest() { x11->serve(); }

  /// A terminal of that class, in front; it ends with the returned process.
  std::unique_ptr<QProcess> open(const std::string& name) {
    auto terminal = std::make_unique<QProcess>();
    terminal->start("xterm", {"-class", QString::fromStdString(name), "-e", "sleep", "60"});
    EXPECT_TRUE(wait([&] { return bringToFront(name); })) << name;
    return terminal;
  }
  bool bringToFront(const std::string& name) {
    if (front() != name) xdotool("search --onlyvisible --class '^" + name + "$' windowfocus");
    return front() == name;
  }
  static void xdotool(const std::string& what) {
    QProcess::execute("sh", {"-c", QString::fromStdString("xdotool " + what + " 2>/dev/null")});
  }
  std::string front() {
    const auto application = workspace.frontmostApplication();
    return application ? application->bundleIdentifier : "";
  }
  std::optional<Result> post() {
    std::optional<Result> result;
    keys.post({9, true, KeyEvent::kCommandFlag}, {9, false, KeyEvent::kCommandFlag},
              [&](Result posted) { result = posted; });
    wait([&] { return result.has_value(); });
    return result;
  }

  std::unique_ptr<X11Connection> x11 = X11Connection::open().connection;
  test::FakeLog log;
  test::FakeStrings strings;
  test::FakeDesktop desktop;
  QtRunLoop loop;
  X11Time time{*x11};
  X11Workspace workspace{*x11, time};
  X11Pasteboard pasteboard{*x11, time, log};
  X11Keyboard keyboard{*x11};
  X11KeyEvents keys{*x11, keyboard, workspace, pasteboard, loop, desktop, strings};
};

TEST_F(X11DesktopTest, AWindowComesBackToTheFrontFromWhereverItIsUntilItHasQuit) {
  EXPECT_EQ(front(), "");
  const auto first = open("First");
  const RunningApplication remembered = *workspace.frontmostApplication();
  const std::string id = std::to_string(xcbWindow(remembered.window));
  const auto second = open("Second");
  for (const std::string& away :
       {"getwindowname " + id, "windowminimize " + id, "set_desktop_for_window " + id + " 2"}) {
    ASSERT_TRUE(wait([&] { return bringToFront("Second"); })) << away;
    xdotool(away);
    EXPECT_EQ(workspace.activate(remembered), Workspace::Activation::kAsked);
    EXPECT_TRUE(wait([&] { return front() == "First"; })) << away;
    xdotool("set_desktop 0 set_desktop_for_window " + id + " 0");
  }
  first->kill();
  EXPECT_TRUE(wait([&] { return workspace.activate(remembered) == Workspace::Activation::kGone; }));
}

TEST_F(X11DesktopTest, NothingIsPostedWhileAPanelOfThisProgramHasTheKeyboard) {
  const auto own = open("Own");
  const std::string id = std::to_string(xcbWindow(workspace.frontmostApplication()->window));
  const QStringList claim = {"-id", id.c_str(), "-f",          "_NET_WM_PID",
                             "32c", "-set",     "_NET_WM_PID", QString::number(getpid())};
  QProcess::execute("xprop", claim);
  EXPECT_TRUE(wait([&] { return front().empty(); }));
  EXPECT_EQ(post(), Result::kPosted) << "a window of its own is as good as another";

  xcb_connection_t* xcb = x11->xcb();
  const xcb_window_t panel = xcb_generate_id(xcb);
  const std::uint32_t overrideRedirect = 1, pid = static_cast<std::uint32_t>(getpid());
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, panel, x11->root(), 0, 0, 50, 50, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                    &overrideRedirect);
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, panel, x11->atoms().wmPid, XCB_ATOM_CARDINAL, 32,
                      1, &pid);
  xcb_map_window(xcb, panel);
  xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT, panel, XCB_CURRENT_TIME);
  xcb_flush(xcb);
  ASSERT_TRUE(wait([&] { return workspace.ownPanelInFront(); }));
  EXPECT_EQ(post(), Result::kFailed);
  loop.asyncAfter(std::chrono::milliseconds(100), [&] {
    xcb_destroy_window(xcb, panel);
    xcb_flush(xcb);
  });
  EXPECT_EQ(post(), Result::kPosted);
}

}  // namespace
}  // namespace brimlo
