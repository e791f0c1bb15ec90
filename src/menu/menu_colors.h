#pragma once

#include <QColor>

#include "platform/appearance.h"
#include "ui/color.h"

namespace brimlo {

/// The colours of the menu window, which follow the desktop.
struct MenuColors {
  QColor surface;
  QColor border;
  QColor divider;
  QColor text;
  QColor secondary;
  QColor control;  ///< behind a button, and behind a switch that is off
  QColor destructive;
};

inline MenuColors menuColors(Appearance appearance) {
  if (appearance == Appearance::kDark) {
    return {.surface = ui::srgb(38, 46, 40),
            .border = ui::white(0.14),
            .divider = ui::white(0.1),
            .text = ui::srgb(230, 237, 231),
            .secondary = ui::srgb(166, 182, 170),
            .control = ui::white(0.16),
            .destructive = ui::srgb(240, 112, 100)};
  }
  return {.surface = ui::srgb(250, 251, 249),
          .border = QColor(0, 0, 0, 40),
          .divider = QColor(0, 0, 0, 26),
          .text = ui::srgb(40, 48, 42),
          .secondary = ui::srgb(94, 107, 98),
          .control = QColor(0, 0, 0, 34),
          .destructive = ui::srgb(190, 50, 40)};
}

}  // namespace brimlo
