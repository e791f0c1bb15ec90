#pragma once

#include <memory>
#include <utility>

namespace brimlo {

/// Ties callbacks to the life of the object that hands them out.
///
/// The last member of its owner, so that it is destroyed first. After that, the callables that
/// `guard` made do nothing, whoever still holds them. One thread only.
class WeakAnchor {
 public:
  WeakAnchor() = default;
  WeakAnchor(const WeakAnchor&) = delete;
  WeakAnchor& operator=(const WeakAnchor&) = delete;

  /// Wraps `callback`, which returns nothing and may capture the owner by pointer.
  template <typename Callback>
  auto guard(Callback callback) const {
    return [alive = std::weak_ptr<const void>(token_),
            callback = std::move(callback)](auto&&... arguments) {
      if (!alive.expired()) callback(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<const void> token_ = std::make_shared<char>();
};

}  // namespace brimlo
