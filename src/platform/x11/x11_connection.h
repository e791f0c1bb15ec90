#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/x11/x11_atoms.h"

class QSocketNotifier;

namespace brimlo {

struct FreeXcb {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbPtr = std::unique_ptr<T, FreeXcb>;

/// A connection to the X server, served by the main run loop. After opening, nothing here waits
/// for the server: replies are handed to continuations, in order among the events. Main thread.
class X11Connection {
 public:
  struct OpenResult {
    std::unique_ptr<X11Connection> connection;  ///< null on failure
    std::string fault;                          ///< then, what is wrong
  };
  /// Connects to the display that the environment names, and waits for the server's first answers.
  static OpenResult open();

  /// Begins to be served by the main run loop; needs the running `QCoreApplication`. Called once.
  void serve();

  ~X11Connection();

  xcb_connection_t* xcb() const { return xcb_.get(); }
  xcb_window_t root() const { return root_; }
  int screen() const { return screen_; }
  const X11Atoms& atoms() const { return atoms_; }
  /// The number of the first event of the XFIXES extension.
  std::uint8_t xfixesFirstEvent() const { return xfixesFirstEvent_; }
  /// Likewise of XKB; 0 on a server without it.
  std::uint8_t xkbFirstEvent() const { return xkbFirstEvent_; }
  /// The number of the X Input extension, version 2.2; 0 on a server without it.
  std::uint8_t xinputOpcode() const { return xinputOpcode_; }

  /// Adds one that receives every event, for the connection's life. Errors of requests without a
  /// reply are dropped: they come of windows of other clients that went away, which their owners
  /// learn by other events.
  void addEventHandler(std::function<void(const xcb_generic_event_t&)> onEvent);

  /// Called once, from the run loop, when the server is gone.
  void setLostHandler(std::function<void()> onLost);

  /// Calls `then` with the reply to the request of `sequence`, or null when the request failed.
  /// Requests must be registered in the order they were made.
  template <typename Reply>
  void whenReplied(unsigned sequence, std::function<void(const Reply*)> then) {
    pending_.push_back({sequence, [then = std::move(then)](const void* reply) {
                          then(static_cast<const Reply*>(reply));
                        }});
  }

  /// Waits for the reply to a request made just now, which the server alone gives; null when the
  /// request failed. For what has to be known at once; events that come meanwhile are dealt with
  /// later.
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

  /// Sends what was requested. To be called after requests made outside the event handler.
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
  std::vector<std::function<void(const xcb_generic_event_t&)>> onEvent_;
  std::function<void()> onLost_;
  std::unique_ptr<QSocketNotifier> readable_;
};

}  // namespace brimlo
