#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/published.h"
#include "menu/menu_content.h"
#include "platform/accessibility.h"
#include "platform/environment.h"
#include "platform/localized_strings.h"
#include "platform/system_log.h"
#include "store/clip_store.h"
#include "store/template_store.h"

namespace brimlo {

/// What one menu window shows and does: the history and the templates in pages, the switches, the
/// commands. It follows the stores and the settings, and lives as long as the window is on screen:
/// the next one begins anew. Main thread.
class MenuContentModel {
 public:
  static constexpr std::int64_t kPageSize = 25;
  /// How many rows of the history's page have a shortcut: Control and their number.
  static constexpr std::size_t kShortcuts = 9;

  /// What it shows and what its commands do. All of it outlives the model.
  struct Services {
    const Accessibility& accessibility;
    const Environment& environment;
    SystemLog& log;
    const LocalizedStrings& strings;

    ClipStore& store;
    const TemplateStore& templateStore;
    const Published<bool>& quickPasteEnabled;
    const Published<bool>& excludePasswords;
    const Published<bool>& autoApply;
    const Published<bool>& isSyncing;
    const Published<std::string>& syncStatus;

    std::function<void(const Clip&)> copyClip;
    std::function<void(const Template&)> copyTemplate;
    std::function<void(bool)> setQuickPasteEnabled;
    std::function<void(bool)> setExcludePasswords;
    std::function<void(bool)> setAutoApply;
    std::function<void()> syncNow;
    std::function<void()> showOnboarding;
    std::function<void()> checkForUpdates;  ///< none: there is no such command
    std::function<void()> quit;
  };

  /// Opens on the history's page that `BRIMLO_MENU_PAGE` names, counted from 0; on the first when
  /// it names none.
  explicit MenuContentModel(Services services);

  const Published<MenuContent>& content() const { return content_; }

  /// Copies the row at `position` on the current page; does nothing where there is none.
  void activateClip(std::size_t position);
  void activateTemplate(std::size_t position);

  /// To the neighbouring page, where there is one.
  void showPreviousHistoryPage();
  void showNextHistoryPage();
  void showPreviousTemplatePage();
  void showNextTemplatePage();

  /// Flips a switch, runs a command. A disabled or hidden item does nothing.
  void activate(FooterItemId id);

  /// The answers to the alert.
  void confirmClear();
  void cancelClear();

  /// What is done when the person wants the window to close.
  void setOnClose(std::function<void()> onClose) { onClose_ = std::move(onClose); }
  /// Escape: cancels the alert, or else closes the window.
  void escape();

 private:
  void refresh();
  void turn(std::int64_t& page, std::int64_t by);
  MenuPage historyPage();
  MenuPage templatesPage();
  std::vector<FooterItem> footer() const;
  std::string text(const char* key) const { return services_.strings.text(key); }
  std::string badge(std::size_t index) const;
  void addPager(MenuPage& page, std::int64_t current, std::size_t count) const;

  Services services_;
  std::int64_t historyPage_;
  std::int64_t templatePage_ = 0;
  bool showingClearConfirm_ = false;
  // The records behind the rows on screen, so that a click acts on what was seen.
  std::vector<ClipPtr> shownClips_;
  std::vector<Template> shownTemplates_;
  Published<MenuContent> content_{MenuContent()};
  std::function<void()> onClose_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace brimlo
