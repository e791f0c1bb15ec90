#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace brimlo {

/// A registration for notifications. Ending it (destruction, `reset`, assignment) unsubscribes. It
/// may outlive the value that it was taken from. Move-only.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> unsubscribe) : unsubscribe_(std::move(unsubscribe)) {}
  Subscription(Subscription&& other) noexcept
      : unsubscribe_(std::exchange(other.unsubscribe_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      reset();
      unsubscribe_ = std::exchange(other.unsubscribe_, nullptr);
    }
    return *this;
  }
  ~Subscription() { reset(); }

  void reset() {
    if (auto unsubscribe = std::exchange(unsubscribe_, nullptr)) unsubscribe();
  }

 private:
  std::function<void()> unsubscribe_;
};

/// A value whose observers are told of every assignment, equal or not.
///
/// Observers are called synchronously, in the order they subscribed, and each sees all
/// assignments in the order they were made: an assignment made inside a notification is readable
/// through `value()` at once and is delivered after the running round. Subscribing, unsubscribing
/// and destroying the `Published` inside a notification are safe. Observers must not throw.
/// One thread only.
template <typename T>
class Published {
 public:
  using Observer = std::function<void(const T&)>;

  explicit Published(T initial) : state_(std::make_shared<State>(std::move(initial))) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  const T& value() const { return state_->value; }

  /// Assigns and notifies.
  void set(T value) {
    const std::shared_ptr<State> state = state_;
    state->value = value;
    state->undelivered.emplace_back(++state->serial, std::move(value));
    if (state->notifying) return;
    state->notifying = true;
    while (!state->undelivered.empty()) {
      const auto [serial, current] = std::move(state->undelivered.front());
      state->undelivered.pop_front();
      const auto round = state->observers;
      for (const auto& entry : round) {
        if (entry->active && entry->since < serial) entry->notify(current);
      }
    }
    state->notifying = false;
  }

  /// Tells `observer` the current value now, and every later assignment.
  Subscription observe(Observer observer) const {
    observer(state_->value);
    return observeChanges(std::move(observer));
  }

  /// Tells `observer` every later assignment, not the current value.
  Subscription observeChanges(Observer observer) const {
    auto entry = std::make_shared<Entry>(Entry{std::move(observer), state_->serial});
    state_->observers.push_back(entry);
    return Subscription([weakState = std::weak_ptr<State>(state_), entry] {
      entry->active = false;
      if (const auto state = weakState.lock()) std::erase(state->observers, entry);
    });
  }

  /// Like `observe`, but leaves out an assignment equal to the value told last.
  Subscription observeDistinct(Observer observer) const {
    return observe([last = std::make_shared<std::unique_ptr<T>>(),
                    observer = std::move(observer)](const T& value) {
      if (*last && **last == value) return;
      *last = std::make_unique<T>(value);
      observer(value);
    });
  }

 private:
  struct Entry {
    Observer notify;
    std::uint64_t since;  // the last assignment before the subscription
    bool active = true;
  };
  struct State {
    explicit State(T initial) : value(std::move(initial)) {}
    T value;
    std::uint64_t serial = 0;
    std::deque<std::pair<std::uint64_t, T>> undelivered;
    std::vector<std::shared_ptr<Entry>> observers;
    bool notifying = false;
  };
  std::shared_ptr<State> state_;
};

}  // namespace brimlo
