#pragma once

namespace brimlo::ui {

/// Tells screen readers what the kit's own widgets are: the rows of a list are its items, a tab is
/// a tab, a button a button, a switch a check box. Call it once, before the first of them is made.
void installScreenReaderSupport();

}  // namespace brimlo::ui
