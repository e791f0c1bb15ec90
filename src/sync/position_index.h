#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace brimlo {

/// A hash table from keys to positions in a list of the caller's, which also holds the keys: an
/// open-addressing table of eight bytes an entry, made for a run over a whole history.
class PositionIndex {
 public:
  using Position = std::uint32_t;

  /// For at most `entries` entries.
  explicit PositionIndex(std::size_t entries)
      : slots_(std::bit_ceil(std::max<std::size_t>(entries * 2, 16))) {}

  /// The position under `hash` for which `same` holds; null where there is none. The caller may
  /// change it to another position with an equal key.
  template <typename Same>
  Position* find(std::size_t hash, Same same) {
    Slot& slot = slotOf(hash, same);
    return slot.taken ? &slot.position : nullptr;
  }

  /// As `find`; where there is none, puts `position` there and returns null.
  template <typename Same>
  Position* findOrPut(std::size_t hash, Position position, Same same) {
    Slot& slot = slotOf(hash, same);
    if (slot.taken) return &slot.position;
    slot = {tag(hash), 1, position};
    return nullptr;
  }

 private:
  struct Slot {
    std::uint32_t tag : 31 = 0;
    std::uint32_t taken : 1 = 0;
    Position position = 0;
  };

  static std::uint32_t tag(std::size_t hash) {
    return static_cast<std::uint32_t>(hash >> 33);  // the home is made of the low bits
  }

  template <typename Same>
  Slot& slotOf(std::size_t hash, Same same) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].taken && !(slots_[at].tag == tag(hash) && same(slots_[at].position))) {
      at = (at + 1) & mask;
    }
    return slots_[at];
  }

  std::vector<Slot> slots_;
};

}  // namespace brimlo
