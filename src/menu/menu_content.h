#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brimlo {

/// A row of one line.
struct MenuRow {
  std::string badge;
  std::string symbol;  ///< its name; empty where there is none
  /// Whole, and shared with the clip, since it may be long. The view shows its beginning.
  std::shared_ptr<const std::string> text;

  /// Compares the texts, not the pointers.
  bool operator==(const MenuRow& other) const {
    return badge == other.badge && symbol == other.symbol &&
           (text == other.text || *text == *other.text);
  }
};

/// One page of a list, and how to get to its neighbours.
struct MenuPage {
  std::string label;  ///< above the rows; empty where there is none
  std::vector<MenuRow> rows;
  std::optional<std::string> previous;  ///< the text of the button; none without such a page
  std::optional<std::string> next;

  bool operator==(const MenuPage&) const = default;
};

/// What stands in the footer, from top to bottom.
enum class FooterItemId {
  kQuickPaste,
  kAccessibilityNotice,
  kExcludePasswords,
  kAutoApply,
  kSync,
  kDivider,
  kClearHistory,
  kShowOnboarding,
  kCheckForUpdates,
  kQuit,
};

enum class FooterItemKind { kSwitch, kNotice, kSync, kDivider, kCommand, kDestructiveCommand };

struct FooterItem {
  FooterItemId id;
  FooterItemKind kind;
  std::string text = {};
  std::string symbol = {};  ///< its name; empty where there is none
  bool on = false;          ///< of a switch
  bool enabled = true;
  bool shown = true;

  bool operator==(const FooterItem&) const = default;
};

/// A question that must be answered first.
struct MenuAlert {
  std::string title;
  std::string message;
  std::string confirm;  ///< the answer that goes through with it
  std::string cancel;

  bool operator==(const MenuAlert&) const = default;
};

/// Everything that the menu window shows.
struct MenuContent {
  std::string title;
  std::string count;
  std::string empty;  ///< the text in place of the history while there is none, else empty
  MenuPage history;
  MenuPage templates;  ///< without rows when there are no templates
  std::vector<FooterItem> footer;
  std::string syncStatus;
  bool isSyncing = false;
  std::optional<MenuAlert> alert;

  bool operator==(const MenuContent&) const = default;
};

}  // namespace brimlo
