// What a floating panel needs of a real X server: its hotkey, the keyboard, keys and clicks. Run
// under window managers and without.

#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QWindow>

#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_properties.h"
#include "platform/x11/x11_window_id.h"
#include "platform/x11/x11_window_server.h"
#include "platform/x11/xcb_xkb.h"
#include "support/fakes.h"
#include "support/wait.h"

namespace brimlo {
namespace {

using test::wait;

constexpr int kShift = 50, kSuper = 133, kKeyOfV = 55, kKeyOfVInDvorak = 60;
constexpr std::uint16_t kModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
constexpr std::int32_t kBadAccess = 10;

/// Another client of the server.
struct Client {
  bool grab(xcb_keycode_t key, std::uint16_t modifiers) {
    const XcbPtr<xcb_generic_error_t> error(xcb_request_check(
        xcb.get(), xcb_grab_key_checked(xcb.get(), 0, root(), modifiers, key, XCB_GRAB_MODE_ASYNC,
                                        XCB_GRAB_MODE_ASYNC)));
    return !error;
  }
  xcb_window_t root() { return xcb_setup_roots_iterator(xcb_get_setup(xcb.get())).data->root; }

  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> xcb{xcb_connect(nullptr, nullptr),
                                                                   xcb_disconnect};
};

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

class X11PanelTest : public testing::Test {
 protected:
  X11PanelTest() {
    x11->serve();
    run("setxkbmap -layout us; xdotool mousemove 640 20");
  }
  ~X11PanelTest() override {
    for (const auto& terminal : terminals) end(*terminal);
  }

  static void run(const std::string& command) {
    QProcess process;
    process.start("sh", {"-c", QString::fromStdString("{ " + command + "; } 2>/dev/null")});
    wait([&] { return process.state() == QProcess::NotRunning; });
  }
  /// What is on its way, and what would be wrong of it, has had the time to arrive.
  static void settle() {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    wait([&] { return std::chrono::steady_clock::now() > until; });
  }

