// The applications and the keyboard of a real X server. Run with a window manager and without.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cstring>
#include <string>
#include <thread>

#include "platform/linux/x11_key_events.h"
#include "platform/linux/x11_pasteboard.h"
#include "platform/linux/x11_workspace.h"
#include "platform/qt/qt_run_loop.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;
using Result = KeyEventPoster::Result;

/// Turns the run loop until `holds`, for at most five seconds.
bool wait(const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + 5s;
  while (!holds() && std::chrono::steady_clock::now() < end) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    std::this_thread::sleep_for(2ms);
  }
  return holds();
}

/// A window of another application, or, with a process number of ours, of this program.
class Window {
 public:
  explicit Window(const std::string& windowClass, std::optional<pid_t> process = std::nullopt)
      : xcb_(xcb_connect(nullptr, nullptr)),
        root_(xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root),
        id_(xcb_generate_id(xcb_)) {
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, id_, root_, 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    const std::string names = "instance" + std::string(1, '\0') + windowClass + '\0';
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(names.size()), names.data());
    if (process) {
      xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, id_, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL,
                          32, 1, &*process);
    }
    xcb_map_window(xcb_, id_);
    xcb_flush(xcb_);
  }
  ~Window() { xcb_disconnect(xcb_); }

  void tellManager(const char* message, std::uint32_t value) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id_;
    event.type = atom(message);
    event.data.data32[0] = value;
    xcb_send_event(xcb_, 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(xcb_);
  }

  void takeFocus() {
    xcb_set_input_focus(xcb_, XCB_INPUT_FOCUS_PARENT, id_, XCB_CURRENT_TIME);
    xcb_flush(xcb_);
  }

  bool hasFocus() {
    const XcbPtr<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr));
    return focus && focus->focus == id_;
  }

  /// The keys that arrived: "+" and the code for a press, "-" for a release.
  std::string keys() {
    while (auto* event = xcb_poll_for_event(xcb_)) {
      const int type = event->response_type & 0x7F;
      const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
      if (type == XCB_KEY_PRESS) keys_ += "+" + std::to_string(key->detail);
      if (type == XCB_KEY_RELEASE) keys_ += "-" + std::to_string(key->detail);
      std::free(event);
    }
    return keys_;
  }

  std::uint64_t id() const { return id_; }

 private:
  xcb_atom_t atom(const char* name) {
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        xcb_, xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply->atom;
  }

  xcb_connection_t* xcb_;
  xcb_window_t root_;
  xcb_window_t id_;
  std::string keys_;
};

class X11DesktopTest : public testing::Test {
 protected:
  std::string front() {
    const auto application = workspace.frontmostApplication();
    return application ? application->bundleIdentifier : "";
  }
  /// Brings a window to the front as the desktop has it, without the manager's help if need be.
  bool bringToFront(Window& window, const std::string& name) {
    return wait([&] {
      if (front() != name) window.takeFocus();
      return front() == name && window.hasFocus();
    });
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
  X11Workspace workspace{*x11};
  X11Pasteboard pasteboard{*x11, log};
  X11KeyEvents keys{*x11, workspace, pasteboard, loop, desktop, strings};
};

TEST_F(X11DesktopTest, AWindowComesBackToTheFrontFromWhereverItIs) {
  EXPECT_EQ(front(), "");
  Window first("First");
  ASSERT_TRUE(bringToFront(first, "First"));
  const RunningApplication remembered = *workspace.frontmostApplication();
  EXPECT_EQ(remembered.window, first.id());
  Window second("Second");
  constexpr std::uint32_t kIconic = 3;
  const std::pair<const char*, std::function<void()>> away[] = {
      {"behind another", [] {}},
      {"minimised", [&] { first.tellManager("WM_CHANGE_STATE", kIconic); }},
      {"on another desktop", [&] { first.tellManager("_NET_WM_DESKTOP", 2); }},
  };
  for (const auto& [where, go] : away) {
    ASSERT_TRUE(bringToFront(second, "Second")) << where;
    go();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_EQ(workspace.activate(remembered), Workspace::Activation::kAsked);
    EXPECT_TRUE(wait([&] { return front() == "First"; })) << where;
  }
}

TEST_F(X11DesktopTest, AnApplicationThatHasQuitIsGone) {
  RunningApplication remembered;
  {
    Window window("Brief");
    ASSERT_TRUE(bringToFront(window, "Brief"));
    remembered = *workspace.frontmostApplication();
  }
  EXPECT_TRUE(wait([&] { return workspace.activate(remembered) == Workspace::Activation::kGone; }));
}

TEST_F(X11DesktopTest, PostsTheChordOfTheApplicationInFront) {
  const std::pair<const char*, const char*> cases[] = {
      {"Editor", "+37+55-55-37"}, {"Konsole", "+37+50+55-55-50-37"}, {"XTerm", "+50+118-118-50"}};
  pasteboard.setString("text");
  for (const auto& [name, expected] : cases) {
    Window window(name);
    ASSERT_TRUE(bringToFront(window, name));
    EXPECT_EQ(post(), Result::kPosted);
    EXPECT_TRUE(wait([&] { return window.keys() == expected; })) << name << window.keys();
  }
}

TEST_F(X11DesktopTest, NoKeyEverReachesAWindowOfThisProgram) {
  Window editor("Editor");
  ASSERT_TRUE(bringToFront(editor, "Editor"));
  {
    Window own("Brimlo", getpid());
    ASSERT_TRUE(wait([&] {
      own.takeFocus();
      return workspace.ownWindowInFront();
    }));
    EXPECT_EQ(front(), "");
    EXPECT_EQ(post(), Result::kFailed);  // it stayed in front for half a second
    EXPECT_EQ(own.keys(), "");
    loop.asyncAfter(100ms, [&] { editor.takeFocus(); });
    EXPECT_EQ(post(), Result::kPosted);
    EXPECT_EQ(own.keys(), "");
  }
  EXPECT_TRUE(wait([&] { return editor.keys() == "+37+55-55-37"; })) << editor.keys();
}

}  // namespace
}  // namespace brimlo

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
