#include "platform/x11/selection_server.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/freedesktop/text_types.h"
#include "platform/pasteboard.h"

namespace brimlo {
namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t kMostOutgoing = 256;
constexpr std::size_t kMostPairs = 64;

std::size_t chunkFor(xcb_connection_t* xcb) {
  constexpr std::size_t kWanted = 256 * 1024;
  constexpr std::size_t kRequestHead = 64;
  const std::size_t largest = std::size_t{xcb_get_maximum_request_length(xcb)} * 4;
  return std::min(kWanted, largest - kRequestHead);
}

}  // namespace

SelectionServer::SelectionServer(X11Connection& x11, xcb_atom_t selection,
                                 std::function<void()> onTaken)
    : x11_(x11), selection_(selection), onTaken_(std::move(onTaken)), chunk_(chunkFor(x11.xcb())) {
  timer_.setInterval(std::chrono::seconds(1));
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
}

void SelectionServer::serve(std::shared_ptr<const std::string> text, xcb_timestamp_t time) {
  text_ = std::move(text);
  ownedSince_ = time;
}

void SelectionServer::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
      return onRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (change.state != XCB_PROPERTY_DELETE) return;
      const auto taken =
          std::find_if(outgoing_.begin(), outgoing_.end(), [&](const Outgoing& outgoing) {
            return outgoing.requestor == change.window && outgoing.property == change.atom;
          });
      if (taken != outgoing_.end()) sendNext(taken);
      return;
    }
    case XCB_DESTROY_NOTIFY: {
      const auto& gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
      outgoing_.remove_if(
          [&](const Outgoing& outgoing) { return outgoing.requestor == gone.window; });
      return;
    }
    default:
      return;
  }
}

void SelectionServer::onRequest(const xcb_selection_request_event_t& request) {
  if (request.selection != selection_) return;
  const bool afterOwning = request.time == XCB_CURRENT_TIME ||
                           static_cast<std::int32_t>(request.time - ownedSince_) >= 0;
  if (!text_ || !afterOwning) return notify(request, XCB_NONE);
  if (request.target == x11_.atoms().multiple && request.property != XCB_NONE) {
    return convertMultiple(request);
  }
  // Obsolete clients name no property; the target's name is used then (ICCCM, section 2.2).
  const xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
  const Answer answer = convert(request.requestor, request.target, property);
  notify(request, answer == Answer::kRefused ? static_cast<xcb_atom_t>(XCB_NONE) : property);
  if (answer == Answer::kText) onTaken_();
}

SelectionServer::Answer SelectionServer::convert(xcb_window_t requestor, xcb_atom_t target,
                                                 xcb_atom_t property) {
  const X11Atoms& atoms = x11_.atoms();
  const auto put = [&](xcb_atom_t type, std::uint8_t format, std::size_t count, const void* data) {
    xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, type, format,
                        static_cast<std::uint32_t>(count), data);
  };
  if (target == atoms.targets) {
    std::vector<xcb_atom_t> targets = atoms.offeredTextTypes();
    targets.insert(targets.begin(), {atoms.targets, atoms.timestamp, atoms.multiple});
    targets.push_back(atoms.saveTargets);
    put(XCB_ATOM_ATOM, 32, targets.size(), targets.data());
    return Answer::kFacts;
  }
  if (target == atoms.saveTargets) {
    // As a target of an owner it transfers nothing: it says that the owner wants its contents
    // saved.
    put(atoms.null, 32, 0, nullptr);
    return Answer::kFacts;
  }
  if (target == atoms.timestamp) {
    put(XCB_ATOM_INTEGER, 32, 1, &ownedSince_);
    return Answer::kFacts;
  }
  auto encoded = encodeText(atoms.textTypeName(target), text_);
  if (!encoded) return Answer::kRefused;
  const xcb_atom_t type = atoms.textType(encoded->type);
  if (encoded->bytes->size() <= chunk_) {
    put(type, 8, encoded->bytes->size(), encoded->bytes->data());
    return Answer::kText;
  }
  if (outgoing_.size() >= kMostOutgoing) return Answer::kRefused;
  beginIncremental(requestor, property, type, std::move(encoded->bytes));
  return Answer::kTextToCome;
}

