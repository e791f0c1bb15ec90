#include "palette/filter_run.h"

#include <utility>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

/// Whether every text that matches `query` also matches `before`: `query` continues `before` with a
/// character that cannot combine with the last one of it.
bool narrows(std::string_view query, std::string_view before) {
  return query.starts_with(before) &&
         (query.size() == before.size() || isAscii(query.substr(before.size(), 1)));
}

std::uint32_t at(const QuickPasteItems::Picks& picks, std::size_t index) {
  return picks ? (*picks)[index] : static_cast<std::uint32_t>(index);
}

QuickPasteItems::Picks shared(std::vector<std::uint32_t> picks) {
  return std::make_shared<const std::vector<std::uint32_t>>(std::move(picks));
}

}  // namespace

FilterRun::FilterRun(const QuickPasteSnapshot& snapshot, const std::string& query,
                     const std::string& locale, const QuickPasteMatches& before)
    : snapshot_(snapshot),
      matches_{std::string(trimmed(query, WhiteSpace::kInline)), nullptr, nullptr},
      search_(matches_.query, locale) {
  if (narrows(matches_.query, before.query)) {
    clipCandidates_ = before.clips;
    templateCandidates_ = before.templates;
  }
  clipCount_ = clipCandidates_ ? clipCandidates_->size() : snapshot_.allClips.size();
  templateCount_ =
      templateCandidates_ ? templateCandidates_->size() : snapshot_.allTemplates->size();
}

bool FilterRun::advance(std::function<bool()> mustStop) {
  if (matches_.query.empty() || matches_.clips) return true;
  mustStop_ = std::move(mustStop);
  for (; next_ < clipCount_ + templateCount_; ++next_) {
    const std::optional<bool> matches = currentMatches();
    if (!matches) return false;
    titleSearched_ = false;
    if (!*matches) continue;
    if (next_ < clipCount_) {
      foundClips_.push_back(at(clipCandidates_, next_));
    } else {
      foundTemplates_.push_back(at(templateCandidates_, next_ - clipCount_));
    }
  }
  matches_.clips = shared(std::move(foundClips_));
  matches_.templates = shared(std::move(foundTemplates_));
  return true;
}

std::optional<bool> FilterRun::currentMatches() {
  if (next_ < clipCount_) return searchOn(snapshot_.allClips[at(clipCandidates_, next_)]->text);
  const Template& current = *(*snapshot_.allTemplates)[at(templateCandidates_, next_ - clipCount_)];
  if (!titleSearched_) {
    const std::optional<bool> inTitle = searchOn(current.title);
    if (!inTitle || *inTitle) return inTitle;
    titleSearched_ = true;
  }
  return searchOn(current.body);
}

std::optional<bool> FilterRun::searchOn(std::string_view text) {
  for (;;) {
    if (searched_ >= CaseInsensitiveSearch::kPart) {
      searched_ = 0;
      if (mustStop_()) return std::nullopt;
    }
    const auto [found, next] = search_.findInPart(text, nextByte_);
    constexpr std::size_t kOverhead = 64;
    searched_ += next - nextByte_ + kOverhead;
    const bool over = found || next == text.size();
    nextByte_ = over ? 0 : next;
    if (over) return found;
  }
}

}  // namespace brimlo
