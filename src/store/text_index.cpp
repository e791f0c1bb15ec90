#include "store/text_index.h"

namespace brimlo {

void TextIndex::rebuild(const ClipList& list) {
  clips_ = Clips(list.size());
  for (const ClipPtr& clip : list) insert(canonicalHash(clip->text), *clip);
}

std::vector<const Clip*> TextIndex::find(const CanonicalText& text) const {
  std::vector<const Clip*> found;
  clips_.find(text.hash(), [&](const Clip* clip) {
    if (text.equals(clip->text)) found.push_back(clip);
    return false;
  });
  return found;
}

void TextIndex::insert(std::size_t hash, const Clip& clip) {
  clips_.insert(hash, &clip);
}

void TextIndex::erase(std::size_t hash, const Clip& clip) {
  clips_.erase(hash, &clip);
}

}  // namespace brimlo
