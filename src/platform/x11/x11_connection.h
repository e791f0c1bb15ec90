#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/observer_list.h"
#include "platform/x11/x11_atoms.h"
#include "platform/x11/xcb_ptr.h"

class QSocketNotifier;

namespace brimlo {

/// A connection to the X server, served by the main run loop. Main thread.
class X11Connection {
 public:
  struct OpenResult {
    std::unique_ptr<X11Connection> connection;  ///< null on failure
    std::string fault;                          ///< then, what is wrong
  };
  /// Connects to the display that the environment names, and waits for the server's answers.
  static OpenResult open();

  /// Has the main run loop serve it from now on. Needs the running `QCoreApplication`; called once.
  void serve();

  ~X11Connection();

  xcb_connection_t* xcb() const { return xcb_.get(); }
  xcb_window_t root() const { return root_; }
  int screen() const { return screen_; }
  const X11Atoms& atoms() const { return atoms_; }
  /// The code of the first event of the XFIXES extension.
  std::uint8_t xfixesFirstEvent() const { return xfixesFirstEvent_; }
  /// The code of the first event of the XKB extension; 0 on a server without it.
  std::uint8_t xkbFirstEvent() const { return xkbFirstEvent_; }
  /// The major opcode of the X Input extension; 0 on a server without its version 2.2.
  std::uint8_t xinputOpcode() const { return xinputOpcode_; }

  /// Calls `onEvent` with every event. Errors of requests that have no reply are dropped: they
  /// come from windows of other clients that were destroyed, which other events report too.
  Subscription addEventHandler(std::function<void(const xcb_generic_event_t&)> onEvent);

  /// Calls `onLost` once, from the run loop, when the connection is broken.
  Subscription addLostHandler(std::function<void()> onLost);

  /// Calls `then`, from the run loop, with the reply to the request of `sequence`, or null when the
  /// request failed; in order among the events. To be called in the order of the requests.
  template <typename Reply>
  void whenReplied(unsigned sequence, std::function<void(const Reply*)> then) {
    pending_.push_back({sequence, [then = std::move(then)](const void* reply) {
                          then(static_cast<const Reply*>(reply));
                        }});
  }

  /// Waits for the reply to a request made just now; null when the request failed. Only for
  /// requests that the server answers by itself. Events that come meanwhile are handled later.
  template <typename Reply, typename Cookie>
  XcbPtr<Reply> waitFor(Reply* (*reply)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                        Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    XcbPtr<Reply> result(reply(xcb(), cookie, &error));
    const XcbPtr<xcb_generic_error_t> freed(error);
    processSoon();
    return result;
  }

  /// Waits for the outcome of a checked request made just now: 0, or the X error's code.
  std::uint8_t check(xcb_void_cookie_t cookie);

  /// Sends the requests made so far. Needed after requests made outside an event handler.
  void flush();

 private:
  struct FreeConnection {
    void operator()(xcb_connection_t* xcb) const { xcb_disconnect(xcb); }
  };
  struct PendingReply {
    unsigned sequence;
    std::function<void(const void*)> then;
  };

  explicit X11Connection(xcb_connection_t* xcb, int screen);
  bool prepareExtensions();
  void processSoon();
  void process();
  void dispatch(const xcb_generic_event_t& event);
  bool deliverReply();

  std::unique_ptr<xcb_connection_t, FreeConnection> xcb_;
  int screen_;
  xcb_window_t root_;
  X11Atoms atoms_;
  std::uint8_t xfixesFirstEvent_ = 0;
  std::uint8_t xkbFirstEvent_ = 0;
  std::uint8_t xinputOpcode_ = 0;
  std::deque<PendingReply> pending_;
  ObserverList<const xcb_generic_event_t&> eventHandlers_;
  ObserverList<> lostHandlers_;
  std::unique_ptr<QSocketNotifier> readable_;
};

}  // namespace brimlo
