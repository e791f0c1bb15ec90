#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/debug_menu_panels.h"
#include "app/debug_signals.h"
#include "app/hot_key_manager.h"
#include "base/published.h"
#include "base/weak_anchor.h"
#include "capture/clipboard_monitor.h"
#include "capture/paste_delivery.h"
#include "menu/menu_content_model.h"
#include "onboarding/onboarding_controller.h"
#include "palette/quick_paste_controller.h"
#include "platform/application.h"
#include "platform/background_queue.h"
#include "platform/clock.h"
#include "platform/cloud_database.h"
#include "platform/entitlements.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/localized_strings.h"
#include "platform/main_queue.h"
#include "platform/session.h"
#include "platform/signal_sources.h"
#include "platform/system_log.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"
#include "platform/user_notifications.h"
#include "platform/workspace.h"
#include "store/clip_store.h"
#include "store/template_store.h"
#include "sync/sync_scheduler.h"

namespace brimlo {

/// What the model asks of the desktop. All of it outlives the model.
struct Services {
  Session& session;
  Application& application;
  BackgroundQueue& background;
  const Clock& clock;
  CloudDatabase& cloud;
  const Entitlements& entitlements;
  const Environment& environment;
  FileSystem& files;
  std::string dataFolder;  ///< where the stores keep their files
  std::string locale;      ///< the user's: a POSIX locale name
  std::function<std::unique_ptr<TitledWindow>(MenuContentModel&)> makeMenuPreview;
  OnboardingController::WindowFactory makeOnboardingWindow;
  QuickPasteController::PanelFactory makePalettePanel;
  const LocalizedStrings& strings;
  MainQueue& queue;
  SignalSources& signals;
  SystemLog& log;
  Timers& timers;
  UserDefaults& defaults;
  UserNotifications& notifications;
};

/// The central object: owns every long-lived component of the logic and connects them, holds the
/// settings, and publishes the state that the views observe. Main thread.
class AppModel {
 public:
  /// Starts everything: loads the history, reads the settings, begins to watch the pasteboard,
  /// asks for the hotkey, and syncs, now and every half minute. From the run loop it then shows the
  /// onboarding, unless the person has completed it before.
  explicit AppModel(const Services& services);

  ClipStore& store() { return store_; }
  TemplateStore& templateStore() { return templateStore_; }
  QuickPasteController& quickPaste() { return quickPaste_; }
  OnboardingController& onboarding() { return onboarding_; }

  const Published<std::string>& syncStatus() const { return sync_.syncStatus(); }
  const Published<bool>& isSyncing() const { return sync_.isSyncing(); }
  /// When the model started: milliseconds since 1970.
  double launchMs() const { return launchMs_; }

  /// Whether a clip that a phone sends is put on the pasteboard.
  const Published<bool>& autoApply() const { return autoApply_; }
  /// Whether the global hotkey opens the palette.
  const Published<bool>& quickPasteEnabled() const { return quickPasteEnabled_; }
  /// Whether password-like text is kept out of the history.
  const Published<bool>& excludePasswords() const { return excludePasswords_; }

  /// Each publishes the value, then writes it to the user defaults, whether it changed or not. The
  /// hotkey follows its setting; without it an open palette closes.
  void setAutoApply(bool enabled);
  void setQuickPasteEnabled(bool enabled);
  void setExcludePasswords(bool enabled);

  /// Adds a newly copied text to the history, unless it looks like a password and those are kept
  /// out.
  void handleCapturedText(const CanonicalText& text);

  /// Brings `text` into the remembered application, or into what is in front, and to the top of the
  /// history with `source`.
  void pasteText(const std::string& text, const std::string& source);

  /// Puts the text of `clip` on the pasteboard, and the clip at the top of the history. Nothing is
  /// pasted.
  void copyClip(const Clip& clip);

  /// Puts `chosen`, its placeholders filled in, on the pasteboard and at the top of the history.
  /// Nothing is pasted.
  void copyTemplate(const Template& chosen);

  /// Remembers the application in front as the target of the next paste, and opens the palette.
  void showQuickPaste();

  /// The content of a menu window over this model. `checkForUpdates` is run by the command of that
  /// name; without it, the command is not shown.
  std::unique_ptr<MenuContentModel> makeMenuContent(std::function<void()> checkForUpdates);

  /// Starts a sync run, unless there is one.
  void syncNow() { sync_.syncNow(launchMs_); }

  /// Stops the timers, gives the hotkey back, makes a last attempt to save what is unsaved, and
  /// ends the process.
  void quit();

 private:
  void connectPalette();
  void connectSync();
  void hotKeyPressed();
  void presentPalette();
  void showDebugPalette();
  void showOnboardingIfNeeded();
  std::string rendered(const Template& chosen) const;
  void applyQuickPasteEnabled();

  Services services_;
  ClipStore store_;
  TemplateStore templateStore_;
  ClipboardMonitor monitor_;
  SyncScheduler sync_;
  HotKeyManager hotKey_;
  QuickPasteController quickPaste_;
  OnboardingController onboarding_;
  // The application that the next paste goes to; none until one is remembered.
  std::optional<RunningApplication> quickPasteTargetApp_;
  double launchMs_;
  std::unique_ptr<RepeatingTimer> syncTimer_;
  Published<bool> autoApply_;
  Published<bool> quickPasteEnabled_;
  Published<bool> excludePasswords_;
  PasteDelivery pasteDelivery_;
  DebugMenuPanels debugMenuPanels_;
  std::optional<DebugSignals> debugSignals_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
