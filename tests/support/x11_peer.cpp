#include "support/x11_peer.h"

#include <sys/socket.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace brimlo::test {
namespace {

xcb_window_t makeWindow(xcb_connection_t* xcb) {
  const xcb_window_t window = xcb_generate_id(xcb);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window,
                    xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* memory) {
  return {memory, &std::free};
}

}  // namespace

X11Peer::X11Peer() : xcb_(xcb_connect(nullptr, nullptr)), window_(makeWindow(xcb_)) {
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
  const auto reply = owned(xcb_intern_atom_reply(xcb_, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void X11Peer::own(Offer offer) {
  {
    const std::lock_guard lock(mutex_);
    offer_ = std::make_shared<const Offer>(std::move(offer));
  }
  xcb_set_selection_owner(xcb_, window_, atom("CLIPBOARD"), XCB_CURRENT_TIME);
  atom("CLIPBOARD");  // a round trip: the server has carried it out
}

void X11Peer::clear() {
  xcb_set_selection_owner(xcb_, XCB_NONE, atom("CLIPBOARD"), XCB_CURRENT_TIME);
  atom("CLIPBOARD");
}

void X11Peer::serve() {
  while (const auto event = owned(xcb_wait_for_event(xcb_))) {
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
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()),
                        targets.data());
    notify.property = request.property;
  }
  for (const auto& [name, bytes] : offer.texts) {
    if (atom(name) != request.target) continue;
    const xcb_atom_t type = atom(offer.types.contains(name) ? offer.types.at(name) : name);
    notify.property = request.property;
    if (offer.chunk == 0) {
      xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type, 8,
                          static_cast<std::uint32_t>(bytes.size()), bytes.data());
      continue;
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb_, request.requestor, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        atom("INCR"), 32, 1, &offer.announces);
    outgoing_.push_back({request.requestor, request.property, type, current, &bytes});
  }
  char wire[32] = {};
  std::memcpy(wire, &notify, sizeof notify);
  xcb_send_event(xcb_, 0, request.requestor, 0, wire);
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

xcb_generic_event_t* X11Peer::await(xcb_connection_t* xcb, std::uint8_t type,
                                    const std::function<void()>& meanwhile) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (std::chrono::steady_clock::now() < end) {
    while (auto* event = xcb_poll_for_event(xcb)) {
      const bool newValue =
          type != XCB_PROPERTY_NOTIFY ||
          reinterpret_cast<xcb_property_notify_event_t*>(event)->state == XCB_PROPERTY_NEW_VALUE;
      if ((event->response_type & 0x7F) == type && newValue) return event;
      std::free(event);
    }
    meanwhile();
  }
  return nullptr;
}

std::optional<std::string> X11Peer::paste(const std::string& target,
                                          const std::function<void()>& meanwhile) {
  xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> closing(xcb, xcb_disconnect);
  const xcb_window_t window = makeWindow(xcb);
  const xcb_atom_t property = atom("PEER");
  const auto get = [&] {
    const auto cookie =
        xcb_get_property(xcb, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, UINT32_MAX / 4);
    return owned(xcb_get_property_reply(xcb, cookie, nullptr));
  };
  xcb_convert_selection(xcb, window, atom("CLIPBOARD"), atom(target), property, XCB_CURRENT_TIME);
  xcb_flush(xcb);
  const auto event = owned(await(xcb, XCB_SELECTION_NOTIFY, meanwhile));
  if (!event) return std::nullopt;
  const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(*event);
  if (notify.property == XCB_NONE) return std::nullopt;
  auto reply = get();
  const bool incremental = reply->type == atom("INCR");
  std::string text;
  for (;;) {
    if (incremental && !owned(await(xcb, XCB_PROPERTY_NOTIFY, meanwhile))) return std::nullopt;
    if (incremental) reply = get();
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    text.append(static_cast<const char*>(xcb_get_property_value(reply.get())), size);
    if (!incremental || size == 0) return text;
  }
}

void X11Peer::pasteAndLeave(const std::function<void()>& meanwhile) {
  xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
  const xcb_window_t window = makeWindow(xcb);
  xcb_convert_selection(xcb, window, atom("CLIPBOARD"), atom("UTF8_STRING"), atom("PEER"),
                        XCB_CURRENT_TIME);
  xcb_flush(xcb);
  std::free(await(xcb, XCB_SELECTION_NOTIFY, meanwhile));
  xcb_disconnect(xcb);
}

}  // namespace brimlo::test
