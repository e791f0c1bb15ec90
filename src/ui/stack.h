#pragma once

#include <QMargins>
#include <QWidget>
#include <initializer_list>
#include <variant>

namespace brimlo::ui {

/// Room that a stack has to spare goes here.
struct Spacer {};

using StackItem = std::variant<QWidget*, Spacer>;

/// The same room on both sides.
inline QMargins padding(int horizontal, int vertical) {
  return {horizontal, vertical, horizontal, vertical};
}

struct StackOptions {
  int spacing = 0;
  QMargins padding = {};
};

/// Lays out `into` as a row, its items centred vertically, or as a column, its items as wide as it
/// is. `into` takes the items over.
void layOutRow(QWidget& into, const StackOptions& options, std::initializer_list<StackItem> items);
void layOutColumn(QWidget& into, const StackOptions& options,
                  std::initializer_list<StackItem> items);

/// A new widget, which the caller puts into another, with such a layout.
QWidget* row(const StackOptions& options, std::initializer_list<StackItem> items);
QWidget* column(const StackOptions& options, std::initializer_list<StackItem> items);

/// A row with `item` in its middle.
QWidget* centered(QWidget* item);

}  // namespace brimlo::ui
