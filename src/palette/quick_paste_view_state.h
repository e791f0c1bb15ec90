#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/published.h"
#include "palette/quick_paste_item.h"

namespace brimlo {

/// What the palette shows. The controller keeps it, the view observes it, writes only `query`, and
/// reports through the callbacks. Main thread.
struct QuickPasteViewState {
  Published<QuickPasteSection> section{QuickPasteSection::kClips};
  Published<QuickPasteItems> items{QuickPasteItems()};
  Published<std::int64_t> clipCount{0};      ///< clips that match the filter
  Published<std::int64_t> templateCount{0};  ///< templates that match the filter
  Published<std::int64_t> selectedIndex{0};  ///< the highlighted row; 0 also without rows
  Published<std::string> query{""};          ///< the filter text, exactly as typed
  /// Counters that only ever grow by 1: a change of the first asks for the keyboard focus in the
  /// filter field, one of the second for the selected row to be scrolled into view.
  Published<std::int64_t> focusRequest{0};
  Published<std::int64_t> keyboardNavTick{0};

  std::function<void(std::int64_t row)> onConfirm;  ///< a row was clicked
  std::function<void(std::int64_t row)> onHover;    ///< the pointer entered a row
  std::function<void(QuickPasteSection)> onSectionChange;
};

}  // namespace brimlo
