#include "palette/quick_paste_item.h"

#include <utility>

namespace brimlo {

std::string QuickPasteItem::id() const {
  const ClipPtr shownClip = clip();
  return shownClip ? "c-" + shownClip->id : "t-" + shownTemplate()->id;
}

ClipPtr QuickPasteItem::clip() const {
  const auto* clip = std::get_if<ClipPtr>(&value_);
  return clip ? *clip : nullptr;
}

TemplatePtr QuickPasteItem::shownTemplate() const {
  const auto* shown = std::get_if<TemplatePtr>(&value_);
  return shown ? *shown : nullptr;
}

bool QuickPasteItem::operator==(const QuickPasteItem& other) const {
  if (value_.index() != other.value_.index()) return false;
  return clip() ? *clip() == *other.clip() : *shownTemplate() == *other.shownTemplate();
}

QuickPasteItems::QuickPasteItems(ClipList clips, Picks picks)
    : picks_(std::move(picks)), size_(picks_ ? picks_->size() : clips.size()) {
  snapshot_ = std::move(clips);
}

QuickPasteItems::QuickPasteItems(Templates templates, Picks picks)
    : picks_(std::move(picks)), size_(picks_ ? picks_->size() : templates->size()) {
  snapshot_ = std::move(templates);
}

QuickPasteItem QuickPasteItems::operator[](std::size_t row) const {
  const std::size_t at = picks_ ? (*picks_)[row] : row;
  if (const auto* clips = std::get_if<ClipList>(&snapshot_)) return QuickPasteItem((*clips)[at]);
  return QuickPasteItem((*std::get<Templates>(snapshot_))[at]);
}

}  // namespace brimlo