void SelectionServer::convertMultiple(const xcb_selection_request_event_t& request) {
  const auto cookie = xcb_get_property(x11_.xcb(), 0, request.requestor, request.property,
                                       x11_.atoms().atomPair, 0, kMostPairs * 2);
  x11_.whenReplied<xcb_get_property_reply_t>(
      cookie.sequence, [this, request](const xcb_get_property_reply_t* reply) {
        if (!reply || reply->format != 32 || !text_) return notify(request, XCB_NONE);
        const std::size_t size = static_cast<std::size_t>(xcb_get_property_value_length(reply));
        std::vector<xcb_atom_t> pairs(size / sizeof(xcb_atom_t));
        std::memcpy(pairs.data(), xcb_get_property_value(reply), pairs.size() * sizeof(xcb_atom_t));
        bool textGiven = false;
        for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
          const Answer answer = convert(request.requestor, pairs[i], pairs[i + 1]);
          if (answer == Answer::kRefused) pairs[i + 1] = XCB_NONE;
          if (answer == Answer::kText) textGiven = true;
        }
        xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                            x11_.atoms().atomPair, 32, static_cast<std::uint32_t>(pairs.size()),
                            pairs.data());
        notify(request, request.property);
        if (textGiven) onTaken_();
      });
}

void SelectionServer::notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = request.time;
  answer.requestor = request.requestor;
  answer.selection = request.selection;
  answer.target = request.target;
  answer.property = property;
  static_assert(sizeof answer <= 32);
  char wire[32] = {};
  std::memcpy(wire, &answer, sizeof answer);
  xcb_send_event(x11_.xcb(), 0, request.requestor, 0, wire);
}

void SelectionServer::beginIncremental(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                                       std::shared_ptr<const std::string> bytes) {
  // A requestor that asks again has given up its earlier transfer into the same property.
  outgoing_.remove_if([&](const Outgoing& outgoing) {
    return outgoing.requestor == requestor && outgoing.property == property;
  });
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(x11_.xcb(), requestor, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(std::min<std::size_t>(bytes->size(), UINT32_MAX));
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, x11_.atoms().incr, 32,
                      1, &size);
  outgoing_.push_back(
      {requestor, property, type, std::move(bytes), 0, Steady::now() + kTransferPatience});
  timer_.start();
}

void SelectionServer::sendNext(std::list<Outgoing>::iterator outgoing) {
  const std::size_t size = std::min(chunk_, outgoing->bytes->size() - outgoing->sent);
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, outgoing->requestor, outgoing->property,
                      outgoing->type, 8, static_cast<std::uint32_t>(size),
                      outgoing->bytes->data() + outgoing->sent);
  outgoing->sent += size;
  outgoing->deadline = Steady::now() + kTransferPatience;
  if (size > 0) return;
  drop(outgoing);  // the empty piece marks the end
  onTaken_();
}

void SelectionServer::drop(std::list<Outgoing>::iterator outgoing) {
  const xcb_window_t requestor = outgoing->requestor;
  outgoing_.erase(outgoing);
  const bool more = std::any_of(outgoing_.begin(), outgoing_.end(), [&](const Outgoing& other) {
    return other.requestor == requestor;
  });
  const std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
  if (!more) xcb_change_window_attributes(x11_.xcb(), requestor, XCB_CW_EVENT_MASK, &none);
}

void SelectionServer::tick() {
  const auto now = Steady::now();
  for (auto next = outgoing_.begin(); next != outgoing_.end();) {
    const auto outgoing = next++;
    if (outgoing->deadline <= now) drop(outgoing);
  }
  if (outgoing_.empty()) timer_.stop();
  x11_.flush();
}

}  // namespace brimlo
