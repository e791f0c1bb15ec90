#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "store/clip.h"

namespace brimlo {

/// Finds the clips of a text, canonically equivalent spellings included, without a walk over the
/// history: an open-addressing table of hashes. The same text may occur several times.
/// Does not keep the clips alive.
class TextIndex {
 public:
  /// Forgets everything, then holds the clips of `list`.
  void rebuild(const ClipList& list);

  void insert(const Clip& clip);

  /// Removes `clip`, the same object, where it is held.
  void erase(const Clip& clip);

  /// Every held clip whose text equals `text`, in no particular order.
  std::vector<const Clip*> find(std::string_view text) const;

 private:
  struct Slot {
    std::size_t hash = 0;
    const Clip* clip = nullptr;  // null: the slot is free
  };

  std::size_t home(std::size_t hash) const { return hash & (slots_.size() - 1); }
  std::size_t after(std::size_t slot) const { return home(slot + 1); }
  void reserve(std::size_t clips);
  void place(Slot slot);

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::size_t count_ = 0;
};

}  // namespace brimlo
