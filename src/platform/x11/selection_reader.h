#pragma once

#include <xcb/xcb.h>

#include <QTimer>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/input_only_window.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

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
/// ever waiting: first the targets, then the best text type among them, incrementally (ICCCM,
/// section 2.7.2) where the owner chooses to. Each reading has a requestor window of its own, so
/// that what a former owner sends late cannot end up in a later text. Main thread.
class SelectionReader {
 public:
  SelectionReader(X11Connection& x11, std::function<void(SelectionContents)> onRead);

  /// Begins to read the contents as of `time`. Abandons the reading under way.
  void read(xcb_timestamp_t time);

  /// Ends the reading under way, which reports nothing.
  void abandon();

  bool reading() const { return step_ != Step::kIdle; }

  /// To be called when the owner's window or connection is gone: a reading that waits for the owner
  /// ends as kUnanswered, one whose answer is already on the server goes on.
  void ownerGone();

  void handle(const xcb_generic_event_t& event);

 private:
  enum class Step { kIdle, kAwaitingAnswer, kFetching, kAwaitingChunk };
  struct Retired {
    InputOnlyWindow window;
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
  void retireWindow();
  void tick();

  X11Connection& x11_;
  std::function<void(SelectionContents)> onRead_;
  Step step_ = Step::kIdle;
  std::optional<InputOnlyWindow> window_;  // the requestor of the reading under way
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
  xcb_atom_t target_ = XCB_NONE;        // requested last
  std::vector<xcb_atom_t> textsToTry_;  // best last
  bool incremental_ = false;
  xcb_atom_t valueType_ = XCB_NONE;
  std::string value_;
  std::chrono::steady_clock::time_point deadline_;
  std::deque<Retired> retired_;  // requestors that a former owner may still answer
  QTimer timer_;                 // runs while there is a reading or a retired window
};

}  // namespace brimlo
