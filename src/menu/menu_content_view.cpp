#include "menu/menu_content_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "ui/color.h"
#include "ui/shape_box.h"
#include "ui/stack.h"
#include "ui/symbol.h"

namespace brimlo {
namespace {

constexpr int kWidth = 320;
constexpr int kHistoryHeight = 300;
constexpr int kTemplatesHeight = 160;
constexpr int kSide = 12;   // left and right of the header and the footer
constexpr int kAbove = 10;  // above and below them
constexpr int kRing = 4;    // around the footer's items, for the ring that marks one
constexpr ui::TextStyle kCaption2 = ui::kSmallCaption;

QString toQt(const std::string& text) {
  return QString::fromStdString(text);
}

}  // namespace

/// A list in pages.
struct MenuContentView::Section {
  Section(const QColor& moss, const QColor& text) : rows(moss, text) {}

  MenuRows rows;
  QWidget* widget;
  ui::Label* label;
  QWidget* labelRow;
  ui::RowList* list;
  QWidget* pager;
  ui::Button* previous;
  ui::Button* next;
};

MenuContentView::MenuContentView(MenuContentModel& model, const Published<Appearance>& appearance)
    : model_(model) {
  setFocusPolicy(Qt::NoFocus);
  ui::layOutColumn(*this, {}, {});
  appearanceChanges_ = appearance.observeDistinct([this](const Appearance& now) {
    colors_ = ui::windowColors(now);
    build();
  });
  contentChanges_ =
      model_.content().observeChanges([this](const MenuContent& content) { showContent(content); });
}

MenuContentView::~MenuContentView() = default;

void MenuContentView::paintEvent(QPaintEvent*) {
  if (isWindow()) QPainter(this).fillRect(rect(), colors_.surface);
}

void MenuContentView::keyPressEvent(QKeyEvent* event) {
  const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  // Digits of any script, and with Shift, which some keyboard layouts need for digits.
  const int digit = event->key() <= 0xFFFF ? QChar(event->key()).digitValue() : -1;
  const bool isShortcut = digit >= 1 && digit <= static_cast<int>(MenuContentModel::kShortcuts);
  if (modifiers == Qt::ControlModifier && isShortcut && !alert_) {
    if (!event->isAutoRepeat()) model_.activateClip(static_cast<std::size_t>(digit) - 1);
  } else if (event->key() == Qt::Key_Escape) {
    model_.escape();
  } else if (event->key() == Qt::Key_Down) {
    focusNextChild();
  } else if (event->key() == Qt::Key_Up) {
    focusPreviousChild();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void MenuContentView::build() {
  delete content_;
  delete std::exchange(alert_, nullptr);
  footer_.clear();
  history_ = makeSection(kHistoryHeight);
  templates_ = makeSection(kTemplatesHeight);
  const MenuContent& shown = model_.content().value();
  empty_ = new ui::Label(toQt(shown.empty), ui::kCaption, colors_.secondary);
  emptyRow_ = ui::row({.padding = ui::padding(kSide, kSide)}, {empty_});
  templatesDivider_ = ui::divider(colors_.divider);
  content_ = ui::column(
      {}, {header(), ui::divider(colors_.divider), emptyRow_, history_->widget, templatesDivider_,
           templates_->widget, ui::divider(colors_.divider), footer()});
  content_->setFixedWidth(kWidth);
  layout()->addWidget(content_);
  setFocusProxy(history_->list);
  history_->list->setFocus();
  const auto onTurn = [this](ui::Button* button, ui::RowList* list, std::function<void()> turn) {
    connect(button, &QAbstractButton::clicked, this, [list, turn = std::move(turn)] {
      turn();
      list->scrollToTop();
    });
  };
  history_->list->setOnClick([this](std::size_t row) { model_.activateClip(row); });
  templates_->list->setOnClick([this](std::size_t row) { model_.activateTemplate(row); });
  onTurn(history_->previous, history_->list, [this] { model_.showPreviousHistoryPage(); });
  onTurn(history_->next, history_->list, [this] { model_.showNextHistoryPage(); });
  onTurn(templates_->previous, templates_->list, [this] { model_.showPreviousTemplatePage(); });
  onTurn(templates_->next, templates_->list, [this] { model_.showNextTemplatePage(); });
  showContent(shown);
}

QWidget* MenuContentView::header() {
  const MenuContent& shown = model_.content().value();
  count_ = new ui::Label(toQt(shown.count), ui::kCaption, colors_.secondary);
  auto* title = new ui::Label(toQt(shown.title), ui::kHeadline, colors_.text);
  history_->list->setAccessibleName(toQt(shown.title));
  return ui::row({.spacing = 8, .padding = ui::padding(kSide, kAbove)},
                 {new ui::Symbol("square.stack.3d.up.fill", ui::kHeadline, moss_), title->rigid(),
                  ui::Spacer(), count_->rigid()});
}

std::unique_ptr<MenuContentView::Section> MenuContentView::makeSection(int maximumHeight) {
  auto section = std::make_unique<Section>(moss_, colors_.text);
  section->label = new ui::Label("", kCaption2, colors_.secondary);
  section->labelRow = ui::row({.padding = {10, 6, 10, 0}}, {section->label});
  section->list = new ui::RowList(
      section->rows,
      {.spacing = 2, .indicator = colors_.control, .maximumHeight = maximumHeight, .ring = moss_});
  section->previous = mossButton("chevron.left", {});
  section->next = mossButton({}, "chevron.right");
  section->pager = ui::row({.spacing = 8, .padding = {8, 2, 8, 0}},
                           {section->previous, ui::Spacer(), section->next});
  section->widget = ui::column({.spacing = 2, .padding = ui::padding(6, 6)},
                               {section->labelRow, section->list, section->pager});
  return section;
}

ui::Button* MenuContentView::mossButton(const QString& leadingSymbol,
                                        const QString& trailingSymbol) {
  return new ui::Button("", {.style = ui::kCaption,
                             .text = moss_,
                             .leadingSymbol = leadingSymbol,
                             .trailingSymbol = trailingSymbol,
                             .spacing = 2});
}

QWidget* MenuContentView::footer() {
  auto* footer = new QWidget;
  ui::layOutColumn(*footer, {.spacing = 8, .padding = ui::padding(kSide - kRing, kAbove)}, {});
  for (const FooterItem& item : model_.content().value().footer) {
    footer->layout()->addWidget(footerWidget(item));
  }
  return footer;
}

QWidget* MenuContentView::footerWidget(const FooterItem& item) {
  FooterWidget made;
  const QString text = toQt(item.text), symbol = toQt(item.symbol);
  const auto press = [this, id = item.id] { model_.activate(id); };
  const auto makeButton = [&](const ui::Button::Look& look) {
    made.button = new ui::Button(text, look);
    connect(made.button, &QAbstractButton::clicked, this, press);
    return made.button;
  };
  switch (item.kind) {
    case FooterItemKind::kSwitch:
      made.toggle = new ui::Switch(text, {.style = ui::kCaption,
                                          .text = colors_.text,
                                          .tint = moss_,
                                          .track = colors_.control,
                                          .horizontalPadding = kRing});
      connect(made.toggle, &QAbstractButton::clicked, this, press);
      made.widget = made.toggle;
      break;
    case FooterItemKind::kNotice:
      made.widget = ui::row({.spacing = 4, .padding = ui::padding(kRing, 0)},
                            {new ui::Symbol(symbol, kCaption2, colors_.secondary),
                             new ui::Label(text, kCaption2, colors_.secondary), ui::Spacer()});
      break;
    case FooterItemKind::kSync: {
      status_ = new ui::Label("", kCaption2, colors_.secondary);
      auto* button = makeButton({.style = ui::kCallout,
                                 .text = colors_.text,
                                 .fill = colors_.divider,
                                 .border = colors_.border,
                                 .horizontalPadding = 9,
                                 .verticalPadding = 3,
                                 .radius = 6,
                                 .leadingSymbol = symbol,
                                 .spacing = 4});
      made.widget = ui::row({.spacing = 8, .padding = ui::padding(kRing, 0)},
                            {button, status_, ui::Spacer()});
      break;
    }
    case FooterItemKind::kDivider:
      made.widget = ui::column({.padding = ui::padding(kRing, 0)}, {ui::divider(colors_.divider)});
      break;
    case FooterItemKind::kCommand:
    case FooterItemKind::kDestructiveCommand: {
      const bool destructive = item.kind == FooterItemKind::kDestructiveCommand;
      const QColor& color = destructive ? colors_.destructive : colors_.text;
      made.widget = ui::row({}, {makeButton({.style = ui::kCaption,
                                             .text = color,
                                             .horizontalPadding = kRing,
                                             .leadingSymbol = symbol,
                                             .spacing = 4}),
                                 ui::Spacer()});
      break;
    }
  }
  footer_.push_back(made);
  return made.widget;
}

void MenuContentView::showContent(const MenuContent& content) {
  count_->setText(toQt(content.count));
  emptyRow_->setVisible(!content.empty.empty());
  empty_->setText(toQt(content.empty));
  showPage(*history_, content.history);
  showPage(*templates_, content.templates);
  templatesDivider_->setVisible(!content.templates.rows.empty());
  templates_->list->setAccessibleName(toQt(content.templates.label));
  for (std::size_t at = 0; at < footer_.size(); ++at) {
    const FooterItem& item = content.footer[at];
    FooterWidget& shown = footer_[at];
    shown.widget->setVisible(item.shown);
    if (shown.toggle) shown.toggle->setChecked(item.on);
    if (shown.button) shown.button->setEnabled(item.enabled);
    if (item.kind == FooterItemKind::kSync) shown.button->setBusy(content.isSyncing);
  }
  status_->setText(toQt(content.syncStatus));
  status_->setToolTip(toQt(content.syncStatus));
  showAlert(content.alert);
}

void MenuContentView::showPage(Section& section, const MenuPage& page) {
  section.widget->setVisible(!page.rows.empty());
  section.labelRow->setVisible(!page.label.empty());
  section.label->setText(toQt(page.label));
  if (section.rows.rows() != page.rows) {
    section.rows.setRows(page.rows);
    section.list->setRows(page.rows.size());
  }
  const auto showButton = [](ui::Button& button, const std::optional<std::string>& text) {
    button.setVisible(text.has_value());
    if (text) button.setLabel(toQt(*text));
  };
  showButton(*section.previous, page.previous);
  showButton(*section.next, page.next);
  section.pager->setVisible(page.previous || page.next);
}

void MenuContentView::showAlert(const std::optional<MenuAlert>& alert) {
  if (alert.has_value() == (alert_ != nullptr)) return;
  if (!alert) {
    alert_->deleteLater();  // one of its buttons may still be handling its click
    alert_->hide();
    alert_ = nullptr;
    history_->list->setFocus();
    return;
  }
  alert_ = new ui::Alert(
      this,
      {.title = toQt(alert->title),
       .message = toQt(alert->message),
       .confirm = toQt(alert->confirm),
       .cancel = toQt(alert->cancel)},
      colors_, [this] { model_.confirmClear(); }, [this] { model_.cancelClear(); });
}

}  // namespace brimlo
