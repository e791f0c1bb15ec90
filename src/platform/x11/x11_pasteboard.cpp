#include "platform/x11/x11_pasteboard.h"

#include <xcb/xfixes.h>

#include <QCoreApplication>
#include <chrono>
#include <utility>
#include <vector>

#include "platform/x11/text_targets.h"

namespace brimlo {
namespace {

// How long the application that was told to paste may take to ask for the text.
constexpr auto kTakingPatience = std::chrono::milliseconds(500);

}  // namespace

X11Pasteboard::X11Pasteboard(X11Connection& x11, SystemLog& log)
    : x11_(x11),
      log_(log),
      reader_(x11, [this](SelectionContents contents) { onRead(std::move(contents)); }),
      server_(x11, x11.atoms().clipboard, [this] { taken(); }),
      primary_(x11, XCB_ATOM_PRIMARY, [this] { taken(); }),
      window_(xcb_generate_id(x11.xcb())) {
  takingTimer_.setSingleShot(true);
  takingTimer_.setInterval(kTakingPatience);
  QObject::connect(&takingTimer_, &QTimer::timeout, [this] { checkTaking(); });
  x11_.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(x11_.xcb(), XCB_COPY_FROM_PARENT, window_, x11_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  xcb_xfixes_select_selection_input(x11_.xcb(), window_, x11_.atoms().clipboard,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  // Whatever is there now belongs to the first count. It is read all the same: it must outlive
  // its owner too.
  const auto cookie = xcb_get_selection_owner(x11_.xcb(), x11_.atoms().clipboard);
  x11_.whenReplied<xcb_get_selection_owner_reply_t>(
      cookie.sequence, [this](const xcb_get_selection_owner_reply_t* reply) {
        const bool untouched = changeCount_ == 0 && !reader_.reading();
        if (!reply || reply->owner == XCB_NONE || !untouched) return;
        readingInitial_ = true;
        reader_.read(XCB_CURRENT_TIME);
      });
  x11_.flush();
}

std::optional<std::string> X11Pasteboard::string() const {
  return text_ ? std::optional(*text_) : std::nullopt;
}

void X11Pasteboard::clearContents() {
  reader_.abandon();
  becomeCurrent(nullptr);
  cleared_ = true;
  claim(nullptr);
}

void X11Pasteboard::setString(std::string text) {
  if (!cleared_) clearContents();
  text_ = std::make_shared<const std::string>(std::move(text));
  cleared_ = false;
  claim(text_);
}

void X11Pasteboard::handle(const xcb_generic_event_t& event) {
  const std::uint8_t type = event.response_type & 0x7F;
  if (type == x11_.xfixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (change.selection == x11_.atoms().clipboard) onOwnerChange(change);
    return;
  }
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == window_ && change.atom == x11_.atoms().stamp) onTime(change.time);
  }
  if (type == XCB_SELECTION_NOTIFY) {
    const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (answer.selection == x11_.atoms().clipboardManager) handedOver_ = true;
  }
  reader_.handle(event);
  server_.handle(event);
  primary_.handle(event);
}

void X11Pasteboard::onOwnerChange(const xcb_xfixes_selection_notify_event_t& change) {
  if (change.owner == window_) {
    // The claim was accepted. What other clients made of the selection before that is over.
    reader_.abandon();
    server_.serve(offered_, change.selection_timestamp);
    if (text_ != offered_ && !claim_) becomeCurrent(offered_);
  } else if (change.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER) {
    ownerGoneAt_ = change.timestamp;
    reader_.ownerGone();
    if (!reader_.reading() && text_) own(text_, change.timestamp);
  } else if (change.owner != XCB_NONE) {
    server_.stop();
    readingInitial_ = false;
    ownerGoneAt_.reset();
    reader_.read(change.timestamp);
  } else if (change.selection_timestamp != disownedAt_) {
    server_.stop();
    reader_.abandon();
    becomeCurrent(nullptr);
  }
}

void X11Pasteboard::onRead(SelectionContents contents) {
  using Kind = SelectionContents::Kind;
  if (contents.kind == Kind::kTooLarge) {
    log_.write("clipboard text refused: larger than " +
               std::to_string(kLargestText / (1024 * 1024)) + " MiB");
  }
  if (contents.kind == Kind::kUnanswered) {
    log_.write("clipboard contents lost: their owner did not hand them over");
  }
  Text text;
  if (contents.kind == Kind::kText) {
    text = std::make_shared<const std::string>(std::move(contents.text));
  }
  if (readingInitial_) {
    readingInitial_ = false;
    text_ = std::move(text);
  } else {
    becomeCurrent(std::move(text));
  }
  // A claim as of that time gives way to any client that has copied since.
  if (ownerGoneAt_ && text_) own(text_, *ownerGoneAt_);
}

void X11Pasteboard::becomeCurrent(Text text) {
  text_ = std::move(text);
  cleared_ = false;
  readingInitial_ = false;
  ++changeCount_;
}

void X11Pasteboard::claim(Text text) {
  claim_ = std::move(text);
  askTime();
}

void X11Pasteboard::offerAsPrimary(std::function<void()> then) {
  primaryClaims_.push_back(std::move(then));
  askTime();
}

void X11Pasteboard::askTime() {
  if (std::exchange(timeAsked_, true)) return;
  // Appending nothing to a property brings an event with the server's time.
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_APPEND, window_, x11_.atoms().stamp,
                      XCB_ATOM_INTEGER, 32, 0, nullptr);
  x11_.flush();
}

