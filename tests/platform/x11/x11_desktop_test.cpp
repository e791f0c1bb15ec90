// What a session asks of a real X server: applications, hotkeys, the keyboard, keys and clicks. Run
// under two window managers and without any.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QWindow>

#include "platform/qt/qt_run_loop.h"
#include "platform/x11/selection_owner.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_key_events.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_properties.h"
#include "platform/x11/x11_window_id.h"
#include "platform/x11/x11_window_server.h"
#include "platform/x11/xcb_xkb.h"
#include "support/fakes.h"
#include "support/wait.h"

namespace brimlo {
namespace {

using test::wait;
using Result = KeyEventPoster::Result;

constexpr int kKeyOfV = 55, kKeyOfVInDvorak = 60;
constexpr std::uint16_t kModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
constexpr std::int32_t kBadAccess = 10;

/// Whether another client can grab that key.
bool grab(X11Connection& client, xcb_keycode_t key, std::uint16_t modifiers) {
  return client.check(xcb_grab_key_checked(client.xcb(), 0, client.root(), modifiers, key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)) == 0;
}

/// A window that no manager manages, and that counts the keys it gets.
class Panel : public QWindow {
 public:
  Panel() {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    setGeometry(800, 600, 200, 100);
  }
  int keys = 0;

 private:
  void keyPressEvent(QKeyEvent*) override { ++keys; }
};

class X11DesktopTest : public testing::Test {
 protected:
  X11DesktopTest() {
    x11->serve();
    run("setxkbmap -layout us; xdotool mousemove 640 20");
  }
  ~X11DesktopTest() override {
    for (const auto& terminal : terminals) end(*terminal);
  }

