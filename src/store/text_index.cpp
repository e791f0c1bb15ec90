#include "store/text_index.h"

#include <algorithm>
#include <bit>

#include "base/unicode_text.h"

namespace brimlo {

void TextIndex::rebuild(const ClipList& list) {
  slots_.clear();
  count_ = 0;
  reserve(list.size());
  for (const ClipPtr& clip : list) insert(*clip);
}

void TextIndex::insert(const Clip& clip) {
  reserve(count_ + 1);
  place({canonicalHash(clip.text), &clip});
  ++count_;
}

void TextIndex::erase(const Clip& clip) {
  if (count_ == 0) return;
  std::size_t hole = home(canonicalHash(clip.text));
  while (slots_[hole].clip != &clip) {
    if (!slots_[hole].clip) return;
    hole = after(hole);
  }
  // Close the gap: whatever stands behind it and could not be reached across a hole moves up.
  for (std::size_t next = after(hole); slots_[next].clip; next = after(next)) {
    const std::size_t wanted = home(slots_[next].hash);
    const bool reachable =
        hole < next ? wanted > hole && wanted <= next : wanted > hole || wanted <= next;
    if (reachable) continue;
    slots_[hole] = slots_[next];
    hole = next;
  }
  slots_[hole] = {};
  --count_;
}

std::vector<const Clip*> TextIndex::find(std::string_view text) const {
  std::vector<const Clip*> found;
  if (count_ == 0) return found;
  const std::size_t hash = canonicalHash(text);
  for (std::size_t slot = home(hash); slots_[slot].clip; slot = after(slot)) {
    const Slot& candidate = slots_[slot];
    if (candidate.hash == hash && canonicallyEqual(candidate.clip->text, text)) {
      found.push_back(candidate.clip);
    }
  }
  return found;
}

void TextIndex::reserve(std::size_t clips) {
  if (clips * 2 <= slots_.size()) return;
  const std::vector<Slot> old =
      std::exchange(slots_, std::vector<Slot>(std::bit_ceil(std::max<std::size_t>(clips * 2, 16))));
  for (const Slot& slot : old) {
    if (slot.clip) place(slot);
  }
}

void TextIndex::place(Slot slot) {
  std::size_t free = home(slot.hash);
  while (slots_[free].clip) free = after(free);
  slots_[free] = slot;
}

}  // namespace brimlo
