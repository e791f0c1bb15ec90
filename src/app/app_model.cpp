#include "app/app_model.h"

#include "base/unicode_text.h"
#include "capture/password_filter.h"
#include "store/template_renderer.h"

namespace brimlo {
namespace {

constexpr const char* kAutoApplyKey = "autoApplyFromiPhone";
constexpr const char* kQuickPasteEnabledKey = "quickPasteEnabled";
constexpr const char* kExcludePasswordsKey = "excludePasswords";
constexpr std::chrono::seconds kSyncInterval{30};

}  // namespace

AppModel::AppModel(const Services& services)
    : services_(services),
      store_(services.files, services.log, services.dataFolder),
      templateStore_(services.files, services.log, services.dataFolder),
      monitor_(services.session.pasteboard(), services.timers, services.queue),
      sync_({.background = services.background,
             .cloud = services.cloud,
             .entitlements = services.entitlements,
             .log = services.log,
             .queue = services.queue,
             .strings = services.strings},
            store_, templateStore_),
      hotKey_(services.session.hotKeys(), services.queue, services.log),
      quickPaste_({.clock = services.clock,
                   .environment = services.environment,
                   .events = services.session.eventMonitors(),
                   .log = services.log,
                   .queue = services.queue,
                   .screens = services.session.screens(),
                   .locale = services.locale,
                   .makePanel = services.makePalettePanel}),
      onboarding_({.accessibility = services.session.accessibility(),
                   .environment = services.environment,
                   .defaults = services.defaults,
                   .log = services.log,
                   .pasteboard = services.session.pasteboard(),
                   .screens = services.session.screens(),
                   .strings = services.strings,
                   .timers = services.timers,
                   .makeWindow = services.makeOnboardingWindow}),
      launchMs_(services.clock.nowMs()),
      autoApply_(services.defaults.boolForKey(kAutoApplyKey).value_or(true)),
      quickPasteEnabled_(services.defaults.boolForKey(kQuickPasteEnabledKey).value_or(true)),
      excludePasswords_(services.defaults.boolForKey(kExcludePasswordsKey).value_or(false)),
      pasteDelivery_({.accessibility = services.session.accessibility(),
                      .clock = services.clock,
                      .defaults = services.defaults,
                      .keys = services.session.keyEvents(),
                      .log = services.log,
                      .notifications = services.notifications,
                      .pasteboard = services.session.pasteboard(),
                      .queue = services.queue,
                      .strings = services.strings,
                      .workspace = services.session.workspace()},
                     monitor_, store_),
      debugMenuPanels_({.log = services.log,
                        .queue = services.queue,
                        .screens = services.session.screens(),
                        .makeContent = [this] { return makeMenuContent(nullptr); },
                        .makeWindow = services.makeMenuPreview}) {
  monitor_.setOnNewText(
      anchor_.guard([this](const CanonicalText& text) { handleCapturedText(text); }));
  monitor_.start();
  connectPalette();
  if (quickPasteEnabled_.value()) hotKey_.registerHotKey();
  debugSignals_.emplace(
      services_.signals, services_.session.accessibility(), services_.log, store_,
      DebugSignals::Actions{
          .showPalette = anchor_.guard([this] { showDebugPalette(); }),
          .pasteText = anchor_.guard([this](const std::string& text, const std::string& source) {
            pasteText(text, source);
          }),
          .showMenuPanel = anchor_.guard([this] { debugMenuPanels_.show(); })});
  services_.queue.async(anchor_.guard([this] { showOnboardingIfNeeded(); }));
  connectSync();
}

void AppModel::setAutoApply(bool enabled) {
  autoApply_.set(enabled);
  services_.defaults.setBool(kAutoApplyKey, enabled);
}

void AppModel::setQuickPasteEnabled(bool enabled) {
  quickPasteEnabled_.set(enabled);
  services_.defaults.setBool(kQuickPasteEnabledKey, enabled);
  applyQuickPasteEnabled();
}

void AppModel::applyQuickPasteEnabled() {
  if (quickPasteEnabled_.value()) {
    hotKey_.registerHotKey();
  } else {
    hotKey_.unregisterHotKey();
    quickPaste_.dismiss();
  }
  services_.log.write(std::string("quickPasteEnabled=") +
                      (quickPasteEnabled_.value() ? "true" : "false"));
}

void AppModel::setExcludePasswords(bool enabled) {
  excludePasswords_.set(enabled);
  services_.defaults.setBool(kExcludePasswordsKey, enabled);
}

void AppModel::handleCapturedText(const CanonicalText& text) {
  const std::string characters = std::to_string(characterCount(text.text()));
  if (excludePasswords_.value() && isPasswordLike(text.text())) {
    services_.log.write("skipped password-like text (" + characters + " chars)");
    return;
  }
  store_.add(text, "manual", services_.clock.nowMs());
  services_.log.write("captured local clip (" + characters + " chars)");
  onboarding_.checkCapturedText(text);
}

void AppModel::pasteText(const std::string& text, const std::string& source) {
  pasteDelivery_.pasteText(text, source, quickPasteTargetApp_);
}

void AppModel::connectPalette() {
  quickPaste_.setClipsProvider([this] { return store_.clips().value(); });
  quickPaste_.setTemplatesProvider([this] { return templateStore_.templates().value(); });
  quickPaste_.setOnConfirm([this](const Clip& clip) { pasteText(clip.text, clip.source); });
  quickPaste_.setOnConfirmTemplate(
      [this](const Template& chosen) { pasteText(rendered(chosen), "manual"); });
  hotKey_.setOnPressed(anchor_.guard([this] { hotKeyPressed(); }));
}

std::string AppModel::rendered(const Template& chosen) const {
  return renderTemplate(chosen.body, {.nowMs = services_.clock.nowMs(),
                                      .locale = services_.locale,
                                      .timeZone = "",
                                      .clipboard = services_.session.pasteboard().string()});
}

void AppModel::copyClip(const Clip& clip) {
  monitor_.writeOwnText(clip.text);
  store_.add(clip.text, clip.source, services_.clock.nowMs());
  services_.log.write("copied clip to pasteboard");
}

void AppModel::copyTemplate(const Template& chosen) {
  const std::string text = rendered(chosen);
  monitor_.writeOwnText(text);
  store_.add(text, "manual", services_.clock.nowMs());
  services_.log.write("copied template to pasteboard");
}

void AppModel::showOnboardingIfNeeded() {
  if (!onboarding_.isDone()) onboarding_.present();
}

void AppModel::connectSync() {
  sync_.setOnActionClip([this](const Clip& clip) {
    if (autoApply_.value()) monitor_.writeOwnText(clip.text);
    return autoApply_.value();
  });
  syncTimer_ =
      services_.timers.scheduleRepeating(kSyncInterval, anchor_.guard([this] { syncNow(); }));
  syncNow();
}

std::unique_ptr<MenuContentModel> AppModel::makeMenuContent(std::function<void()> checkForUpdates) {
  return std::make_unique<MenuContentModel>(MenuContentModel::Services{
      .accessibility = services_.session.accessibility(),
      .environment = services_.environment,
      .log = services_.log,
      .strings = services_.strings,
      .store = store_,
      .templateStore = templateStore_,
      .quickPasteEnabled = quickPasteEnabled_,
      .excludePasswords = excludePasswords_,
      .autoApply = autoApply_,
      .isSyncing = isSyncing(),
      .syncStatus = syncStatus(),
      .copyClip = [this](const Clip& clip) { copyClip(clip); },
      .copyTemplate = [this](const Template& chosen) { copyTemplate(chosen); },
      .setQuickPasteEnabled = [this](bool enabled) { setQuickPasteEnabled(enabled); },
      .setExcludePasswords = [this](bool enabled) { setExcludePasswords(enabled); },
      .setAutoApply = [this](bool enabled) { setAutoApply(enabled); },
      .syncNow =
          anchor_.guard([this] { services_.queue.async(anchor_.guard([this] { syncNow(); })); }),
      .showOnboarding = [this] { onboarding_.present(); },
      .checkForUpdates = std::move(checkForUpdates),
      .quit = [this] { quit(); }});
}

void AppModel::hotKeyPressed() {
  quickPasteTargetApp_ = services_.session.workspace().frontmostApplication();
  const bool named = quickPasteTargetApp_ && !quickPasteTargetApp_->bundleIdentifier.empty();
  services_.log.write("hotkey pressed, target=" +
                      (named ? quickPasteTargetApp_->bundleIdentifier : std::string("?")));
  presentPalette();
}

void AppModel::showQuickPaste() {
  quickPasteTargetApp_ = services_.session.workspace().frontmostApplication();
  presentPalette();
}

void AppModel::presentPalette() {
  quickPaste_.setAutoDismissOnResign(true);
  quickPaste_.present();
}

void AppModel::showDebugPalette() {
  quickPasteTargetApp_ = services_.session.workspace().frontmostApplication();
  // It stays while other windows are used, and is where a screenshot expects it.
  quickPaste_.setAutoDismissOnResign(false);
  quickPaste_.setDebugCenterOnPrimary(true);
  quickPaste_.present();
}

void AppModel::quit() {
  monitor_.stop();
  syncTimer_.reset();
  hotKey_.unregisterHotKey();
  store_.saveUnsaved();
  services_.application.terminate();
}

}  // namespace brimlo
