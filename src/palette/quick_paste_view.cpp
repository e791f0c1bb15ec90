#include "palette/quick_paste_view.h"

#include <QStackedLayout>
#include <utility>

#include "ui/color.h"
#include "ui/stack.h"
#include "ui/symbol.h"

namespace brimlo {
namespace {

constexpr int kCardWidth = 460;
constexpr int kListHeight = 340;
constexpr ui::Card::Look kLook{
    .margin = 20,
    .radius = 14,
    .shadow = {.opacity = 0.45, .blurRadius = 24, .offset = {0, 12}},
};

}  // namespace

QuickPasteView::QuickPasteView(QuickPasteViewState& state, const LocalizedStrings& strings,
                               const Pasteboard& pasteboard)
    : Card(kLook),
      state_(state),
      noMatchText_(QString::fromStdString(strings.text("palette.no_match"))),
      emptyText_(QString::fromStdString(strings.text("palette.empty"))),
      rows_(state, colors_),
      searchField_(new ui::TextField(
          ui::kCallout,
          {.text = colors_.text, .placeholder = colors_.secondary, .tint = colors_.mossLight},
          pasteboard)) {
  const QString placeholder = QString::fromStdString(strings.text("palette.filter_placeholder"));
  searchField_->setPlaceholderText(placeholder);
  searchField_->setAccessibleName(placeholder);
  const ui::CapsuleTab::Colors tabColors{.selectedFill = colors_.moss,
                                         .fill = ui::white(0.07),
                                         .selectedText = ui::white(1),
                                         .text = colors_.secondary};
  const auto tab = [&](const char* key, QuickPasteSection section) {
    auto* made = new ui::CapsuleTab(QString::fromStdString(strings.text(key)), tabColors);
    connect(made, &QAbstractButton::clicked, this, [this, section] {
      if (state_.onSectionChange) state_.onSectionChange(section);
    });
    return made;
  };
  clipsTab_ = tab("palette.tab_clips", QuickPasteSection::kClips);
  templatesTab_ = tab("palette.tab_templates", QuickPasteSection::kTemplates);
  setAccessibleName(QString::fromStdString(strings.text("palette.title")));
  ui::layOutColumn(*this, {},
                   {titleRow(strings), tabRow(), ui::divider(ui::white(0.08)), listArea(),
                    ui::divider(ui::white(0.08)), hintBar(strings)});
  setFixedWidth(kCardWidth + 2 * kLook.margin);
  setColors(colors_.surface, ui::white(0.1));
  observe();
}

QWidget* QuickPasteView::titleRow(const LocalizedStrings& strings) {
  return ui::row({.spacing = 8, .padding = {14, 12, 14, 8}},
                 {new ui::Symbol("square.stack.3d.up.fill", ui::kBody, colors_.mossLight),
                  new ui::Label(QString::fromStdString(strings.text("palette.title")),
                                ui::kHeadline, colors_.text),
                  ui::Spacer(), filterBox()});
}

QWidget* QuickPasteView::filterBox() {
  constexpr double kFilterRadius = 7;
  constexpr int kFieldWidth = 150;
  filterBox_ = new ui::ShapeBox(kFilterRadius, ui::white(0.06));
  searchField_->setFixedWidth(kFieldWidth);
  ui::layOutRow(*filterBox_, {.spacing = 5, .padding = ui::padding(8, 4)},
                {new ui::Symbol("magnifyingglass", ui::kCaption, colors_.secondary), searchField_});
  return filterBox_;
}

QWidget* QuickPasteView::tabRow() {
  return ui::row({.spacing = 6, .padding = {12, 0, 12, 8}},
                 {clipsTab_, templatesTab_, ui::Spacer()});
}

QWidget* QuickPasteView::listArea() {
  list_ = new ui::RowList(rows_, {.spacing = 2, .padding = 6, .indicator = ui::white(0.28)});
  list_->setOnClick([this](std::size_t row) {
    if (state_.onConfirm) state_.onConfirm(static_cast<std::int64_t>(row));
  });
  list_->setOnHover([this](std::size_t row) {
    if (state_.onHover) state_.onHover(static_cast<std::int64_t>(row));
  });
  emptyLabel_ = new ui::Label(emptyText_, ui::kCallout, colors_.secondary);
  auto* centred = ui::centered(emptyLabel_);
  auto* area = new QWidget;
  area->setFixedSize(kCardWidth, kListHeight);
  auto* either = new QStackedLayout(area);
  either->addWidget(centred);
  either->addWidget(list_);
  return area;
}

QWidget* QuickPasteView::hintBar(const LocalizedStrings& strings) {
  counter_ = new ui::Label("", ui::kSmallCaption.withMonospacedDigits(), colors_.secondary);
  return ui::row(
      {.spacing = 12, .padding = ui::padding(14, 8)},
      {hint("⇥", strings.text("palette.hint.tab")), hint("↑↓", strings.text("palette.hint.select")),
       hint("←→", strings.text("palette.hint.page")),
       hint("1–9", strings.text("palette.hint.paste_direct")),
       hint("esc", strings.text("palette.hint.close")), ui::Spacer(), counter_->rigid()});
}

QWidget* QuickPasteView::hint(const char* keys, const std::string& label) {
  constexpr double kChipRadius = 4;
  constexpr ui::TextStyle kChipText{.size = 10, .weight = QFont::DemiBold, .rounded = true};
  auto* chip = new ui::ShapeBox(kChipRadius, ui::white(0.1));
  auto* chipText = new ui::Label(QString::fromUtf8(keys), kChipText, colors_.text);
  ui::layOutRow(*chip, {.padding = ui::padding(5, 1)}, {chipText->rigid()});
  return ui::row({.spacing = 4}, {chip, new ui::Label(QString::fromStdString(label),
                                                      ui::kSmallCaption, colors_.secondary)});
}

void QuickPasteView::observe() {
  connect(searchField_, &QLineEdit::textChanged, this, [this](const QString& text) {
    std::string query = text.toStdString();
    if (query != state_.query.value()) state_.query.set(std::move(query));
  });
  subscriptions_.push_back(state_.query.observe([this](const std::string& query) {
    filterBox_->setFill(ui::white(query.empty() ? 0.06 : 0.12));
    emptyLabel_->setText(query.empty() ? emptyText_ : noMatchText_);
    const QString text = QString::fromStdString(query);
    if (text != searchField_->text()) searchField_->setText(text);
  }));
  subscriptions_.push_back(
      state_.clipCount.observe([this](const std::int64_t& count) { clipsTab_->setCount(count); }));
  subscriptions_.push_back(state_.templateCount.observe(
      [this](const std::int64_t& count) { templatesTab_->setCount(count); }));
  subscriptions_.push_back(state_.items.observe([this](const QuickPasteItems&) { showRows(); }));
  subscriptions_.push_back(
      state_.selectedIndex.observe([this](const std::int64_t&) { showSelection(); }));
  subscriptions_.push_back(state_.section.observeDistinct([this](const QuickPasteSection& section) {
    clipsTab_->setChecked(section == QuickPasteSection::kClips);
    templatesTab_->setChecked(section == QuickPasteSection::kTemplates);
    list_->setAccessibleName(section == QuickPasteSection::kClips ? clipsTab_->title()
                                                                  : templatesTab_->title());
    list_->scrollToTop();
  }));
  subscriptions_.push_back(state_.keyboardNavTick.observeChanges([this](const std::int64_t&) {
    list_->scrollToCenter(static_cast<std::size_t>(state_.selectedIndex.value()));
  }));
  subscriptions_.push_back(
      state_.focusRequest.observe([this](const std::int64_t&) { searchField_->setFocus(); }));
}

void QuickPasteView::showRows() {
  const QuickPasteItems& items = state_.items.value();
  rows_.forgetLayouts();
  list_->setRows(items.size());
  auto* either = static_cast<QStackedLayout*>(list_->parentWidget()->layout());
  either->setCurrentIndex(items.empty() ? 0 : 1);
  showCounter();
}

void QuickPasteView::showSelection() {
  list_->setSelectedRow(static_cast<std::size_t>(state_.selectedIndex.value()));
  showCounter();
}

void QuickPasteView::showCounter() {
  const QuickPasteItems& items = state_.items.value();
  counter_->setText(
      items.empty() ? QString()
                    : QString("%1 / %2").arg(state_.selectedIndex.value() + 1).arg(items.size()));
}

}  // namespace brimlo
