#pragma once

#include <QColor>

/// Colours as a design names them: sRGB, with an opacity from 0 to 1.
namespace brimlo::ui {

inline QColor srgb(int red, int green, int blue) {
  return {red, green, blue};
}

/// The program's own colour.
inline QColor moss() {
  return srgb(62, 142, 99);
}

inline QColor white(double opacity) {
  return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

}  // namespace brimlo::ui
