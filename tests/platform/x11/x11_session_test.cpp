// Opening a session, and what ends it. QtSession makes the application object, so the program has
// no other.

#include "platform/x11/x11_session.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/fakes.h"
#include "support/wait.h"

namespace brimlo {
namespace {

TEST(X11Session, SaysWhyItCannotBeOpenedCompletesAStartAndEndsOnce) {
  int argc = 1;
  char name[] = "test";
  char* argv[] = {name, nullptr};
  test::FakeLog log;
  test::FakeDesktop desktop;
  const std::string display = std::getenv("DISPLAY");
  setenv("DISPLAY", ":nowhere", 1);
  const auto failed = X11Session::open(argc, argv, log, desktop);
  EXPECT_EQ(failed.session, nullptr);
  EXPECT_EQ(failed.fault, "cannot connect to the display :nowhere");
  setenv("DISPLAY", display.c_str(), 1);

  const auto session = X11Session::open(argc, argv, log, desktop).session;
  ASSERT_NE(session, nullptr);
  const auto launcher = X11Connection::open().connection;
  launcher->serve();
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  launcher->check(xcb_change_window_attributes_checked(launcher->xcb(), launcher->root(),
                                                       XCB_CW_EVENT_MASK, &events));
  std::string message;
  const Subscription pieces = launcher->addEventHandler([&](const xcb_generic_event_t& event) {
    const auto& piece = reinterpret_cast<const xcb_client_message_event_t&>(event);
    const X11Atoms& atoms = launcher->atoms();
    if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return;
    if (piece.type != (message.empty() ? atoms.startupInfoBegin : atoms.startupInfo)) return;
    message.append(reinterpret_cast<const char*>(piece.data.data8), sizeof piece.data.data8);
  });
  session->useActivationToken("");
  session->useActivationToken("launcher/\"7\"_TIME42");
  EXPECT_TRUE(test::wait([&] { return message.size() == 40; }));
  EXPECT_STREQ(message.c_str(), R"(remove: ID="launcher/\"7\"_TIME42")");

  std::vector<Session::End> ends;
  session->setOnEnd([&](Session::End how) { ends.push_back(how); });
  QWidget window;
  window.show();
  for (int round = 0; round < 2; ++round) {
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
  }
  EXPECT_EQ(ends, std::vector{Session::End::kSessionManager});
  EXPECT_TRUE(window.isVisible()) << "as if the person had closed it";
}

}  // namespace
}  // namespace brimlo
