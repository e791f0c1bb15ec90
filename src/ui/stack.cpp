#include "ui/stack.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace brimlo::ui {
namespace {

void fill(QBoxLayout& layout, const StackOptions& options, std::initializer_list<StackItem> items,
          Qt::Alignment alignment) {
  layout.setSpacing(options.spacing);
  layout.setContentsMargins(options.padding);
  for (const StackItem& item : items) {
    if (auto* const* widget = std::get_if<QWidget*>(&item)) {
      layout.addWidget(*widget, 0, alignment);
    } else {
      layout.addStretch(1);
    }
  }
}

}  // namespace

void layOutRow(QWidget& into, const StackOptions& options, std::initializer_list<StackItem> items) {
  fill(*new QHBoxLayout(&into), options, items, Qt::AlignVCenter);
}

void layOutColumn(QWidget& into, const StackOptions& options,
                  std::initializer_list<StackItem> items) {
  fill(*new QVBoxLayout(&into), options, items, {});
}

QWidget* row(const StackOptions& options, std::initializer_list<StackItem> items) {
  auto* widget = new QWidget;
  layOutRow(*widget, options, items);
  return widget;
}

QWidget* column(const StackOptions& options, std::initializer_list<StackItem> items) {
  auto* widget = new QWidget;
  layOutColumn(*widget, options, items);
  return widget;
}

QWidget* centered(QWidget* item) {
  return row({}, {Spacer(), item, Spacer()});
}

}  // namespace brimlo::ui