  /// A terminal of that class, in front. What is typed into it goes to the file of its name.
  QProcess& open(const std::string& name, const std::string& place) {
    QProcess& terminal = *terminals.emplace_back(std::make_unique<QProcess>());
    const std::string command = "stty raw -echo; cat >" + folder.path().toStdString() + "/" + name;
    terminal.start("xterm", {"-class", QString::fromStdString(name), "-geometry",
                             QString::fromStdString("40x10" + place), "-e", "sh", "-c",
                             QString::fromStdString(command)});
    EXPECT_TRUE(wait([&] { return bringToFront(name); })) << name;
    EXPECT_TRUE(wait([&] { return QFile::exists(folder.filePath(QString::fromStdString(name))); }));
    return terminal;
  }
  static void end(QProcess& terminal) {
    terminal.kill();
    wait([&] { return terminal.state() == QProcess::NotRunning; });
  }
  void activate(const std::string& name) {
    run("w=$(xdotool search --onlyvisible --class '^" + name + "$'); xdotool " +
        (managed() ? "windowactivate" : "windowfocus") + " $w");
  }
  bool bringToFront(const std::string& name) {
    if (front() != name) activate(name);
    return front() == name;
  }
  std::string typedInto(const std::string& name) {
    QFile file(folder.filePath(QString::fromStdString(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
  }
  std::string front() {
    const auto application = workspace.frontmostApplication();
    return application ? application->bundleIdentifier : "";
  }
  bool managed() {
    return numberProperty(*x11, x11->root(), x11->atoms().supportingWmCheck, XCB_ATOM_WINDOW)
        .has_value();
  }
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
        hotKeys.registerEventHotKey(keyCode, HotKeys::kCommandKey | HotKeys::kShiftKey, {1, 2},
                                    [&](HotKeys::Status status) { made.status = status; });
    return made;
  }
  static std::string chord(int key) {
    std::string text = "xdotool";
    for (const int each : {kShift, kSuper, key}) text += " keydown " + std::to_string(each);
    for (const int each : {key, kSuper, kShift}) text += " keyup " + std::to_string(each);
    return text;
  }
  /// How many presses were told for one of that key.
  int press(int key) {
    const int before = presses;
    run(chord(key));
    settle();
    return presses - before;
  }
  bool comesToWork(int key) {
    bool works = false;
    return wait([&] { return works = works || press(key) == 1; });
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

  QTemporaryDir folder;
  std::vector<std::unique_ptr<QProcess>> terminals;
  test::FakeLog log;
  std::unique_ptr<X11Connection> x11 = X11Connection::open().connection;
  X11Keyboard keyboard{*x11};
  X11RawInput rawInput{*x11};
  X11Time time{*x11};
  X11Workspace workspace{*x11, time};
  X11HotKeys hotKeys{*x11, keyboard, rawInput, log};
  X11WindowServer server{*x11, time, workspace};
  X11EventMonitors monitors{*x11, keyboard, rawInput};
  int presses = 0;
  std::unique_ptr<EventHandler> onPress =
      hotKeys.installEventHandler([this](const EventHotKeyID& pressed) {
        EXPECT_EQ(pressed, (EventHotKeyID{1, 2}));
        ++presses;
      });
  int losses = 0;
  Panel panel;
};

TEST_F(X11PanelTest, AHotKeyIsPressedOnceWhicheverLocksAreOnAndHoweverLongItIsHeld) {
  const auto hotKey = registerHotKey();
  ASSERT_EQ(hotKey.status, 0);
  run("xmodmap -e 'add mod3 = Scroll_Lock'");
  for (const std::string locks :
       {"", "Caps_Lock", "Num_Lock", "Scroll_Lock", "Caps_Lock Num_Lock Scroll_Lock"}) {
    const std::string toggle = locks.empty() ? "true" : "xdotool key " + locks;
    run(toggle);
    settle();  // the new modifier of Scroll Lock has been taken up
    EXPECT_EQ(press(kKeyOfV), 1) << locks;
    run(toggle);
  }
  presses = 0;
  run("xset r rate 100 50; xdotool keydown 50 keydown 133 keydown 55; sleep 0.5");
  EXPECT_EQ(presses, 1) << "held";
  const QString again = "sleep 0.3; xdotool keyup 55 keydown 55 keyup 55 keyup 133 keyup 50";
  QProcess::execute("sh", {"-c", again});  // with the program too busy to look
  settle();
  EXPECT_EQ(presses, 2) << "let go and pressed again between two repeats";
}

TEST_F(X11PanelTest, AHotKeyReachesNobodyElse) {
  open("First", "+0+0");
  const auto hotKey = registerHotKey();
  std::unique_ptr<EventHandler> once =
      hotKeys.installEventHandler([&](const EventHotKeyID&) { once.reset(); });
  run(chord(kKeyOfV) + " && xdotool key x");
  EXPECT_TRUE(wait([&] { return !typedInto("First").empty(); }));
  EXPECT_EQ(typedInto("First"), "x");
  EXPECT_EQ(presses, 1);
}

TEST_F(X11PanelTest, AHotKeyThatAnotherProgramHasIsRefusedWholeAndFreeAfterwards) {
  EXPECT_NE(registerHotKey(8).status, 0);
  {
    Client other;
    ASSERT_TRUE(wait([&] { return other.grab(kKeyOfV, kModifiers | XCB_MOD_MASK_LOCK); }));
    const auto refused = registerHotKey();
    EXPECT_EQ(refused.status, kBadAccess);
    EXPECT_TRUE(wait([&] { return other.grab(kKeyOfV, kModifiers); })) << "nothing was kept";
  }
  Registration hotKey;
  ASSERT_TRUE(wait([&] {
    if (hotKey.status != 0) hotKey = registerHotKey();
    return hotKey.status == 0;
  }));
  EXPECT_EQ(registerHotKey().status, kBadAccess) << "it is taken already";
  EXPECT_EQ(press(kKeyOfV), 1);
  Client other;
  EXPECT_FALSE(other.grab(kKeyOfV, kModifiers));
  hotKey.hotKey.reset();
  EXPECT_EQ(press(kKeyOfV), 0);
  EXPECT_TRUE(other.grab(kKeyOfV, kModifiers));
}

TEST_F(X11PanelTest, AHotKeyFollowsTheLayoutAndWhatItCannotTakeIsLogged) {
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
    EXPECT_TRUE(comesToWork(key)) << layout << int{group};
    EXPECT_EQ(press(kKeyOfV + kKeyOfVInDvorak - key), 0) << layout << int{group};
  }
  EXPECT_TRUE(log.lines.empty());
  {
    Client other;
    ASSERT_TRUE(other.grab(kKeyOfVInDvorak, kModifiers));
    run("setxkbmap -layout dvorak");
    EXPECT_TRUE(wait([&] { return log.has("the hotkey is out of use"); }));
  }
  run("setxkbmap -layout us");
  EXPECT_TRUE(comesToWork(kKeyOfV));
}

TEST_F(X11PanelTest, ThePanelHasTheKeyboardWhileTheApplicationStaysInFront) {
  open("First", "+0+0");
  const auto hotKey = registerHotKey();
  const xcb_window_t before = xcbWindow(workspace.frontmostApplication()->window);
  for (int round = 0; round < 3; ++round) {
    panel.keys = 0;
    takeKeyboard();
    settle();
    EXPECT_EQ(front(), "First");
    EXPECT_TRUE(workspace.ownPanelInFront());
    EXPECT_EQ(press(kKeyOfV), 1);
    takeKeyboard();
    run("xdotool key a");
    EXPECT_TRUE(wait([&] { return panel.keys > 0; }));
    server.giveKeyboardBack(panel.winId());
    EXPECT_EQ(focus(), before) << "when the call returns";
    panel.hide();
    settle();
    EXPECT_EQ(focus(), before);
    EXPECT_EQ(front(), "First");
  }
  run("xdotool key x");
  EXPECT_TRUE(wait([&] { return typedInto("First") == "x"; }));
  EXPECT_EQ(losses, 0);
}

TEST_F(X11PanelTest, TheLossOfTheKeyboardIsToldOnceAndTheFrontIsLiveAgain) {
  open("First", "+0+0");
  open("Second", "+0+400");
  takeKeyboard();
  EXPECT_EQ(front(), "Second");
  EXPECT_TRUE(wait([&] {
    if (losses == 0) activate("First");
    return losses == 1 && front() == "First";
  }));
  giveKeyboardBack();
  settle();
  EXPECT_EQ(front(), "First");
  EXPECT_EQ(losses, 1);
}

TEST_F(X11PanelTest, AWindowThatIsClickedKeepsTheKeyboardThatIsGivenBackMeanwhile) {
  if (!managed()) GTEST_SKIP() << "a click gives the focus to nobody";
  open("First", "+0+0");
  open("Second", "+0+400");
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(wait([&] { return bringToFront("Second"); }));
    takeKeyboard();
    const auto monitor = monitors.addGlobalMouseDownMonitor([&] { giveKeyboardBack(); });
    run("xdotool mousemove 60 60 click 1");
    EXPECT_TRUE(wait([&] { return !panel.isVisible() && front() == "First"; }));
    settle();
    EXPECT_EQ(front(), "First");
    EXPECT_NE(focus(), panel.winId());
  }
}

TEST_F(X11PanelTest, NothingDanglesWhenAWindowGoesAway) {
  open("Other", "+0+400");
  QProcess& terminal = open("First", "+0+0");
  takeKeyboard();
  run("xdotool windowunmap " + std::to_string(panel.winId()));
  EXPECT_TRUE(wait([&] { return losses == 1; })) << "the panel was hidden";
  EXPECT_TRUE(wait([&] { return bringToFront("Other"); })) << "the front is live";
  giveKeyboardBack();

  ASSERT_TRUE(wait([&] { return bringToFront("First"); }));
  takeKeyboard();
  end(terminal);
  settle();
  giveKeyboardBack();
  EXPECT_NE(focus(), static_cast<xcb_window_t>(XCB_INPUT_FOCUS_NONE)) << "nobody to go back to";
  EXPECT_NE(focus(), panel.winId());
  ASSERT_TRUE(wait([&] { return bringToFront("Other"); }));

  takeKeyboard();
  panel.destroy();
  EXPECT_TRUE(wait([&] { return bringToFront("Other"); })) << "the panel is gone";
}

TEST_F(X11PanelTest, KeysAreToldByPlaceModifiersAndWhatTheyType) {
  std::vector<KeyDownEvent> told;
  bool consume = false;
  const auto monitor = monitors.addLocalKeyDownMonitor([&](const KeyDownEvent& press) {
    const bool modifier =
        press.charactersIgnoringModifiers.empty() && press.keyCode == KeyDownEvent::kOtherKey;
    if (!modifier) told.push_back(press);
    return modifier || consume;
  });
  takeKeyboard();
  constexpr auto kOther = KeyDownEvent::kOtherKey;
  constexpr auto kShiftOn = KeyDownEvent::kShiftFlag, kControlOn = KeyDownEvent::kControlFlag,
                 kOptionOn = KeyDownEvent::kOptionFlag, kCommandOn = KeyDownEvent::kCommandFlag;
  const struct {
    const char* layout;
    const char* keys;  // in xdotool's words; numbers above 9 are key codes
    std::uint16_t keyCode;
    std::uint64_t flags;
    const char* characters;  // null: any
  } kCases[] = {
      {"us", "key 36", 36, 0, nullptr},
      {"us", "key 104", 76, 0, nullptr},
      {"us", "key 23", 48, 0, nullptr},
      {"us", "keydown 50 key 23 keyup 50", 48, kShiftOn, nullptr},
      {"us", "key Escape", 53, 0, nullptr},
      {"us", "key 112", 116, 0, nullptr},
      {"us", "key 117", 121, 0, nullptr},
      {"us", "key 113", 123, 0, nullptr},
      {"us", "key 114", 124, 0, nullptr},
      {"us", "key 116", 125, 0, nullptr},
      {"us", "key 111", 126, 0, nullptr},
      {"us", "key 81", 116, 0, nullptr},
      {"us", "key 88", 125, 0, nullptr},
      {"us", "key Num_Lock key 88 key Num_Lock", kOther, 0, "2"},
      {"us", "key 12", kOther, 0, "3"},
      {"us", "keydown 64 key 12 keyup 64", kOther, kOptionOn, "3"},
      {"us", "keydown 37 key 55 keyup 37", kOther, kControlOn, "v"},
      {"us", "keydown 133 key 12 keyup 133", kOther, kCommandOn, "3"},
      {"us", "keydown 50 key 12 keyup 50", kOther, kShiftOn, "#"},
      {"us", "key Caps_Lock key 55 key Caps_Lock", kOther, 0, "V"},
      {"fr", "key 10", kOther, 0, "&"},
      {"fr", "keydown 50 key 10 keyup 50", kOther, kShiftOn, "1"},
      {"fr", "key 11", kOther, 0, "é"},
      {"ru", "key 55", kOther, 0, "м"},
  };
  std::string layout = "us";
  for (const auto& expected : kCases) {
    const std::string what = std::string(expected.layout) + " " + expected.keys;
    if (std::exchange(layout, expected.layout) != expected.layout) {
      run("setxkbmap -layout " + layout);
      settle();
    }
    for (const bool swallowed : {false, true}) {
      consume = swallowed;
      told.clear();
      panel.keys = 0;
      run(std::string("xdotool ") + expected.keys);
      ASSERT_TRUE(wait([&] { return !told.empty() && (swallowed || panel.keys > 0); })) << what;
      EXPECT_EQ(told.size(), 1U) << what;
      EXPECT_EQ(panel.keys, swallowed ? 0 : 1) << what;
      EXPECT_EQ(told[0].keyCode, expected.keyCode) << what;
      EXPECT_EQ(told[0].modifierFlags, expected.flags) << what;
      if (!expected.characters) continue;
      EXPECT_EQ(told[0].charactersIgnoringModifiers, expected.characters) << what;
    }
  }
}

TEST_F(X11PanelTest, ClicksAreToldByWhoseWindowTheyAreOn) {
  open("First", "+0+0");
  takeKeyboard();
  int elsewhere = 0, self = 0;
  std::vector<WindowId> own;
  const auto local =
      monitors.addLocalMouseDownMonitor([&](WindowId window) { own.push_back(window); });
  auto global = monitors.addGlobalMouseDownMonitor([&] { ++elsewhere; });
  std::unique_ptr<EventMonitor> once = monitors.addGlobalMouseDownMonitor([&] {
    ++self;
    once.reset();
  });
  const auto click = [&](const char* what) {
    run(std::string("xdotool mousemove ") + what);
    settle();
    return std::pair(std::exchange(elsewhere, 0), std::exchange(own, {}));
  };
  using Told = std::pair<int, std::vector<WindowId>>;
  EXPECT_EQ(click("60 60 click 1"), Told(1, {}));
  EXPECT_EQ(click("60 60 click 4"), Told(0, {})) << "the wheel";
  EXPECT_EQ(click("700 500 click 1"), Told(1, {})) << "no window at all";
  EXPECT_EQ(click("850 650 click 1"), Told(0, {static_cast<WindowId>(panel.winId())}));
  EXPECT_EQ(self, 1) << "a monitor that removed itself";
  global.reset();
  EXPECT_EQ(click("60 60 click 1"), Told(0, {}));
}

TEST_F(X11PanelTest, ItIsCompositedWhileSomebodyDoesThat) {
  EXPECT_FALSE(server.isCompositing());
  Client manager;
  const std::string name = "_NET_WM_CM_S0";
  const XcbPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
      manager.xcb.get(), xcb_intern_atom(manager.xcb.get(), 0, name.size(), name.data()), nullptr));
  const xcb_window_t window = xcb_generate_id(manager.xcb.get());
  xcb_create_window(manager.xcb.get(), 0, window, manager.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(manager.xcb.get(), window, atom->atom, XCB_CURRENT_TIME);
  xcb_flush(manager.xcb.get());
  EXPECT_TRUE(wait([&] { return server.isCompositing(); }));
  manager.xcb.reset();
  EXPECT_TRUE(wait([&] { return !server.isCompositing(); }));
}

}  // namespace
}  // namespace brimlo
