#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace brimlo {

/// A hash table of small values, such as pointers or positions in a list, whose keys are held
/// elsewhere: a caller gives a key's hash, and a predicate that tells whether a value has that key.
///
/// Open addressing with linear probing in one block of memory, with 32 bits of each hash beside its
/// value: lean, and rarely in need of a key. `kNone`: a value that is never inserted.
template <typename Value, Value kNone>
class HashIndex {
 public:
  /// With room for `count` values; it grows when more come.
  explicit HashIndex(std::size_t count = 0) : slots_(slotsFor(count)) {}

  /// The first value under `hash` for which `hasKey` holds; null where there is none. A predicate
  /// that never holds is shown every value that may have the key.
  template <typename HasKey>
  const Value* find(std::size_t hash, HasKey hasKey) const {
    const Slot& slot = slots_[slotOf(hash, hasKey)];
    return slot.value == kNone ? nullptr : &slot.value;
  }

  /// As `find`; where there is none, inserts `value` and returns null. What it returns may be
  /// replaced by another value with the same key, until the next insertion.
  template <typename HasKey>
  Value* findOrInsert(std::size_t hash, Value value, HasKey hasKey) {
    growFor(count_ + 1);
    Slot& slot = slots_[slotOf(hash, hasKey)];
    if (slot.value != kNone) return &slot.value;
    slot = {static_cast<std::uint32_t>(hash), value};
    ++count_;
    return nullptr;
  }

  /// Inserts `value`, whatever else has its key.
  void insert(std::size_t hash, Value value) {
    findOrInsert(hash, value, [](Value) { return false; });
  }

  /// Removes `value`, which was inserted under `hash`; does nothing where it was not.
  void erase(std::size_t hash, Value value) {
    std::size_t hole = slotOf(hash, [value](Value other) { return other == value; });
    if (slots_[hole].value == kNone) return;
    // A lookup ends at a free slot, so what stands behind the hole moves into it, save what would
    // then stand before its home.
    for (std::size_t next = after(hole); slots_[next].value != kNone; next = after(next)) {
      const std::size_t fromHome = (next - home(slots_[next].hash)) & mask();
      const std::size_t fromHole = (next - hole) & mask();
      if (fromHome < fromHole) continue;
      slots_[hole] = slots_[next];
      hole = next;
    }
    slots_[hole] = {};
    --count_;
  }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    Value value = kNone;
  };

  /// A power of two, so that a hash's low bits name a slot; half of them stay free at least.
  static std::size_t slotsFor(std::size_t count) {
    return std::bit_ceil(std::max<std::size_t>(count * 2, 16));
  }

  std::size_t mask() const { return slots_.size() - 1; }
  std::size_t home(std::size_t hash) const { return hash & mask(); }
  std::size_t after(std::size_t slot) const { return (slot + 1) & mask(); }

  /// The slot of the first value with the key, or the free one that ends the search.
  template <typename HasKey>
  std::size_t slotOf(std::size_t hash, HasKey hasKey) const {
    std::size_t at = home(hash);
    while (slots_[at].value != kNone &&
           !(slots_[at].hash == static_cast<std::uint32_t>(hash) && hasKey(slots_[at].value))) {
      at = after(at);
    }
    return at;
  }

  void growFor(std::size_t count) {
    if (count * 2 <= slots_.size()) return;
    for (const Slot& slot : std::exchange(slots_, std::vector<Slot>(slotsFor(count)))) {
      if (slot.value != kNone) slots_[slotOf(slot.hash, [](Value) { return false; })] = slot;
    }
  }

  std::vector<Slot> slots_;
  std::size_t count_ = 0;
};

}  // namespace brimlo
