#pragma once

#include <QFont>

namespace brimlo::ui {

/// How a text is set. Sizes are in device-independent pixels.
struct TextStyle {
  int size;
  QFont::Weight weight = QFont::Normal;
  bool rounded = false;           ///< the font's rounded design, where it has one
  bool monospacedDigits = false;  ///< a number that changes keeps its width

  constexpr TextStyle semibold() const {
    return {size, QFont::DemiBold, rounded, monospacedDigits};
  }
  constexpr TextStyle bold() const { return {size, QFont::Bold, rounded, monospacedDigits}; }
  constexpr TextStyle withMonospacedDigits() const { return {size, weight, rounded, true}; }
};

inline constexpr TextStyle kTitle2{.size = 17};
inline constexpr TextStyle kBody{.size = 13};
inline constexpr TextStyle kHeadline{.size = 13, .weight = QFont::DemiBold};
inline constexpr TextStyle kCallout{.size = 12};
inline constexpr TextStyle kCaption{.size = 10};
inline constexpr TextStyle kSmallCaption{.size = 10, .weight = QFont::Medium};

/// The desktop's interface font in this style. Needs the running `QGuiApplication`.
QFont font(const TextStyle& style);

}  // namespace brimlo::ui
