#include "support/x11_peer.h"

#include <sys/socket.h>

#include <QCoreApplication>
#include <QTimer>
#include <cstring>

#include "platform/x11/selection_owner.h"

namespace brimlo::test {

X11Peer::X11Peer() {
  events_ = x11_->addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  x11_->serve();
}

void X11Peer::die() {
  shutdown(xcb_get_file_descriptor(x11_->xcb()), SHUT_RDWR);
}

xcb_atom_t X11Peer::atom(const std::string& name) {
  const auto cookie =
      xcb_intern_atom(x11_->xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data());
  const auto reply = x11_->waitFor(xcb_intern_atom_reply, cookie);
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);  // none once it has died
}

void X11Peer::own(Offer offer) {
  offer_ = std::move(offer);
  take(window_.id());
}

void X11Peer::take(xcb_window_t owner) {
  const xcb_atom_t clipboard = x11_->atoms().clipboard;
  xcb_set_selection_owner(x11_->xcb(), owner, clipboard, XCB_CURRENT_TIME);
  selectionOwner(*x11_, clipboard);  // when this is answered, the server has carried that out
}

void X11Peer::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  if (type == XCB_PROPERTY_NOTIFY) {
    sendChunk(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  }
  if (type != XCB_SELECTION_REQUEST) return;
  QTimer::singleShot(
      offer_.delay, qApp,
      anchor_.guard([this, offer = offer_,
                     request = reinterpret_cast<const xcb_selection_request_event_t&>(event)] {
        if (offer.manner != Offer::Manner::kSilent) answer(offer, request);
        ++requests;
      }));
}

void X11Peer::answer(const Offer& offer, const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = XCB_NONE;
  if (request.target == x11_->atoms().targets && offer.manner == Offer::Manner::kPrompt) {
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
    xcb_change_window_attributes(x11_->xcb(), request.requestor, XCB_CW_EVENT_MASK, &events);
    put(request, x11_->atoms().incr, 32, 1, &offer.announces);
    outgoing_.push_back({request.requestor, request.property, type, offer, bytes});
  }
  char wire[32] = {};
  std::memcpy(wire, &notify, sizeof notify);
  xcb_send_event(x11_->xcb(), 0, request.requestor, 0, wire);
  x11_->flush();
}

void X11Peer::put(const xcb_selection_request_event_t& request, xcb_atom_t type,
                  std::uint8_t format, std::size_t count, const void* data) {
  xcb_change_property(x11_->xcb(), XCB_PROP_MODE_REPLACE, request.requestor, request.property, type,
                      format, static_cast<std::uint32_t>(count), data);
}

void X11Peer::sendChunk(const xcb_property_notify_event_t& taken) {
  for (Outgoing& out : outgoing_) {
    if (taken.state != XCB_PROPERTY_DELETE || taken.window != out.requestor ||
        taken.atom != out.property) {
      continue;
    }
    if (out.offer.diesAfter > 0 && out.sent >= out.offer.diesAfter) return die();
    const std::size_t size = std::min(out.offer.chunk, out.bytes.size() - out.sent);
    xcb_change_property(x11_->xcb(), XCB_PROP_MODE_REPLACE, out.requestor, out.property, out.type,
                        8, static_cast<std::uint32_t>(size), out.bytes.data() + out.sent);
    out.sent += size;
    if (size == 0) out.requestor = XCB_NONE;
  }
}

}  // namespace brimlo::test