  static void run(const std::string& command) {
    QProcess process;
    process.start("sh", {"-c", QString::fromStdString("{ " + command + "; } 2>/dev/null")});
    wait([&] { return process.state() == QProcess::NotRunning; });
  }
  /// Returns once the window manager, the server and this program have dealt with all that was
  /// begun before.
  void sync() {
    const xcb_atom_t extents = atom("_NET_FRAME_EXTENTS");
    for (int round = 0; round < 2; ++round) {
      if (managed()) {
        xcb_delete_property(x11->xcb(), probe.id(), extents);
        xcb_client_message_event_t ask{};
        ask.response_type = XCB_CLIENT_MESSAGE;
        ask.format = 32;
        ask.window = probe.id();
        ask.type = atom("_NET_REQUEST_FRAME_EXTENTS");
        xcb_send_event(x11->xcb(), 0, x11->root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&ask));
        EXPECT_TRUE(wait([&] {
          return numberProperty(*x11, probe.id(), extents, XCB_ATOM_CARDINAL).has_value();
        }));
      }
      bool answered = false;
      time.now([&](xcb_timestamp_t) { answered = true; });
      wait([&] { return answered; });
      QGuiApplication::sync();
    }
  }
  xcb_atom_t atom(const std::string& name) {
    const auto cookie =
        xcb_intern_atom(x11->xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    return x11->waitFor(xcb_intern_atom_reply, cookie)->atom;
  }

  /// A terminal of that class, in front. What is typed into it goes to the file of its name.
  QProcess& open(const std::string& name, const std::string& place = "+0+0") {
    QProcess& terminal = *terminals.emplace_back(std::make_unique<QProcess>());
    const QString file = folder.filePath(QString::fromStdString(name));
    terminal.start("xterm", {"-class", QString::fromStdString(name), "-geometry",
                             QString::fromStdString("40x10" + place), "-e", "sh", "-c",
                             "stty raw -echo; cat >" + file});
    EXPECT_TRUE(wait([&] { return QFile::exists(file) && bringToFront(name); })) << name;
    return terminal;
  }
  static void end(QProcess& terminal) {
    terminal.kill();
    wait([&] { return terminal.state() == QProcess::NotRunning; });
  }
  void activate(const std::string& name) {
    run("xdotool search --onlyvisible --class '^" + name + "$' " +
        (managed() ? "windowactivate" : "windowfocus") + " --sync");
  }
  /// Whether it is in front and has the keyboard too, which a window manager does one after the
  /// other.
  bool bringToFront(const std::string& name) {
    if (front() != name) activate(name);
    sync();
    const auto application = workspace.frontmostApplication();
    return application && application->bundleIdentifier == name &&
           workspace.topLevelOf(focus()) == xcbWindow(application->window);
  }
  std::string typedInto(const std::string& name) {
    QFile file(folder.filePath(QString::fromStdString(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
  }
  std::string front() {
    const auto application = workspace.frontmostApplication();
    return application ? application->bundleIdentifier : "";
  }
  bool managed() { return selectionOwner(*x11, atom("WM_S0")) != XCB_NONE; }
  xcb_window_t focus() {
    return x11->waitFor(xcb_get_input_focus_reply, xcb_get_input_focus(x11->xcb()))->focus;
  }

  struct Registration {
    HotKeys::Status status = -1;
    std::unique_ptr<EventHotKey> hotKey;
  };
  Registration registerHotKey(std::uint32_t keyCode = 9) {
    Registration made;
    made.hotKey =
        hotKeys.registerEventHotKey(keyCode, hot_key_modifier::kCommand | hot_key_modifier::kShift,
                                    {1, 2}, [&](HotKeys::Status status) { made.status = status; });
    return made;
  }
  /// How many presses are told for one of that key, with Shift and Super.
  int press(int key) {
    const int before = presses;
    const std::string code = std::to_string(key);
    run("xdotool keydown 50 keydown 133 key " + code + " keyup 133 keyup 50");
    sync();
    return presses - before;
  }

  void takeKeyboard() {
    panel.show();
    server.takeKeyboard(panel.winId(), [this] { ++losses; });
    EXPECT_TRUE(wait([&] { return focus() == panel.winId() && panel.isActive(); }));
  }
  void giveKeyboardBack() {
    server.giveKeyboardBack(panel.winId());
    panel.hide();
  }
  std::optional<Result> post() {
    std::optional<Result> result;
    keys.post({key_code::kV, true, modifier_flag::kCommand},
              {key_code::kV, false, modifier_flag::kCommand},
              [&](Result posted) { result = posted; });
    wait([&] { return result.has_value(); });
    return result;
  }

  QTemporaryDir folder;
  std::vector<std::unique_ptr<QProcess>> terminals;
  test::FakeLog log;
  QtRunLoop loop;
  std::unique_ptr<X11Connection> x11 = X11Connection::open().connection;
  X11Time time{*x11};
  InputOnlyWindow probe{*x11, XCB_EVENT_MASK_NO_EVENT};
  X11Keyboard keyboard{*x11};
  X11RawInput rawInput{*x11};
  X11Pasteboard pasteboard{*x11, time, log};
  X11Workspace workspace{*x11, time};
  X11HotKeys hotKeys{*x11, keyboard, rawInput, log};
  X11WindowServer server{*x11, time, workspace};
  X11EventMonitors monitors{*x11, keyboard, rawInput};
  X11KeyEvents keys{*x11, keyboard, workspace, pasteboard, loop};
  int presses = 0;
  std::unique_ptr<EventHandler> onPress =
      hotKeys.installEventHandler([this](const EventHotKeyID& pressed) {
        EXPECT_EQ(pressed, (EventHotKeyID{1, 2}));
        ++presses;
      });
  int losses = 0;
  Panel panel;
};

TEST_F(X11DesktopTest, AWindowComesBackToTheFrontFromWhereverItIsUntilItHasQuit) {
  EXPECT_EQ(front(), "");
  QProcess& first = open("First");
  const RunningApplication remembered = *workspace.frontmostApplication();
  const xcb_window_t window = xcbWindow(remembered.window);
  const std::string id = std::to_string(window);
  open("Second", "+0+400");
  constexpr std::uint32_t kNormal = 1, kIconic = 3;
  const struct {
    std::string command;
    xcb_atom_t property;  // has this value once the window manager has carried the command out
    std::uint32_t value;
  } kCases[] = {
      {"getwindowname " + id, x11->atoms().wmState, kNormal},
      {"windowminimize " + id, x11->atoms().wmState, kIconic},
      {"set_desktop_for_window " + id + " 2", x11->atoms().wmDesktop, 2},
  };
  for (const auto& away : kCases) {
    ASSERT_TRUE(wait([&] { return bringToFront("Second"); })) << away.command;
    run("xdotool " + away.command);
    EXPECT_TRUE(!managed() || wait([&] {
      return away.value == numberProperty(*x11, window, away.property, XCB_GET_PROPERTY_TYPE_ANY);
    }));
    sync();
    EXPECT_EQ(workspace.activate(remembered), Workspace::Activation::kAsked);
    EXPECT_TRUE(wait([&] { return front() == "First"; })) << away.command;
    run("xdotool set_desktop 0 set_desktop_for_window " + id + " 0");
  }
  end(first);
  EXPECT_TRUE(wait([&] { return workspace.activate(remembered) == Workspace::Activation::kGone; }));
}

TEST_F(X11DesktopTest, NothingIsPostedWhileAPanelOfThisProgramHasTheKeyboard) {
  open("Own");
  const std::string pid = std::to_string(getpid());
  run("xprop -id " + std::to_string(xcbWindow(workspace.frontmostApplication()->window)) +
      " -f _NET_WM_PID 32c -set _NET_WM_PID " + pid);
  EXPECT_TRUE(wait([&] { return front().empty(); }));
  EXPECT_EQ(post(), Result::kPosted) << "a managed window of its own is no panel";

  takeKeyboard();
  ASSERT_TRUE(workspace.ownPanelInFront());
  EXPECT_EQ(post(), Result::kFailed);
  loop.asyncAfter(std::chrono::milliseconds(100), [&] { giveKeyboardBack(); });
  EXPECT_EQ(post(), Result::kPosted);
}

TEST_F(X11DesktopTest, EachPressOfAHotKeyIsToldOnceWhicheverLocksAreOn) {
  open("First");
  const auto hotKey = registerHotKey();
  ASSERT_EQ(hotKey.status, 0);
  run("xmodmap -e 'add mod3 = Scroll_Lock'");
  for (const std::string locks :
       {"true", "key Caps_Lock", "key Num_Lock", "key Scroll_Lock", "key Caps_Lock Num_Lock"}) {
    run("xdotool " + locks);
    sync();
    EXPECT_EQ(press(kKeyOfV), 1) << locks;
    run("xdotool " + locks);
  }
  presses = 0;
  run("xset r rate 100 50; xdotool keydown 50 keydown 133 keydown 55; sleep 0.3");
  EXPECT_EQ(presses, 1) << "held";
  const QString again = "sleep 0.2; xdotool keyup 55 keydown 55 keyup 55 keyup 133 keyup 50";
  QProcess::execute("sh", {"-c", again});  // with the program too busy to look
  sync();
  EXPECT_EQ(presses, 2) << "let go and pressed again between two repeats";
  run("xdotool key x");
  EXPECT_TRUE(wait([&] { return !typedInto("First").empty(); }));
  EXPECT_EQ(typedInto("First"), "x");
}

TEST_F(X11DesktopTest, AHotKeyThatAnotherProgramHasIsRefusedAndNothingOfItIsKept) {
  EXPECT_NE(registerHotKey(8).status, 0);
  auto other = X11Connection::open().connection;
  ASSERT_TRUE(grab(*other, kKeyOfV, kModifiers | XCB_MOD_MASK_LOCK));
  const auto refused = registerHotKey();
  EXPECT_EQ(refused.status, kBadAccess);
  sync();
  EXPECT_TRUE(grab(*other, kKeyOfV, kModifiers)) << "nothing was kept";
  other.reset();
  Registration hotKey;
  ASSERT_TRUE(wait([&] { return (hotKey = registerHotKey()).status == 0; }));
  EXPECT_EQ(registerHotKey().status, kBadAccess) << "it is taken already";
  EXPECT_EQ(press(kKeyOfV), 1);
  other = X11Connection::open().connection;
  EXPECT_FALSE(grab(*other, kKeyOfV, kModifiers));
  hotKey.hotKey.reset();
  EXPECT_EQ(press(kKeyOfV), 0);
  EXPECT_TRUE(grab(*other, kKeyOfV, kModifiers));
}

TEST_F(X11DesktopTest, AHotKeyFollowsTheLayoutAndWhatItCannotTakeIsLogged) {
  const auto hotKey = registerHotKey();
  const auto lockGroup = [&](std::uint8_t group) {
    xcb_xkb_latch_lock_state(x11->xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    x11->flush();
  };
  const struct {
    const char* layout;
    std::uint8_t group;
    int key;
  } kCases[] = {
      {"us,ru", 1, kKeyOfV}, {"us,dvorak", 0, kKeyOfV}, {"us,dvorak", 1, kKeyOfVInDvorak},
      {"ru,us", 0, kKeyOfV}, {"ru", 0, kKeyOfV},        {"dvorak", 0, kKeyOfVInDvorak},
      {"us", 0, kKeyOfV},
  };
  for (const auto& [layout, group, key] : kCases) {
    run(std::string("setxkbmap -layout ") + layout);
    lockGroup(group);
    EXPECT_TRUE(wait([&, wanted = key] { return press(wanted) == 1; })) << layout << int{group};
    EXPECT_EQ(press(kKeyOfV + kKeyOfVInDvorak - key), 0) << layout << int{group};
  }
  EXPECT_TRUE(log.lines.empty());
  const auto other = X11Connection::open().connection;
  ASSERT_TRUE(grab(*other, kKeyOfVInDvorak, kModifiers));
  run("setxkbmap -layout dvorak");
  EXPECT_TRUE(wait([&] { return log.has("the hotkey is out of use"); }));
  run("setxkbmap -layout us");
  EXPECT_TRUE(wait([&] { return press(kKeyOfV) == 1; }));
}

TEST_F(X11DesktopTest, ThePanelHasTheKeyboardWhileTheApplicationStaysInFrontUntilAnotherComes) {
  open("Other", "+0+400");
  open("First");
  const auto hotKey = registerHotKey();
  const xcb_window_t before = xcbWindow(workspace.frontmostApplication()->window);
  for (int round = 0; round < 3; ++round) {
    panel.keys = 0;
    takeKeyboard();
    sync();
    EXPECT_EQ(front(), "First");
    EXPECT_TRUE(workspace.ownPanelInFront());
    EXPECT_EQ(press(kKeyOfV), 1);
    takeKeyboard();
    run("xdotool key a");
    EXPECT_TRUE(wait([&] { return panel.keys > 0; }));
    server.giveKeyboardBack(panel.winId());
    EXPECT_EQ(focus(), before) << "when the call returns";
    panel.hide();
    sync();
    EXPECT_EQ(focus(), before);
  }
  run("xdotool key x");
  EXPECT_TRUE(wait([&] { return typedInto("First") == "x"; }));
  EXPECT_EQ(losses, 0);

  takeKeyboard();
  activate("Other");
  EXPECT_TRUE(wait([&] { return losses == 1 && front() == "Other"; }));
  giveKeyboardBack();
  sync();
  EXPECT_EQ(front(), "Other");
  EXPECT_EQ(losses, 1);
}

TEST_F(X11DesktopTest, AWindowThatIsClickedKeepsTheKeyboardThatIsGivenBackMeanwhile) {
  if (!managed()) GTEST_SKIP() << "a click gives the focus to nobody";
  open("First");
  open("Second", "+0+400");
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(wait([&] { return bringToFront("Second"); }));
    takeKeyboard();
    const auto monitor = monitors.addGlobalMouseDownMonitor([&] { giveKeyboardBack(); });
    run("xdotool mousemove 60 60 click 1");
    EXPECT_TRUE(wait([&] { return !panel.isVisible() && front() == "First"; }));
    sync();
    EXPECT_EQ(front(), "First");
    EXPECT_NE(focus(), panel.winId());
  }
}

TEST_F(X11DesktopTest, NothingDanglesWhenAWindowGoesAway) {
  open("Other", "+0+400");
  QProcess& terminal = open("First");
  takeKeyboard();
  run("xdotool windowunmap " + std::to_string(panel.winId()));
  EXPECT_TRUE(wait([&] { return losses == 1; })) << "the panel was hidden";
  EXPECT_TRUE(wait([&] { return bringToFront("Other"); })) << "the front is live";
  giveKeyboardBack();

  ASSERT_TRUE(wait([&] { return bringToFront("First"); }));
  takeKeyboard();
  end(terminal);
  sync();
  giveKeyboardBack();
  EXPECT_NE(focus(), static_cast<xcb_window_t>(XCB_INPUT_FOCUS_NONE)) << "nobody to go back to";
  EXPECT_NE(focus(), panel.winId());
  ASSERT_TRUE(wait([&] { return bringToFront("Other"); }));

  takeKeyboard();
  panel.destroy();
  EXPECT_TRUE(wait([&] { return bringToFront("Other"); })) << "the panel is gone";
}

TEST_F(X11DesktopTest, KeysAreToldByTheirCodesModifiersAndTexts) {
  std::vector<std::string> told;
  bool consume = false;
  const auto monitor = monitors.addLocalKeyDownMonitor([&](const KeyDownEvent& press) {
    const bool known = press.keyCode != key_code::kOther;
    if (!known && press.charactersIgnoringModifiers.empty()) return true;  // a modifier
    std::string what;
    if ((press.modifierFlags & modifier_flag::kShift) != 0) what += "shift ";
    if ((press.modifierFlags & modifier_flag::kControl) != 0) what += "control ";
    if ((press.modifierFlags & modifier_flag::kOption) != 0) what += "option ";
    if ((press.modifierFlags & modifier_flag::kCommand) != 0) what += "command ";
    told.push_back(what +
                   (known ? std::to_string(press.keyCode) : press.charactersIgnoringModifiers));
    return consume;
  });
  takeKeyboard();
  const struct {
    const char* layout;
    const char* keys;  // for xdotool; numbers above 9 are key codes of the server
    std::string told;
  } kCases[] = {
      {"us", "key 36", "36"},
      {"us", "key 104", "76"},
      {"us", "key 23", "48"},
      {"us", "keydown 50 key 23 keyup 50", "shift 48"},
      {"us", "key Escape", "53"},
      {"us", "key 112", "116"},
      {"us", "key 117", "121"},
      {"us", "key 113", "123"},
      {"us", "key 114", "124"},
      {"us", "key 116", "125"},
      {"us", "key 111", "126"},
      {"us", "key 81", "116"},
      {"us", "key 88", "125"},
      {"us", "key Num_Lock key 88 key Num_Lock", "2"},
      {"us", "key 12", "3"},
      {"us", "keydown 64 key 12 keyup 64", "option 3"},
      {"us", "keydown 37 key 55 keyup 37", "control v"},
      {"us", "keydown 133 key 12 keyup 133", "command 3"},
      {"us", "keydown 50 key 12 keyup 50", "shift #"},
      {"us", "key Caps_Lock key 55 key Caps_Lock", "V"},
      {"fr", "key 10", "&"},
      {"fr", "keydown 50 key 10 keyup 50", "shift 1"},
      {"fr", "key 11", "é"},
      {"ru", "key 55", "м"},
  };
  std::string layout = "us";
  for (const auto& expected : kCases) {
    if (std::exchange(layout, expected.layout) != layout) run("setxkbmap -layout " + layout);
    for (const bool swallowed : {false, true}) {
      consume = swallowed;
      told.clear();
      panel.keys = 0;
      sync();
      run(std::string("xdotool ") + expected.keys);
      EXPECT_TRUE(wait([&] { return !told.empty() && (swallowed || panel.keys > 0); }));
      EXPECT_EQ(told, std::vector{expected.told}) << expected.layout << " " << expected.keys;
      EXPECT_EQ(panel.keys, swallowed ? 0 : 1) << expected.keys;
    }
  }
}

TEST_F(X11DesktopTest, ClicksAreToldByWhoseWindowTheyAreOn) {
  open("First");
  takeKeyboard();
  int elsewhere = 0;
  std::vector<WindowId> own;
  const auto local =
      monitors.addLocalMouseDownMonitor([&](WindowId window) { own.push_back(window); });
  auto global = monitors.addGlobalMouseDownMonitor([&] { ++elsewhere; });
  const auto click = [&](const char* what) {
    run(std::string("xdotool mousemove ") + what);
    sync();
    return std::pair(std::exchange(elsewhere, 0), std::exchange(own, {}));
  };
  using Told = std::pair<int, std::vector<WindowId>>;
  EXPECT_EQ(click("60 60 click 1"), Told(1, {}));
  EXPECT_EQ(click("60 60 click 4"), Told(0, {})) << "the wheel";
  EXPECT_EQ(click("700 500 click 1"), Told(1, {})) << "no window at all";
  EXPECT_EQ(click("850 650 click 1"), Told(0, {static_cast<WindowId>(panel.winId())}));
  global.reset();
  EXPECT_EQ(click("60 60 click 1"), Told(0, {}));
}

}  // namespace
}  // namespace brimlo
