#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_search.h"
#include "palette/quick_paste_item.h"

namespace brimlo {

/// What the palette was filled with when it was opened.
struct QuickPasteSnapshot {
  ClipList allClips;
  QuickPasteItems::Templates allTemplates = std::make_shared<const std::vector<TemplatePtr>>();
};

/// The rows of a snapshot that match a filter.
struct QuickPasteMatches {
  std::string query;  ///< the filter, white space at its ends removed
  QuickPasteItems::Picks clips;
  QuickPasteItems::Picks templates;
};

/// The work of one filter, which can be interrupted, even within a long text. Main thread.
///
/// A clip matches by its text, a template by its title or its body. The rows stay in order. Letters
/// added to the end of a filter can only make it stricter, so only the matches before are looked
/// at.
class FilterRun {
 public:
  /// `query`: the filter as typed. `before`: the matches of an earlier filter in this snapshot.
  FilterRun(const QuickPasteSnapshot& snapshot, const std::string& query, const std::string& locale,
            const QuickPasteMatches& before);

  /// Works until the run is over, or `mustStop`, asked every now and then, says true. Returns
  /// whether it is over.
  bool advance(std::function<bool()> mustStop);

  /// What matches, once the run is over.
  const QuickPasteMatches& matches() const { return matches_; }

 private:
  /// Whether `text` matches; none when it was interrupted. The next call goes on from there.
  std::optional<bool> searchOn(std::string_view text);
  std::optional<bool> currentMatches();

  QuickPasteSnapshot snapshot_;
  QuickPasteMatches matches_;
  CaseInsensitiveSearch search_;
  QuickPasteItems::Picks clipCandidates_;
  QuickPasteItems::Picks templateCandidates_;
  // How many candidates there are.
  std::size_t clipCount_;
  std::size_t templateCount_;
  std::vector<std::uint32_t> foundClips_;
  std::vector<std::uint32_t> foundTemplates_;
  std::size_t next_ = 0;      // index of the current candidate; the clips come first
  std::size_t nextByte_ = 0;  // in its text
  bool titleSearched_ = false;
  std::size_t searched_ = 0;  // bytes since `mustStop` was last asked
  std::function<bool()> mustStop_;
};

}  // namespace brimlo