void X11Pasteboard::onTime(xcb_timestamp_t time) {
  timeAsked_ = false;
  if (claim_) own(*std::exchange(claim_, std::nullopt), time);
  for (const auto& then : std::exchange(primaryClaims_, {})) {
    xcb_set_selection_owner(x11_.xcb(), window_, XCB_ATOM_PRIMARY, time);
    primary_.serve(text_, time);
    then();
  }
}

void X11Pasteboard::whenTaken(std::function<void()> then) {
  whenTaken_ = std::move(then);
  takingTimer_.start();
}

void X11Pasteboard::taken() {
  takingTimer_.stop();
  if (const auto then = std::exchange(whenTaken_, nullptr)) then();
}

void X11Pasteboard::checkTaking() {
  // A large text that has been asked for is waited for as long as the requestor goes on taking.
  if (server_.busy() || primary_.busy()) {
    takingTimer_.start();
  } else {
    taken();
  }
}

void X11Pasteboard::handOver(std::chrono::milliseconds patience) {
  const X11Atoms& atoms = x11_.atoms();
  const auto owner = [&](xcb_atom_t selection) {
    const auto reply = x11_.waitFor<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner_reply, xcb_get_selection_owner(x11_.xcb(), selection));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
  };
  if (owner(atoms.clipboardManager) == XCB_NONE) return;
  QTimer end;
  end.setSingleShot(true);
  end.start(patience);
  // The run loop has ended, so it is turned by hand.
  const auto turnUntil = [&](const auto& holds) {
    while (!holds() && end.isActive()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      if (server_.busy()) end.start(patience);
    }
    return holds();
  };
  turnUntil([&] { return !claim_; });
  if (owner(atoms.clipboard) != window_) return;

  const std::vector<xcb_atom_t> targets = offeredTextTargets(atoms);
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, window_, atoms.saveTargets, XCB_ATOM_ATOM,
                      32, static_cast<std::uint32_t>(targets.size()), targets.data());
  xcb_convert_selection(x11_.xcb(), window_, atoms.clipboardManager, atoms.saveTargets,
                        atoms.saveTargets, XCB_CURRENT_TIME);
  x11_.flush();
  handedOver_ = false;
  if (!turnUntil([&] { return handedOver_; })) {
    log_.write("the clipboard manager does not take the text over");
  }
}

void X11Pasteboard::own(Text text, xcb_timestamp_t time) {
  offered_ = std::move(text);
  xcb_set_selection_owner(x11_.xcb(), offered_ ? window_ : static_cast<xcb_window_t>(XCB_NONE),
                          x11_.atoms().clipboard, time);
  if (offered_) {
    server_.serve(offered_, time);
  } else {
    server_.stop();
    disownedAt_ = time;
  }
}

}  // namespace brimlo
