#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace brimlo::test {

/// How an owner of the selection behaves when asked.
struct Offer {
  std::map<std::string, std::string> texts;       ///< bytes by target; the type is the target
  std::map<std::string, std::string> types = {};  ///< where the type is another
  enum class Manner { kPrompt, kSilent, kKnowsNoTargets } manner = Manner::kPrompt;
  std::chrono::milliseconds delay{0};  ///< before each answer
  std::size_t chunk = 0;               ///< above 0: sends incrementally, in pieces of this size
  std::size_t diesAfterChunks = 0;     ///< above 0: its connection breaks then
  std::uint32_t announces = 0;         ///< the lower bound of the size of an incremental text
};

/// Another client of the X server, with a connection and a thread of its own.
class X11Peer {
 public:
  X11Peer();
  ~X11Peer();

  /// Takes the CLIPBOARD selection; it has when this returns.
  void own(Offer offer);
  /// Leaves the selection without an owner.
  void clear() { take(XCB_NONE); }
  /// Goes away as a process that ends does.
  void die();

  std::atomic<int> answers = 0;  ///< how many requests it has answered

 private:
  struct Outgoing {
    xcb_window_t requestor;
    xcb_atom_t property, type;
    std::shared_ptr<const Offer> offer;
    const std::string* bytes;  // in the offer
    std::size_t sent = 0, chunks = 0;
  };
  void take(xcb_window_t owner);
  void serve();
  void answer(const xcb_selection_request_event_t& request);
  void sendChunk(const xcb_property_notify_event_t& taken);
  void put(const xcb_selection_request_event_t& request, xcb_atom_t type, std::uint8_t format,
           std::size_t count, const void* data);
  xcb_atom_t atom(const std::string& name);

  xcb_connection_t* xcb_ = xcb_connect(nullptr, nullptr);
  xcb_window_t window_ = xcb_generate_id(xcb_);
  std::mutex mutex_;
  std::shared_ptr<const Offer> offer_ = std::make_shared<Offer>();
  std::vector<Outgoing> outgoing_;
  std::thread thread_;
};

}  // namespace brimlo::test
