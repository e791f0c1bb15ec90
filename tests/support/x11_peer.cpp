#include "support/x11_peer.h"

#include <sys/socket.h>

#include <cstring>

#include "platform/x11/xcb_ptr.h"

namespace brimlo::test {

X11Peer::X11Peer() {
  xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window_,
                    xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  thread_ = std::thread([this] { serve(); });
}

X11Peer::~X11Peer() {
  die();
  xcb_disconnect(xcb_);
}

void X11Peer::die() {
  shutdown(xcb_get_file_descriptor(xcb_), SHUT_RDWR);
  if (thread_.joinable()) thread_.join();
}

xcb_atom_t X11Peer::atom(const std::string& name) {
  const auto cookie =
      xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb_, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void X11Peer::own(Offer offer) {
  {
    const std::lock_guard lock(mutex_);
    offer_ = std::make_shared<const Offer>(std::move(offer));
  }
  take(window_);
}

void X11Peer::take(xcb_window_t owner) {
  const xcb_atom_t clipboard = atom("CLIPBOARD");
  xcb_set_selection_owner(xcb_, owner, clipboard, XCB_CURRENT_TIME);
  atom("CLIPBOARD");  // when this is answered, the server has carried that out
}

void X11Peer::serve() {
  while (const XcbPtr<xcb_generic_event_t> event{xcb_wait_for_event(xcb_)}) {
    const int type = event->response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
      answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
    } else if (type == XCB_PROPERTY_NOTIFY) {
      sendChunk(reinterpret_cast<const xcb_property_notify_event_t&>(*event));
    }
    xcb_flush(xcb_);
  }
}

void X11Peer::answer(const xcb_selection_request_event_t& request) {
  std::shared_ptr<const Offer> current;
  {
    const std::lock_guard lock(mutex_);
    current = offer_;
  }
  const Offer& offer = *current;
  if (offer.manner == Offer::Manner::kSilent) return;
  std::this_thread::sleep_for(offer.delay);
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = XCB_NONE;
  if (request.target == atom("TARGETS") && offer.manner != Offer::Manner::kKnowsNoTargets) {
    std::vector<xcb_atom_t> targets;
    for (const auto& [name, bytes] : offer.texts) targets.push_back(atom(name));
    put(request, XCB_ATOM_ATOM, 32, targets.size(), targets.data());
    notify.property = request.property;
  }
  for (const auto& [name, bytes] : offer.texts) {
    if (atom(name) != request.target) continue;
    const xcb_atom_t type = atom(offer.types.contains(name) ? offer.types.at(name) : name);
    notify.property = request.property;
    if (offer.chunk == 0) {
      put(request, type, 8, bytes.size(), bytes.data());
      continue;
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb_, request.requestor, XCB_CW_EVENT_MASK, &events);
    put(request, atom("INCR"), 32, 1, &offer.announces);
    outgoing_.push_back({request.requestor, request.property, type, current, &bytes});
  }
  char wire[32] = {};
  std::memcpy(wire, &notify, sizeof notify);
  xcb_send_event(xcb_, 0, request.requestor, 0, wire);
  atom("TARGETS");  // when this is answered, the answer is on its way
  ++answers;
}

void X11Peer::put(const xcb_selection_request_event_t& request, xcb_atom_t type,
                  std::uint8_t format, std::size_t count, const void* data) {
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type,
                      format, static_cast<std::uint32_t>(count), data);
}

void X11Peer::sendChunk(const xcb_property_notify_event_t& taken) {
  for (Outgoing& out : outgoing_) {
    if (taken.state != XCB_PROPERTY_DELETE || taken.window != out.requestor ||
        taken.atom != out.property) {
      continue;
    }
    if (out.offer->diesAfterChunks > 0 && out.chunks++ == out.offer->diesAfterChunks) {
      shutdown(xcb_get_file_descriptor(xcb_), SHUT_RDWR);
      return;
    }
    const std::size_t size = std::min(out.offer->chunk, out.bytes->size() - out.sent);
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, out.requestor, out.property, out.type, 8,
                        static_cast<std::uint32_t>(size), out.bytes->data() + out.sent);
    out.sent += size;
    if (size == 0) out.requestor = XCB_NONE;
  }
}

}  // namespace brimlo::test
