#pragma once

#include <QMargins>
#include <QWidget>
#include <initializer_list>
#include <variant>

namespace brimlo::ui {

/// Takes up the room that the other items of a stack leave.
struct Spacer {};

using StackItem = std::variant<QWidget*, Spacer>;

/// Equal margins left and right, and above and below.
inline QMargins padding(int horizontal, int vertical) {
  return {horizontal, vertical, horizontal, vertical};
}

struct StackOptions {
  int spacing = 0;
  QMargins padding = {};
};

/// Lays out `into` as a row, its items centred vertically, or as a column, its items as wide as it
/// is. The items become children of `into`.
void layOutRow(QWidget& into, const StackOptions& options, std::initializer_list<StackItem> items);
void layOutColumn(QWidget& into, const StackOptions& options,
                  std::initializer_list<StackItem> items);

/// Make a new widget with such a layout, which the caller puts into another.
QWidget* row(const StackOptions& options, std::initializer_list<StackItem> items);
QWidget* column(const StackOptions& options, std::initializer_list<StackItem> items);

/// A row with `item` in its middle.
QWidget* centered(QWidget* item);

}  // namespace brimlo::ui
