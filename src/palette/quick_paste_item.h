#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "store/clip.h"
#include "store/template.h"

namespace brimlo {

/// The two lists of the palette.
enum class QuickPasteSection { kClips, kTemplates };

/// Templates are shared, never changed, as clips are.
using TemplatePtr = std::shared_ptr<const Template>;

/// One row of the palette: a clip or a template. A value, which shares what it shows.
class QuickPasteItem {
 public:
  explicit QuickPasteItem(ClipPtr clip) : value_(std::move(clip)) {}
  explicit QuickPasteItem(TemplatePtr shown) : value_(std::move(shown)) {}

  /// The row's identity: "c-" or "t-", then the id of the clip or template.
  std::string id() const;

  /// The clip; null for a template.
  ClipPtr clip() const;
  /// The template; null for a clip.
  TemplatePtr shownTemplate() const;

  /// Whether both are of one kind and have the same fields.
  bool operator==(const QuickPasteItem& other) const;

 private:
  std::variant<ClipPtr, TemplatePtr> value_;
};

/// The rows of one section, in order: a snapshot, or those of its entries that a filter picked.
/// Immutable; a copy shares everything and costs nothing.
class QuickPasteItems {
 public:
  using Templates = std::shared_ptr<const std::vector<TemplatePtr>>;
  /// Positions in a snapshot, ascending; null for all of them.
  using Picks = std::shared_ptr<const std::vector<std::uint32_t>>;

  QuickPasteItems() = default;
  QuickPasteItems(ClipList clips, Picks picks);
  QuickPasteItems(Templates templates, Picks picks);

  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }
  /// `row`: less than `size()`.
  QuickPasteItem operator[](std::size_t row) const;

 private:
  std::variant<ClipList, Templates> snapshot_;
  Picks picks_;
  std::size_t size_ = 0;
};

}  // namespace brimlo
