#pragma once

#include <xcb/xcb.h>

#include <QTimer>
#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <string>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// Answers requests for a selection that this program owns with a text: a small one at once, a
/// large one incrementally, piece by piece as the requestor takes it (ICCCM, section 2.7.2). A
/// transfer whose requestor takes nothing for `kTransferPatience` is given up. Main thread.
class SelectionServer {
 public:
  /// `onTaken`: called whenever a requestor has been given the text; in an incremental transfer,
  /// once it has taken the last piece.
  SelectionServer(X11Connection& x11, xcb_atom_t selection, std::function<void()> onTaken);

  /// From now on answers with `text`, owned since the server's `time`; refuses where it is null.
  void serve(std::shared_ptr<const std::string> text, xcb_timestamp_t time);

  /// Whether an incremental transfer is under way.
  bool busy() const { return !outgoing_.empty(); }

  /// From now on refuses. Transfers under way go on.
  void stop() { text_.reset(); }

  void handle(const xcb_generic_event_t& event);

 private:
  struct Outgoing {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    std::shared_ptr<const std::string> bytes;
    std::size_t sent;
    std::chrono::steady_clock::time_point deadline;
  };

  void onRequest(const xcb_selection_request_event_t& request);
  enum class Answer { kRefused, kFacts, kText, kTextToCome };
  Answer convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  void convertMultiple(const xcb_selection_request_event_t& request);
  void notify(const xcb_selection_request_event_t& request, xcb_atom_t property);
  void beginIncremental(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                        std::shared_ptr<const std::string> bytes);
  void sendNext(std::list<Outgoing>::iterator outgoing);
  void drop(std::list<Outgoing>::iterator outgoing);
  void tick();

  X11Connection& x11_;
  const xcb_atom_t selection_;
  const std::function<void()> onTaken_;
  const std::size_t chunk_;                  // the most bytes put into a property at once
  std::shared_ptr<const std::string> text_;  // null: not the owner
  xcb_timestamp_t ownedSince_ = 0;
  std::list<Outgoing> outgoing_;
  QTimer timer_;  // runs while there is a transfer
};

}  // namespace brimlo
