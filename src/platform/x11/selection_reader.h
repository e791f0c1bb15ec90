#pragma once

#include <xcb/xcb.h>

#include <QTimer>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The largest text that is taken from another client; a larger one is refused.
inline constexpr std::size_t kLargestText = std::size_t{256} * 1024 * 1024;

/// What a selection turned out to hold.
struct SelectionContents {
  enum class Kind {
    kText,
    kNoText,      ///< nothing that can be read as plain text
    kSecret,      ///< marked as secret; the text was not asked for
    kTooLarge,    ///< larger than `kLargestText`
    kUnanswered,  ///< the owner fell silent or went away
  };
  Kind kind;
  std::string text;  ///< valid UTF-8, for kText
};

/// Reads the plain text of the CLIPBOARD selection from its owner, one reading at a time, without
/// ever waiting: first the targets, then the best of those for text, incrementally where the owner
/// sends it so. Each reading has a window of its own, so that what a former owner still sends
/// cannot end up in a later text. Main thread.
class SelectionReader {
 public:
  SelectionReader(X11Connection& x11, std::function<void(SelectionContents)> onRead);

  /// Begins a reading of the contents as of `time`, and forgets one that is under way.
  void read(xcb_timestamp_t time);

  /// Forgets the reading under way; it reports nothing.
  void abandon();

  bool reading() const { return step_ != Step::kIdle; }

  /// Says that the owner went away: a reading that waits for it ends as kUnanswered; one that has
  /// the answer on the server already goes on.
  void ownerGone();

  void handle(const xcb_generic_event_t& event);

 private:
  enum class Step { kIdle, kAwaitingAnswer, kFetching, kAwaitingChunk };
  struct Retired {
    xcb_window_t window;
    std::chrono::steady_clock::time_point until;
  };

  void convert(xcb_atom_t target);
  void convertNextText();
  void fetch();
  void onAnswer(const xcb_selection_notify_event_t& answer);
  void onRefused();
  void onFetched(const xcb_get_property_reply_t* reply);
  void onValue(xcb_atom_t type, std::string value);
  void onTargets(const std::string& value);
  void finish(SelectionContents::Kind kind, std::string text = {});
  void retire(xcb_window_t window);
  void tick();

  X11Connection& x11_;
  std::function<void(SelectionContents)> onRead_;
  Step step_ = Step::kIdle;
  xcb_window_t window_ = XCB_NONE;  // of the reading under way
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
  xcb_atom_t target_ = XCB_NONE;        // what was asked for last
  std::vector<xcb_atom_t> textsToTry_;  // best last
  bool incremental_ = false;
  xcb_atom_t valueType_ = XCB_NONE;
  std::string value_;
  std::chrono::steady_clock::time_point deadline_;
  std::deque<Retired> retired_;  // windows that a former owner may still write to
  QTimer timer_;                 // runs while there is a reading or a retired window
};

}  // namespace brimlo
