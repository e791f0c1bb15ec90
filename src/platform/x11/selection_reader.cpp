#include "platform/x11/selection_reader.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "platform/freedesktop/text_types.h"
#include "platform/pasteboard.h"

namespace brimlo {
namespace {

using Steady = std::chrono::steady_clock;

// How long, and how many, windows are kept for a former owner's late answer: many clients end when
// they write to a window that has been destroyed.
constexpr auto kRetirement = std::chrono::seconds(60);
constexpr std::size_t kMostRetired = 64;

}  // namespace

SelectionReader::SelectionReader(X11Connection& x11, std::function<void(SelectionContents)> onRead)
    : x11_(x11), onRead_(std::move(onRead)) {
  timer_.setInterval(std::chrono::seconds(1));
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
}

void SelectionReader::read(xcb_timestamp_t time) {
  abandon();
  window_.emplace(x11_, XCB_EVENT_MASK_PROPERTY_CHANGE);
  time_ = time;
  timer_.start();
  convert(x11_.atoms().targets);
}

void SelectionReader::abandon() {
  if (step_ == Step::kIdle) return;
  const bool answered = step_ == Step::kFetching && !incremental_;
  if (!answered) retireWindow();
  window_.reset();
  step_ = Step::kIdle;
  value_ = {};
}

void SelectionReader::ownerGone() {
  if (step_ == Step::kAwaitingAnswer || step_ == Step::kAwaitingChunk) {
    finish(SelectionContents::Kind::kUnanswered);
  }
}

void SelectionReader::convert(xcb_atom_t target) {
  target_ = target;
  incremental_ = false;
  value_.clear();
  step_ = Step::kAwaitingAnswer;
  deadline_ = Steady::now() + kTransferPatience;
  xcb_convert_selection(x11_.xcb(), window_->id(), x11_.atoms().clipboard, target,
                        x11_.atoms().transfer, time_);
}

void SelectionReader::convertNextText() {
  if (textsToTry_.empty()) return finish(SelectionContents::Kind::kNoText);
  const xcb_atom_t target = textsToTry_.back();
  textsToTry_.pop_back();
  convert(target);
}

void SelectionReader::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7F) {
    case XCB_SELECTION_NOTIFY: {
      const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
      if (step_ == Step::kAwaitingAnswer && answer.requestor == window_->id())
        return onAnswer(answer);
      // A former owner has answered at last; nobody writes to its window any more.
      std::erase_if(retired_, [&](const Retired& retired) {
        return retired.window.id() == answer.requestor;
      });
      return;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (step_ == Step::kAwaitingChunk && change.window == window_->id() &&
          change.atom == x11_.atoms().transfer && change.state == XCB_PROPERTY_NEW_VALUE) {
        fetch();
      }
      return;
    }
    default:
      return;
  }
}

void SelectionReader::onAnswer(const xcb_selection_notify_event_t& answer) {
  if (answer.target != target_) return;
  if (answer.property != XCB_NONE) return fetch();
  onRefused();
}

void SelectionReader::onRefused() {
  if (target_ == x11_.atoms().targets) {
    // An owner that does not support TARGETS. The two types that it is most likely to have:
    textsToTry_ = {XCB_ATOM_STRING, x11_.atoms().textType("UTF8_STRING")};
  }
  convertNextText();
}

void SelectionReader::fetch() {
  step_ = Step::kFetching;
  deadline_ = Steady::now() + kTransferPatience;
  // In units of four bytes: one more than is accepted, to recognise a text that is too large.
  const auto cookie = xcb_get_property(x11_.xcb(), 1, window_->id(), x11_.atoms().transfer,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0,
                                       static_cast<std::uint32_t>(kLargestText / 4 + 1));
  x11_.whenReplied<xcb_get_property_reply_t>(
      cookie.sequence, [this, window = window_->id()](const xcb_get_property_reply_t* reply) {
        if (step_ == Step::kFetching && window_->id() == window) onFetched(reply);
      });
}

void SelectionReader::onFetched(const xcb_get_property_reply_t* reply) {
  deadline_ = Steady::now() + kTransferPatience;
  if (!reply) return finish(SelectionContents::Kind::kUnanswered);
  const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply));
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
  if (!incremental_ && reply->type == x11_.atoms().incr) {
    // The value is a lower bound of the size. Deleting the property, as reading it did, begins the
    // transfer.
    std::uint32_t announced = 0;
    if (length >= sizeof announced) std::memcpy(&announced, bytes, sizeof announced);
    incremental_ = true;
    step_ = Step::kAwaitingChunk;
    if (announced > kLargestText) finish(SelectionContents::Kind::kTooLarge);
    return;
  }
  if (!incremental_ && reply->type == XCB_NONE)
    return onRefused();  // the owner has set no property
  if (reply->bytes_after > 0 || value_.size() + length > kLargestText) {
    return finish(SelectionContents::Kind::kTooLarge);
  }
  if (value_.empty()) valueType_ = reply->type;
  value_.append(bytes, length);
  if (incremental_ && length > 0) {
    step_ = Step::kAwaitingChunk;
    return;
  }
  onValue(valueType_, std::exchange(value_, {}));
}

void SelectionReader::onValue(xcb_atom_t type, std::string value) {
  if (target_ == x11_.atoms().targets) {
    // Some owners answer every request with their text.
    const bool atoms = type == XCB_ATOM_ATOM || type == x11_.atoms().targets;
    return atoms ? onTargets(value) : onRefused();
  }
  finish(SelectionContents::Kind::kText,
         decodeText(x11_.atoms().textTypeName(type), std::move(value)));
}

void SelectionReader::onTargets(const std::string& value) {
  std::vector<xcb_atom_t> targets(value.size() / sizeof(xcb_atom_t));
  std::memcpy(targets.data(), value.data(), targets.size() * sizeof(xcb_atom_t));
  const auto offers = [&](xcb_atom_t target) {
    return std::find(targets.begin(), targets.end(), target) != targets.end();
  };
  if (offers(x11_.atoms().secretHint)) return finish(SelectionContents::Kind::kSecret);
  const auto& types = x11_.atoms().textTypes;
  textsToTry_.clear();
  std::copy_if(types.rbegin(), types.rend(), std::back_inserter(textsToTry_), offers);
  convertNextText();
}

void SelectionReader::finish(SelectionContents::Kind kind, std::string text) {
  const bool answered = kind != SelectionContents::Kind::kUnanswered && !incremental_;
  step_ = Step::kIdle;
  value_ = {};
  if (!answered) retireWindow();
  window_.reset();
  onRead_({kind, std::move(text)});
}

void SelectionReader::retireWindow() {
  retired_.push_back({std::move(*window_), Steady::now() + kRetirement});
  if (retired_.size() > kMostRetired) retired_.pop_front();
}

void SelectionReader::tick() {
  const auto now = Steady::now();
  while (!retired_.empty() && retired_.front().until <= now) retired_.pop_front();
  if (reading() && deadline_ <= now) finish(SelectionContents::Kind::kUnanswered);
  if (!reading() && retired_.empty()) timer_.stop();
  x11_.flush();
}

}  // namespace brimlo
