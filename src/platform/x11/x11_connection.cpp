#include "platform/x11/x11_connection.h"

#include <xcb/xcbext.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace brimlo {
namespace {

xcb_window_t rootOf(xcb_connection_t* xcb, int screen) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
  for (; screens.rem > 1 && screen > 0; --screen) xcb_screen_next(&screens);
  return screens.data->root;
}

}  // namespace

X11Connection::OpenResult X11Connection::open() {
  int screen = 0;
  xcb_connection_t* xcb = xcb_connect(nullptr, &screen);
  if (xcb_connection_has_error(xcb)) {
    xcb_disconnect(xcb);
    const char* display = std::getenv("DISPLAY");
    return {nullptr, display && *display ? "cannot connect to the display " + std::string(display)
                                         : std::string("no display: DISPLAY is not set")};
  }
  std::unique_ptr<X11Connection> connection(new X11Connection(xcb, screen));
  if (!connection->prepareExtensions()) {
    return {nullptr, "the X server lacks the XFIXES extension, version 2"};
  }
  return {std::move(connection), {}};
}

X11Connection::X11Connection(xcb_connection_t* xcb, int screen)
    : xcb_(xcb),
      screen_(screen),
      root_(rootOf(xcb, screen)),
      atoms_(X11Atoms::intern(xcb, screen)) {}

X11Connection::~X11Connection() = default;

bool X11Connection::prepareExtensions() {
  xcb_prefetch_maximum_request_length(xcb());
  const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(xcb(), &xcb_xfixes_id);
  if (!xfixes || !xfixes->present) return false;
  xfixesFirstEvent_ = xfixes->first_event;
  const XcbPtr<xcb_xfixes_query_version_reply_t> version(
      xcb_xfixes_query_version_reply(xcb(), xcb_xfixes_query_version(xcb(), 2, 0), nullptr));
  if (!version || version->major_version < 2) return false;
  xcb_get_maximum_request_length(xcb());

  xkb_x11_setup_xkb_extension(xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                              XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
                              &xkbFirstEvent_, nullptr);
  const xcb_query_extension_reply_t* xinput = xcb_get_extension_data(xcb(), &xcb_input_id);
  if (xinput && xinput->present) {
    const XcbPtr<xcb_input_xi_query_version_reply_t> input(
        xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 2), nullptr));
    const bool current = input && std::pair(input->major_version, input->minor_version) >=
                                      std::pair<std::uint16_t, std::uint16_t>(2, 2);
    if (current) xinputOpcode_ = xinput->major_opcode;
  }
  return true;
}

void X11Connection::serve() {
  readable_ =
      std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(xcb()), QSocketNotifier::Read);
  QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(),
                   [this] { process(); });
  processSoon();
}

std::uint8_t X11Connection::check(xcb_void_cookie_t cookie) {
  const XcbPtr<xcb_generic_error_t> error(xcb_request_check(xcb(), cookie));
  processSoon();
  return error ? error->error_code : 0;
}

Subscription X11Connection::addEventHandler(
    std::function<void(const xcb_generic_event_t&)> onEvent) {
  return eventHandlers_.add(std::move(onEvent));
}

Subscription X11Connection::addLostHandler(std::function<void()> onLost) {
  return lostHandlers_.add(std::move(onLost));
}

void X11Connection::flush() {
  xcb_flush(xcb());
  // While the library waits to write, it reads too, and events that it has read do not wake the
  // run loop.
  processSoon();
}

void X11Connection::processSoon() {
  if (readable_) QTimer::singleShot(0, readable_.get(), [this] { process(); });
}

void X11Connection::process() {
  // A client that sends without end must not keep the thread to itself.
  constexpr auto kTurn = std::chrono::milliseconds(5);
  const auto begin = std::chrono::steady_clock::now();
  for (bool progress = true; progress;) {
    if (std::chrono::steady_clock::now() - begin > kTurn) {
      processSoon();
      break;
    }
    progress = false;
    if (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(xcb())}) {
      progress = true;
      dispatch(*event);
    }
    while (deliverReply()) progress = true;
    if (progress) xcb_flush(xcb());
  }
  if (xcb_connection_has_error(xcb()) && readable_) {
    readable_->setEnabled(false);
    readable_.release()->deleteLater();
    lostHandlers_.notify();
  }
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
  // Replies to requests that the server carried out before the event go first.
  while (!pending_.empty() &&
         static_cast<std::int32_t>(event.full_sequence - pending_.front().sequence) >= 0 &&
         deliverReply()) {
  }
  if (event.response_type == 0) return;
  eventHandlers_.notify(event);
}

bool X11Connection::deliverReply() {
  if (pending_.empty()) return false;
  void* raw = nullptr;
  xcb_generic_error_t* rawError = nullptr;
  if (!xcb_poll_for_reply(xcb(), pending_.front().sequence, &raw, &rawError)) return false;
  const XcbPtr<void> reply(raw);
  const XcbPtr<xcb_generic_error_t> error(rawError);
  const auto then = std::move(pending_.front().then);
  pending_.pop_front();
  then(reply.get());
  return true;
}

}  // namespace brimlo
