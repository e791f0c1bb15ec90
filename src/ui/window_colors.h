#pragma once

#include <QColor>

#include "platform/appearance.h"
#include "ui/color.h"

namespace brimlo::ui {

/// The colours of a window that follows the desktop.
struct WindowColors {
  QColor surface;
  QColor border;
  QColor divider;
  QColor text;
  QColor secondary;
  QColor control;  ///< behind a button, and behind a switch that is off
  QColor destructive;
};

inline WindowColors windowColors(Appearance appearance) {
  if (appearance == Appearance::kDark) {
    return {.surface = srgb(38, 46, 40),
            .border = white(0.14),
            .divider = white(0.1),
            .text = srgb(230, 237, 231),
            .secondary = srgb(166, 182, 170),
            .control = white(0.16),
            .destructive = srgb(240, 112, 100)};
  }
  return {.surface = srgb(250, 251, 249),
          .border = QColor(0, 0, 0, 40),
          .divider = QColor(0, 0, 0, 26),
          .text = srgb(40, 48, 42),
          .secondary = srgb(94, 107, 98),
          .control = QColor(0, 0, 0, 34),
          .destructive = srgb(190, 50, 40)};
}

}  // namespace brimlo::ui
