#pragma once

#include "base/published.h"
#include "menu/menu_content_model.h"
#include "platform/appearance.h"
#include "ui/card.h"

namespace brimlo {

/// The menu window beside its icon: a `MenuContentView` on a card. Main thread.
class MenuPopover : public ui::Card {
 public:
  /// Both outlive the popover.
  MenuPopover(MenuContentModel& model, const Published<Appearance>& appearance);

 private:
  Subscription appearanceChanges_;
};

}  // namespace brimlo
