#pragma once

#include <string_view>
#include <vector>

#include "base/hash_index.h"
#include "store/clip.h"

namespace brimlo {

/// Finds the clips with a text, canonically equivalent spellings included, without a walk over the
/// history. Several clips may have the same text. Does not keep the clips alive.
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
  HashIndex<const Clip*, nullptr> clips_;
};

}  // namespace brimlo
