#include "capture/paste_delivery.h"

#include <chrono>
#include <utility>

#include "base/unicode_text.h"
#include "platform/key_codes.h"

namespace brimlo {

PasteDelivery::PasteDelivery(const Services& services, ClipboardMonitor& monitor, ClipStore& store)
    : services_(services), monitor_(monitor), store_(store) {}

void PasteDelivery::pasteText(const std::string& text, const std::string& source,
                              const std::optional<RunningApplication>& target) {
  if (text.empty()) return;
  waiting_.push_back({text, source, target});
  deliverNext();
}

void PasteDelivery::deliverNext() {
  while (!underWay_ && !waiting_.empty()) {
    const Delivery next = std::move(waiting_.front());
    waiting_.pop_front();
    deliver(next);
  }
}

void PasteDelivery::deliver(const Delivery& delivery) {
  monitor_.writeOwnText(delivery.text);
  store_.add(delivery.text, delivery.source, services_.clock.nowMs());
  services_.log.write("paste (" + std::to_string(characterCount(delivery.text)) +
                      " chars, src=" + delivery.source + ")");
  if (services_.accessibility.isProcessTrusted()) return pasteAutomatically(delivery.target);

  services_.log.write("AX not trusted -> clipboard-only fallback");
  postCopiedNotification();
  if (!services_.defaults.boolForKey("macOnboardingDone").value_or(false)) {
    promptAccessibilityOnce();
  }
}

void PasteDelivery::pasteAutomatically(const std::optional<RunningApplication>& target) {
  const bool gone = target && services_.workspace.activate(*target) == Workspace::Activation::kGone;
  const bool named = target && !target->bundleIdentifier.empty();
  services_.log.write("AX trusted -> auto-paste to " + (named ? target->bundleIdentifier : "?"));
  if (gone) services_.log.write("the remembered application is gone; pasting to what is in front");
  underWay_ = true;
  // The activation takes time, and the keys go to whichever application is in front.
  services_.queue.asyncAfter(std::chrono::milliseconds(80),
                             anchor_.guard([this] { postCommandV(); }));
}

void PasteDelivery::postCommandV() {
  const auto goOn = anchor_.guard([this] {
    underWay_ = false;
    deliverNext();
  });
  services_.keys.post({key_code::kV, true, modifier_flag::kCommand},
                      {key_code::kV, false, modifier_flag::kCommand},
                      anchor_.guard([this, goOn](KeyEventPoster::Result result) {
                        if (result == KeyEventPoster::Result::kPosted) {
                          services_.log.write("posted Cmd-V");
                          services_.pasteboard.whenTaken(goOn);
                        } else {
                          services_.log.write("failed to create CGEvent for Cmd-V");
                          goOn();
                        }
                      }));
}

void PasteDelivery::postCopiedNotification() {
  services_.notifications.deliver(services_.strings.text("notify.copied.title"),
                                  services_.strings.text("notify.copied.body"));
}

void PasteDelivery::promptAccessibilityOnce() {
  constexpr const char* kKey = "didPromptAccessibility";
  if (services_.defaults.boolForKey(kKey).value_or(false)) return;
  services_.defaults.setBool(kKey, true);
  services_.accessibility.promptForTrust();
  services_.log.write("prompted accessibility permission (first time only)");
}

}  // namespace brimlo
