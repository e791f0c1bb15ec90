#include "platform/x11/selection_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/x11/text_targets.h"

namespace brimlo {
namespace {

using Steady = std::chrono::steady_clock;

// How long an owner may be silent. Long enough for one that swaps or computes its answer.
constexpr auto kPatience = std::chrono::seconds(30);
// A window is kept for a former owner's late answer: writing to one that is gone ends many a
// client. Not for ever, and not for any number of owners.
constexpr auto kRetirement = std::chrono::seconds(60);
constexpr std::size_t kMostRetired = 64;

}  // namespace

SelectionReader::SelectionReader(X11Connection& x11, std::function<void(SelectionContents)> onRead)
    : x11_(x11), onRead_(std::move(onRead)) {
  timer_.setInterval(std::chrono::seconds(1));
  QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
}

void SelectionReader::read(xcb_timestamp_t time) {
  abandon();
  window_ = xcb_generate_id(x11_.xcb());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(x11_.xcb(), XCB_COPY_FROM_PARENT, window_, x11_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  time_ = time;
  timer_.start();
  convert(x11_.atoms().targets);
}

void SelectionReader::abandon() {
  if (step_ == Step::kIdle) return;
  if (step_ == Step::kFetching && !incremental_) {
    xcb_destroy_window(x11_.xcb(), window_);  // answered: nobody writes to it any more
  } else {
    retire(window_);
  }
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
  deadline_ = Steady::now() + kPatience;
  xcb_convert_selection(x11_.xcb(), window_, x11_.atoms().clipboard, target, x11_.atoms().transfer,
                        time_);
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
      if (step_ == Step::kAwaitingAnswer && answer.requestor == window_) return onAnswer(answer);
      // A former owner has answered at last, and its window has served.
      std::erase_if(retired_, [&](const Retired& retired) {
        if (retired.window != answer.requestor) return false;
        xcb_destroy_window(x11_.xcb(), retired.window);
        return true;
      });
      return;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (step_ == Step::kAwaitingChunk && change.window == window_ &&
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
    // An owner of before the convention: it is asked for what every such owner has.
    textsToTry_ = {XCB_ATOM_STRING, x11_.atoms().utf8String};
  }
  convertNextText();
}

void SelectionReader::fetch() {
  step_ = Step::kFetching;
  deadline_ = Steady::now() + kPatience;
  // One byte more than is taken, in units of four, tells a text that is too large.
  const auto cookie =
      xcb_get_property(x11_.xcb(), 1, window_, x11_.atoms().transfer, XCB_GET_PROPERTY_TYPE_ANY, 0,
                       static_cast<std::uint32_t>(kLargestText / 4 + 1));
  x11_.whenReplied<xcb_get_property_reply_t>(
      cookie.sequence, [this, window = window_](const xcb_get_property_reply_t* reply) {
        if (step_ == Step::kFetching && window_ == window) onFetched(reply);
      });
}

void SelectionReader::onFetched(const xcb_get_property_reply_t* reply) {
  deadline_ = Steady::now() + kPatience;
  if (!reply) return finish(SelectionContents::Kind::kUnanswered);
  const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply));
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
  if (!incremental_ && reply->type == x11_.atoms().incr) {
    // The value is what the owner says it will send at least. Reading it has begun the transfer.
    std::uint32_t announced = 0;
    if (length >= sizeof announced) std::memcpy(&announced, bytes, sizeof announced);
    incremental_ = true;
    step_ = Step::kAwaitingChunk;
    if (announced > kLargestText) finish(SelectionContents::Kind::kTooLarge);
    return;
  }
  if (!incremental_ && reply->type == XCB_NONE) return onRefused();  // nothing was put there
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
    // There are owners that answer every request with their text.
    const bool atoms = type == XCB_ATOM_ATOM || type == x11_.atoms().targets;
    return atoms ? onTargets(value) : onRefused();
  }
  finish(SelectionContents::Kind::kText, decodeText(x11_.atoms(), type, std::move(value)));
}

void SelectionReader::onTargets(const std::string& value) {
  std::vector<xcb_atom_t> targets(value.size() / sizeof(xcb_atom_t));
  std::memcpy(targets.data(), value.data(), targets.size() * sizeof(xcb_atom_t));
  const auto offers = [&](xcb_atom_t target) {
    return std::find(targets.begin(), targets.end(), target) != targets.end();
  };
  if (offers(x11_.atoms().passwordHint)) return finish(SelectionContents::Kind::kSecret);
  textsToTry_ = textTargets(x11_.atoms());
  std::erase_if(textsToTry_, [&](xcb_atom_t target) { return !offers(target); });
  std::reverse(textsToTry_.begin(), textsToTry_.end());
  convertNextText();
}

void SelectionReader::finish(SelectionContents::Kind kind, std::string text) {
  const bool answered = kind != SelectionContents::Kind::kUnanswered && !incremental_;
  step_ = Step::kIdle;
  value_ = {};
  if (answered) {
    xcb_destroy_window(x11_.xcb(), window_);
  } else {
    retire(window_);
  }
  onRead_({kind, std::move(text)});
}

void SelectionReader::retire(xcb_window_t window) {
  retired_.push_back({window, Steady::now() + kRetirement});
  if (retired_.size() <= kMostRetired) return;
  xcb_destroy_window(x11_.xcb(), retired_.front().window);
  retired_.pop_front();
}

void SelectionReader::tick() {
  const auto now = Steady::now();
  while (!retired_.empty() && retired_.front().until <= now) {
    xcb_destroy_window(x11_.xcb(), retired_.front().window);
    retired_.pop_front();
  }
  if (reading() && deadline_ <= now) finish(SelectionContents::Kind::kUnanswered);
  if (!reading() && retired_.empty()) timer_.stop();
  x11_.flush();
}

}  // namespace brimlo
