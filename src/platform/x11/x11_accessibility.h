#pragma once

#include "platform/accessibility.h"
#include "platform/localized_strings.h"
#include "platform/user_notifications.h"

namespace brimlo {

/// On X11 there is no permission to grant: any client may type where the server has XTEST, and none
/// where it has not.
class X11Accessibility : public Accessibility {
 public:
  enum class Typing { kPossible, kImpossible };
  /// Both references outlive the object.
  X11Accessibility(Typing typing, UserNotifications& notifications, const LocalizedStrings& strings)
      : typing_(typing), notifications_(notifications), strings_(strings) {}

  bool isProcessTrusted() const override { return typing_ == Typing::kPossible; }

  /// Shows a notification that says why it is impossible.
  void promptForTrust() override {
    if (isProcessTrusted()) return;
    notifications_.deliver(strings_.text("accessibility.unavailable.title"),
                           strings_.text("accessibility.unavailable.body"));
  }

 private:
  Typing typing_;
  UserNotifications& notifications_;
  const LocalizedStrings& strings_;
};

}  // namespace brimlo
