#pragma once

namespace brimlo::ui {

/// Makes the kit's own widgets known to screen readers: the rows of a list as its items, a tab as
/// a tab, a button as a button, a switch as what is checked or not. To be called once, before the
/// first of them is made.
void installScreenReaderSupport();

}  // namespace brimlo::ui
