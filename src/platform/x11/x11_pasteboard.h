#pragma once

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/published.h"
#include "base/weak_anchor.h"
#include "platform/pasteboard.h"
#include "platform/system_log.h"
#include "platform/x11/input_only_window.h"
#include "platform/x11/primary_selection.h"
#include "platform/x11/selection_reader.h"
#include "platform/x11/selection_server.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_time.h"

namespace brimlo {

/// The CLIPBOARD selection as a pasteboard.
///
/// The server reports every new owner, and every owner that goes away. New contents are read at
/// once in the background, and become current when that is done. When the owner of the current
/// text goes away without having given the selection up, this program takes the selection and
/// offers the text.
class X11Pasteboard : public Pasteboard, public PrimarySelection {
 public:
  /// All of it outlives the object.
  X11Pasteboard(X11Connection& x11, X11Time& time, SystemLog& log);

  std::int64_t changeCount() const override { return changeCount_; }
  std::optional<std::string> string() const override;
  void clearContents() override;
  void setString(std::string text) override;
  void whenTaken(std::function<void()> then) override;

  void offerAsPrimary(std::function<void()> then) override;

  /// Has the desktop's clipboard manager take over the text that this program offers, so that it
  /// outlives the program (freedesktop.org's clipboard manager convention). Waits until that is
  /// done, or nothing has been transferred for `patience`. Returns at once where this program
  /// offers nothing or there is no manager. To be called after the run loop has ended.
  void handOver(std::chrono::milliseconds patience);

 private:
  using Text = std::shared_ptr<const std::string>;  // null: there is none

  void handle(const xcb_generic_event_t& event);
  void onOwnerChange(const xcb_xfixes_selection_notify_event_t& change);
  void onRead(SelectionContents contents);
  void becomeCurrent(Text text);
  void claim(Text text);
  void taken();
  void checkTaking();
  void own(Text text, xcb_timestamp_t time);

  X11Connection& x11_;
  X11Time& time_;
  SystemLog& log_;
  SelectionReader reader_;
  SelectionServer server_;
  SelectionServer primary_;
  InputOnlyWindow window_;  // owns the selections that this program takes

  std::int64_t changeCount_ = 0;
  Text text_;  // of the contents that changeCount_ counts

  bool readingInitial_ = false;  // what is being read was there before this object
  bool cleared_ = false;         // the contents are those of the last clearContents
  // When the owner of the contents, current or being read, went away.
  std::optional<xcb_timestamp_t> ownerGoneAt_;

  // The selection is claimed as of the server's time, which has to be asked for first; meanwhile
  // the text to offer is kept here. The inner null means to leave the selection without an owner.
  std::optional<Text> claim_;
  Text offered_;                               // what the selection was last claimed for
  std::optional<xcb_timestamp_t> disownedAt_;  // when this program last left it without an owner

  bool handedOver_ = false;  // the clipboard manager has answered
  std::function<void()> whenTaken_;
  QTimer takingTimer_;  // runs while whenTaken_ waits

  Subscription events_;
  Subscription ownerChanges_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
