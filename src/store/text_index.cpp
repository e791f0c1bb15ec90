#include "store/text_index.h"

#include "base/unicode_text.h"

namespace brimlo {

void TextIndex::rebuild(const ClipList& list) {
  clips_ = HashIndex<const Clip*, nullptr>(list.size());
  for (const ClipPtr& clip : list) insert(*clip);
}

void TextIndex::insert(const Clip& clip) {
  clips_.insert(canonicalHash(clip.text), &clip);
}

void TextIndex::erase(const Clip& clip) {
  clips_.erase(canonicalHash(clip.text), &clip);
}

std::vector<const Clip*> TextIndex::find(std::string_view text) const {
  std::vector<const Clip*> found;
  clips_.find(canonicalHash(text), [&](const Clip* clip) {
    if (canonicallyEqual(clip->text, text)) found.push_back(clip);
    return false;
  });
  return found;
}

}  // namespace brimlo
