#include "app/hot_key_manager.h"

#include <string>
#include <utility>

#include "platform/key_events.h"

namespace brimlo {
namespace {

constexpr EventHotKeyID kHotKeyID{.signature = 0x42524C4F, .id = 1};  // "BRLO"

}  // namespace

HotKeyManager::HotKeyManager(HotKeys& hotKeys, MainQueue& queue, SystemLog& log)
    : hotKeys_(hotKeys), queue_(queue), log_(log) {}

void HotKeyManager::registerHotKey() {
  if (isRegistered()) return;
  if (!eventHandler_) {
    eventHandler_ = hotKeys_.installEventHandler(
        [this](const EventHotKeyID& pressed) { handleHotKeyEvent(pressed); });
  }
  auto [status, hotKey] = hotKeys_.registerEventHotKey(
      KeyEvent::kVirtualKeyV, HotKeys::kCommandKey | HotKeys::kShiftKey, kHotKeyID);
  hotKeyRef_ = std::move(hotKey);
  log_.write("hotkey ⇧⌘V register status=" + std::to_string(status) +
             " registered=" + (isRegistered() ? "true" : "false"));
}

void HotKeyManager::unregisterHotKey() {
  hotKeyRef_.reset();
  log_.write("hotkey ⇧⌘V unregistered");
}

void HotKeyManager::handleHotKeyEvent(const EventHotKeyID& pressed) {
  if (pressed.id != kHotKeyID.id) return;
  queue_.async(anchor_.guard([this] {
    if (onPressed_) onPressed_();
  }));
}

}  // namespace brimlo
