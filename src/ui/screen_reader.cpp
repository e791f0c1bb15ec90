#include "ui/screen_reader.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <unordered_map>

#include "ui/alert.h"
#include "ui/button.h"
#include "ui/capsule_tab.h"
#include "ui/row_list.h"
#include "ui/switch.h"

namespace brimlo::ui {
namespace {

class RowListAccessible;

/// A row of a list, made when a screen reader asks for it.
class RowAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  RowAccessible(RowListAccessible& list, std::size_t row) : list_(list), row_(row) {}

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

  std::size_t row() const { return row_; }

 private:
  RowListAccessible& list_;
  std::size_t row_;
};

class RowListAccessible : public QAccessibleWidget {
 public:
  explicit RowListAccessible(RowList& list) : QAccessibleWidget(&list, QAccessible::List) {}
  ~RowListAccessible() override {
    for (const auto& [row, id] : rows_) QAccessible::deleteAccessibleInterface(id);
  }

  RowList& list() const { return *static_cast<RowList*>(widget()); }

  int childCount() const override { return static_cast<int>(list().rowCount()); }

  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto row = static_cast<std::size_t>(index);
    if (const auto found = rows_.find(row); found != rows_.end()) {
      return QAccessible::accessibleInterface(found->second);
    }
    auto* made = new RowAccessible(const_cast<RowListAccessible&>(*this), row);
    rows_[row] = QAccessible::registerAccessibleInterface(made);
    return made;
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    const auto row = list().rowAt(list().mapFromGlobal(QPointF(x, y)));
    return row ? child(static_cast<int>(*row)) : nullptr;
  }

  int indexOfChild(const QAccessibleInterface* item) const override {
    const auto* row = dynamic_cast<const RowAccessible*>(item);
    return row ? static_cast<int>(row->row()) : -1;
  }

 private:
  mutable std::unordered_map<std::size_t, QAccessible::Id> rows_;
};

/// A button of the kit: an ordinary one, a switch, or a tab, as `role` says. The labels in it are
/// hidden from screen readers, since its name says the same.
class ButtonAccessible : public QAccessibleWidget {
 public:
  ButtonAccessible(QAbstractButton& button, QAccessible::Role role)
      : QAccessibleWidget(&button, role) {}

  int childCount() const override { return 0; }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (role() == QAccessible::PageTab) {
      state.selectable = true;
      state.selected = button().isChecked();
    } else {
      state.checkable = button().isCheckable();
      state.checked = button().isChecked();
    }
    return state;
  }
  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction()) button().click();
  }

 private:
  QAbstractButton& button() const { return *static_cast<QAbstractButton*>(widget()); }
};

bool RowAccessible::isValid() const {
  return list_.isValid() && row_ < list_.list().rowCount();
}

QWindow* RowAccessible::window() const {
  return list_.window();
}

QAccessibleInterface* RowAccessible::parent() const {
  return &list_;
}

QString RowAccessible::text(QAccessible::Text kind) const {
  return kind == QAccessible::Name && isValid() ? list_.list().rowName(row_) : QString();
}

QRect RowAccessible::rect() const {
  const auto rect = isValid() ? list_.list().rowRect(row_) : std::nullopt;
  if (!rect) return {};
  return {list_.list().mapToGlobal(rect->topLeft().toPoint()), rect->size().toSize()};
}

QAccessible::State RowAccessible::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  state.selectable = true;
  state.selected = list_.list().selectedRow() == row_;
  state.offscreen = !list_.list().rowRect(row_);
  return state;
}

void RowAccessible::doAction(const QString& action) {
  if (action == pressAction() && isValid()) list_.list().click(row_);
}

QAccessibleInterface* make(const QString&, QObject* object) {
  if (auto* list = dynamic_cast<RowList*>(object)) return new RowListAccessible(*list);
  if (auto* tab = dynamic_cast<CapsuleTab*>(object)) {
    return new ButtonAccessible(*tab, QAccessible::PageTab);
  }
  if (auto* toggle = dynamic_cast<Switch*>(object)) {
    return new ButtonAccessible(*toggle, QAccessible::CheckBox);
  }
  if (auto* alert = dynamic_cast<Alert*>(object)) {
    return new QAccessibleWidget(alert, QAccessible::AlertMessage);
  }
  if (auto* button = dynamic_cast<Button*>(object)) {
    return new ButtonAccessible(*button, QAccessible::Button);
  }
  return nullptr;
}

}  // namespace

void installScreenReaderSupport() {
  QAccessible::installFactory(make);
}

}  // namespace brimlo::ui
