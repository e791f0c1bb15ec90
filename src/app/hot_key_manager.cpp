#include "app/hot_key_manager.h"

#include <string>
#include <utility>

#include "platform/key_codes.h"

namespace brimlo {
namespace {

constexpr EventHotKeyID kHotKeyID{.signature = 0x42524C4F, .id = 1};  // "BRLO"

}  // namespace

HotKeyManager::HotKeyManager(HotKeys& hotKeys, MainQueue& queue, SystemLog& log)
    : hotKeys_(hotKeys), queue_(queue), log_(log) {}

void HotKeyManager::registerHotKey() {
  if (state_ != State::kUnregistered) return;
  if (!eventHandler_) {
    eventHandler_ = hotKeys_.installEventHandler(
        [this](const EventHotKeyID& pressed) { handleHotKeyEvent(pressed); });
  }
  state_ = State::kAsked;
  auto hotKey = hotKeys_.registerEventHotKey(
      key_code::kV, hot_key_modifier::kCommand | hot_key_modifier::kShift, kHotKeyID,
      [this](HotKeys::Status status) { registrationAnswered(status); });
  // It may have been refused from within the call.
  if (state_ != State::kUnregistered) hotKeyRef_ = std::move(hotKey);
}

void HotKeyManager::registrationAnswered(HotKeys::Status status) {
  state_ = status == 0 ? State::kRegistered : State::kUnregistered;
  if (!isRegistered()) hotKeyRef_.reset();
  log_.write("hotkey ⇧⌘V register status=" + std::to_string(status) +
             " registered=" + (isRegistered() ? "true" : "false"));
}

void HotKeyManager::unregisterHotKey() {
  hotKeyRef_.reset();
  state_ = State::kUnregistered;
  log_.write("hotkey ⇧⌘V unregistered");
}

void HotKeyManager::handleHotKeyEvent(const EventHotKeyID& pressed) {
  if (pressed.id != kHotKeyID.id) return;
  queue_.async(anchor_.guard([this] {
    if (onPressed_) onPressed_();
  }));
}

}  // namespace brimlo
