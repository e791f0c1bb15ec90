#include "platform/x11/x11_pasteboard.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>
#include <vector>

#include "platform/x11/selection_owner.h"

namespace brimlo {
namespace {

// How long an application that was told to paste may take to ask for the text.
constexpr auto kTakingPatience = std::chrono::milliseconds(500);

}  // namespace

X11Pasteboard::X11Pasteboard(X11Connection& x11, X11Time& time, SystemLog& log)
    : x11_(x11),
      time_(time),
      log_(log),
      reader_(x11, [this](SelectionContents contents) { onRead(std::move(contents)); }),
      server_(x11, x11.atoms().clipboard, [this] { taken(); }),
      primary_(x11, XCB_ATOM_PRIMARY, [this] { taken(); }),
      window_(x11, XCB_EVENT_MASK_NO_EVENT) {
  takingTimer_.setSingleShot(true);
  takingTimer_.setInterval(kTakingPatience);
  QObject::connect(&takingTimer_, &QTimer::timeout, &takingTimer_, [this] { checkTaking(); });
  ownerChanges_ = watchSelectionOwner(x11_, x11_.atoms().clipboard,
                                      [this](const auto& change) { onOwnerChange(change); });
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  // What is there now belongs to the first count. It is read at once, to outlive its owner too.
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
  if ((event.response_type & 0x7F) == XCB_SELECTION_NOTIFY) {
    const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (answer.selection == x11_.atoms().clipboardManager) handedOver_ = true;
  }
  reader_.handle(event);
  server_.handle(event);
  primary_.handle(event);
}

void X11Pasteboard::onOwnerChange(const xcb_xfixes_selection_notify_event_t& change) {
  if (change.owner == window_.id()) {
    // The server has accepted the claim. Earlier contents are no longer of interest.
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
  // Claimed as of that time, so that a client that has copied since wins.
  if (ownerGoneAt_ && text_) own(text_, *ownerGoneAt_);
}

void X11Pasteboard::becomeCurrent(Text text) {
  text_ = std::move(text);
  cleared_ = false;
  readingInitial_ = false;
  ++changeCount_;
}

void X11Pasteboard::claim(Text text) {
  const bool timeAsked = claim_.has_value();
  claim_ = std::move(text);
  if (timeAsked) return;
  time_.now(anchor_.guard(
      [this](xcb_timestamp_t time) { own(*std::exchange(claim_, std::nullopt), time); }));
}

void X11Pasteboard::offerAsPrimary(std::function<void()> then) {
  time_.now(anchor_.guard([this, then = std::move(then)](xcb_timestamp_t time) {
    xcb_set_selection_owner(x11_.xcb(), window_.id(), XCB_ATOM_PRIMARY, time);
    primary_.serve(text_, time);
    then();
  }));
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
  // While a requestor is taking a large text piece by piece, the wait goes on.
  if (server_.busy() || primary_.busy()) {
    takingTimer_.start();
  } else {
    taken();
  }
}

void X11Pasteboard::handOver(std::chrono::milliseconds patience) {
  const X11Atoms& atoms = x11_.atoms();
  if (selectionOwner(x11_, atoms.clipboardManager) == XCB_NONE) return;
  QTimer end;
  end.setSingleShot(true);
  end.start(patience);
  // The run loop has ended: events are processed here.
  const auto turnUntil = [&](const auto& holds) {
    while (!holds() && end.isActive()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      if (server_.busy()) end.start(patience);
    }
    return holds();
  };
  turnUntil([&] { return !claim_; });
  if (selectionOwner(x11_, atoms.clipboard) != window_.id()) return;

  const std::vector<xcb_atom_t> targets = atoms.offeredTextTypes();
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_REPLACE, window_.id(), atoms.saveTargets,
                      XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()),
                      targets.data());
  xcb_convert_selection(x11_.xcb(), window_.id(), atoms.clipboardManager, atoms.saveTargets,
                        atoms.saveTargets, XCB_CURRENT_TIME);
  x11_.flush();
  handedOver_ = false;
  if (!turnUntil([&] { return handedOver_; })) {
    log_.write("the clipboard manager does not take the text over");
  }
}

void X11Pasteboard::own(Text text, xcb_timestamp_t time) {
  offered_ = std::move(text);
  xcb_set_selection_owner(x11_.xcb(), offered_ ? window_.id() : static_cast<xcb_window_t>(XCB_NONE),
                          x11_.atoms().clipboard, time);
  if (offered_) {
    server_.serve(offered_, time);
  } else {
    server_.stop();
    disownedAt_ = time;
  }
}

}  // namespace brimlo
