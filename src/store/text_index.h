#pragma once

#include <cstddef>
#include <vector>

#include "base/canonical_text.h"
#include "base/hash_index.h"
#include "store/clip.h"

namespace brimlo {

/// Finds the clips with a text, canonically equivalent spellings included, without a walk over the
/// history. Several clips may have the same text. Does not keep the clips alive.
class TextIndex {
 public:
  /// Forgets everything, then holds the clips of `list`.
  void rebuild(const ClipList& list);

  /// Every held clip with this text, in no particular order.
  std::vector<const Clip*> find(const CanonicalText& text) const;

  /// `hash`: the canonical hash of the clip's text.
  void insert(std::size_t hash, const Clip& clip);
  /// Removes `clip`, the same object, where it is held.
  void erase(std::size_t hash, const Clip& clip);

 private:
  using Clips = HashIndex<const Clip*, nullptr>;
  Clips clips_;
};

}  // namespace brimlo
