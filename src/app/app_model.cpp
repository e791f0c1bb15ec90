#include "app/app_model.h"

#include "base/unicode_text.h"
#include "capture/password_filter.h"

namespace brimlo {
namespace {

constexpr const char* kAutoApplyKey = "autoApplyFromiPhone";
constexpr const char* kQuickPasteEnabledKey = "quickPasteEnabled";
constexpr const char* kExcludePasswordsKey = "excludePasswords";

}  // namespace

AppModel::AppModel(const Services& services)
    : services_(services),
      store_(services.files, services.log, services.dataFolder),
      templateStore_(services.files, services.log, services.dataFolder),
      monitor_(services.pasteboard, services.timers, services.queue),
      syncStatus_(services.strings.text("sync.status.idle")),
      isSyncing_(false),
      launchMs_(services.clock.nowMs()),
      autoApply_(services.defaults.boolForKey(kAutoApplyKey).value_or(true)),
      quickPasteEnabled_(services.defaults.boolForKey(kQuickPasteEnabledKey).value_or(true)),
      excludePasswords_(services.defaults.boolForKey(kExcludePasswordsKey).value_or(false)),
      pasteDelivery_({.accessibility = services.accessibility,
                      .clock = services.clock,
                      .defaults = services.defaults,
                      .keys = services.keys,
                      .log = services.log,
                      .notifications = services.notifications,
                      .pasteboard = services.pasteboard,
                      .queue = services.queue,
                      .strings = services.strings,
                      .workspace = services.workspace},
                     monitor_, store_) {
  monitor_.setOnNewText(
      anchor_.guard([this](const std::string& text) { handleCapturedText(text); }));
  monitor_.start();
  debugSignals_.emplace(services_.signals, services_.accessibility, services_.log, store_,
                        anchor_.guard([this](const std::string& text, const std::string& source) {
                          pasteText(text, source);
                        }));
}

void AppModel::setAutoApply(bool enabled) {
  autoApply_.set(enabled);
  services_.defaults.setBool(kAutoApplyKey, enabled);
}

void AppModel::setQuickPasteEnabled(bool enabled) {
  quickPasteEnabled_.set(enabled);
  services_.defaults.setBool(kQuickPasteEnabledKey, enabled);
}

void AppModel::setExcludePasswords(bool enabled) {
  excludePasswords_.set(enabled);
  services_.defaults.setBool(kExcludePasswordsKey, enabled);
}

void AppModel::handleCapturedText(const std::string& text) {
  const std::string characters = std::to_string(characterCount(text));
  if (excludePasswords_.value() && isPasswordLike(text)) {
    services_.log.write("skipped password-like text (" + characters + " chars)");
    return;
  }
  store_.add(text, "manual", services_.clock.nowMs());
  services_.log.write("captured local clip (" + characters + " chars)");
}

void AppModel::pasteText(const std::string& text, const std::string& source) {
  pasteDelivery_.pasteText(text, source, quickPasteTargetApp_);
}

void AppModel::quit() {
  monitor_.stop();
  store_.saveUnsaved();
  services_.application.terminate();
}

}  // namespace brimlo
