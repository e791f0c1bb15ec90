#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/weak_anchor.h"
#include "platform/x11/input_only_window.h"
#include "platform/x11/x11_connection.h"

namespace brimlo::test {

/// How an owner of the selection behaves when asked.
struct Offer {
  std::map<std::string, std::string> texts;       ///< bytes by target; the type is the target
  std::map<std::string, std::string> types = {};  ///< where the type is another
  enum class Manner { kPrompt, kSilent, kKnowsNoTargets } manner = Manner::kPrompt;
  std::chrono::milliseconds delay{0};  ///< before each answer
  std::size_t chunk = 0;               ///< above 0: sends incrementally, in pieces of this size
  std::size_t diesAfter = 0;           ///< above 0: its connection breaks after so many bytes
  std::uint32_t announces = 0;         ///< the lower bound of the size of an incremental text
};

/// Another client of the X server, served by the same run loop.
class X11Peer {
 public:
  X11Peer();

  /// Takes the CLIPBOARD selection; it has when this returns.
  void own(Offer offer);
  /// Leaves the selection without an owner.
  void clear() { take(XCB_NONE); }
  /// Goes away as a process that ends does.
  void die();

  int requests = 0;  ///< how many it has dealt with: answered, unless its manner is to be silent

 private:
  struct Outgoing {
    xcb_window_t requestor;
    xcb_atom_t property, type;
    Offer offer;
    std::string bytes;
    std::size_t sent = 0;
  };
  void take(xcb_window_t owner);
  void handle(const xcb_generic_event_t& event);
  void answer(const Offer& offer, const xcb_selection_request_event_t& request);
  void sendChunk(const xcb_property_notify_event_t& taken);
  void put(const xcb_selection_request_event_t& request, xcb_atom_t type, std::uint8_t format,
           std::size_t count, const void* data);
  xcb_atom_t atom(const std::string& name);

  std::unique_ptr<X11Connection> x11_ = X11Connection::open().connection;
  InputOnlyWindow window_{*x11_, XCB_EVENT_MASK_NO_EVENT};
  Offer offer_;
  std::vector<Outgoing> outgoing_;
  Subscription events_;
  WeakAnchor anchor_;
};

}  // namespace brimlo::test
