#pragma once

#include <deque>
#include <optional>
#include <string>

#include "base/weak_anchor.h"
#include "capture/clipboard_monitor.h"
#include "platform/accessibility.h"
#include "platform/clock.h"
#include "platform/key_events.h"
#include "platform/localized_strings.h"
#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/system_log.h"
#include "platform/user_defaults.h"
#include "platform/user_notifications.h"
#include "platform/workspace.h"
#include "store/clip_store.h"

namespace brimlo {

/// Brings a chosen text into the application that the person was working in.
///
/// The text always ends up on the pasteboard and at the top of the history. Where the process may
/// type, the application is brought to the front and, 80 ms later, sent ⌘V; where it may not, a
/// notification asks the person to press it. Deliveries are carried out in order. The pasteboard
/// holds one text at a time, so each waits until the application has taken the text of the one
/// before, half a second at most. Main thread.
class PasteDelivery {
 public:
  /// All of it outlives the delivery.
  struct Services {
    Accessibility& accessibility;
    const Clock& clock;
    UserDefaults& defaults;
    KeyEventPoster& keys;
    SystemLog& log;
    UserNotifications& notifications;
    Pasteboard& pasteboard;
    MainQueue& queue;
    const LocalizedStrings& strings;
    Workspace& workspace;
  };
  PasteDelivery(const Services& services, ClipboardMonitor& monitor, ClipStore& store);

  /// Delivers `text`, recorded in the history with `source`, to `target`; without one, to whatever
  /// is in front. Does nothing for an empty text. Does not wait.
  void pasteText(const std::string& text, const std::string& source,
                 const std::optional<RunningApplication>& target);

 private:
  struct Delivery {
    std::string text;
    std::string source;
    std::optional<RunningApplication> target;
  };

  void deliverNext();
  void deliver(const Delivery& delivery);
  void pasteAutomatically(const std::optional<RunningApplication>& target);
  void postCommandV();
  void postCopiedNotification();
  void promptAccessibilityOnce();

  Services services_;
  ClipboardMonitor& monitor_;
  ClipStore& store_;
  std::deque<Delivery> waiting_;
  bool underWay_ = false;  // a text is on its way into an application
  WeakAnchor anchor_;
};

}  // namespace brimlo
