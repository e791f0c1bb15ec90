#include "menu/menu_popover.h"

#include "menu/menu_content_view.h"
#include "ui/stack.h"
#include "ui/window_colors.h"

namespace brimlo {
namespace {

constexpr ui::Card::Look kLook{
    .margin = 12,
    .radius = 10,
    .shadow = {.opacity = 0.3, .blurRadius = 10, .offset = {0, 3}},
};

}  // namespace

MenuPopover::MenuPopover(MenuContentModel& model, const Published<Appearance>& appearance)
    : Card(kLook) {
  auto* view = new MenuContentView(model, appearance);
  ui::layOutColumn(*this, {}, {view});
  setFocusProxy(view);
  setWindowTitle("Brimlo");
  appearanceChanges_ = appearance.observeDistinct([this](const Appearance& now) {
    const ui::WindowColors colors = ui::windowColors(now);
    setColors(colors.surface, colors.border);
  });
}

}  // namespace brimlo
