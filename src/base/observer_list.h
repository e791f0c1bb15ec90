#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/published.h"

namespace brimlo {

/// Handlers of an event that has no value to keep, called in the order they were added.
///
/// Adding and removing handlers and destroying the list inside a notification are safe: a handler
/// removed meanwhile is not called, one added meanwhile is called from the next notification on.
/// Handlers must not throw. One thread only.
template <typename... Arguments>
class ObserverList {
 public:
  using Handler = std::function<void(Arguments...)>;

  ObserverList() = default;
  /// `onUseChange`: called when the first handler has been added, and when the last one has been
  /// removed while the list exists.
  explicit ObserverList(std::function<void()> onUseChange) {
    state_->onUseChange = std::move(onUseChange);
  }
  ObserverList(const ObserverList&) = delete;
  ObserverList& operator=(const ObserverList&) = delete;

  bool empty() const { return state_->entries.empty(); }

  Subscription add(Handler handler) {
    auto entry = std::make_shared<Entry>(Entry{std::move(handler)});
    state_->entries.push_back(entry);
    if (state_->entries.size() == 1 && state_->onUseChange) state_->onUseChange();
    return Subscription([weakState = std::weak_ptr<State>(state_), entry] {
      entry->active = false;
      const auto state = weakState.lock();
      if (!state) return;
      std::erase(state->entries, entry);
      if (state->entries.empty() && state->onUseChange) state->onUseChange();
    });
  }

  void notify(Arguments... arguments) const {
    const auto round = state_->entries;
    for (const auto& entry : round) {
      if (entry->active) entry->handler(arguments...);
    }
  }

 private:
  struct Entry {
    Handler handler;
    bool active = true;
  };
  struct State {
    std::vector<std::shared_ptr<Entry>> entries;
    std::function<void()> onUseChange;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace brimlo
