#include "updates/updates_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include "ui/button.h"
#include "ui/label.h"
#include "ui/paragraph.h"
#include "ui/shape_box.h"
#include "ui/stack.h"
#include "ui/symbol.h"
#include "ui/window_colors.h"

namespace brimlo {
namespace {

constexpr int kWidth = 400;
constexpr int kPadding = 20;
constexpr int kSpacing = 14;
constexpr int kSymbolRoom = 40;
constexpr int kNotesHeight = 170;
const QColor kMoss = ui::moss();

}  // namespace

UpdatesView::UpdatesView(UpdatesViewState& state, const Published<Appearance>& appearance,
                         const LocalizedStrings& strings)
    : state_(state), appearance_(appearance), strings_(strings) {
  ui::layOutColumn(*this, {}, {});
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  build();
  contentChanges_ = state_.content.observeChanges([this](const UpdatesContent&) { build(); });
  appearanceChanges_ = appearance_.observeChanges([this](const Appearance&) { build(); });
}

QString UpdatesView::text(const char* key) const {
  return QString::fromStdString(strings_.text(key));
}

void UpdatesView::build() {
  if (content_) {
    layout()->removeWidget(content_);
    content_->hide();
    content_->deleteLater();  // one of its buttons may still be handling its click
  }
  const UpdatesContent& shown = state_.content.value();
  const ui::WindowColors colors = ui::windowColors(appearance_.value());
  constexpr ui::TextStyle kSymbolStyle{.size = 28};
  auto* message = new ui::Paragraph(
      QString::fromStdString(shown.message), ui::kHeadline, colors.text,
      {.width = kWidth - 2 * kPadding - kSymbolRoom - kSpacing, .alignment = Qt::AlignLeading});
  auto* symbol = ui::centered(new ui::Symbol("arrow.down.circle", kSymbolStyle, kMoss));
  symbol->setFixedWidth(kSymbolRoom);
  content_ = ui::column({.spacing = kSpacing, .padding = ui::padding(kPadding, kPadding)},
                        {ui::row({.spacing = kSpacing}, {symbol, message, ui::Spacer()})});
  if (!shown.notes.empty()) content_->layout()->addWidget(notes(shown.notes));
  content_->layout()->addWidget(buttons(shown));
  content_->setFixedWidth(kWidth);
  setAccessibleName(QString::fromStdString(shown.message));
  layout()->addWidget(content_);
  content_->show();
  focused_->setFocus();
  layout()->activate();
  update();
}

/// The notes come from outside: only their text is shown, nothing in them is loaded or followed.
QWidget* UpdatesView::notes(const std::string& html) {
  const ui::WindowColors colors = ui::windowColors(appearance_.value());
  auto* shown = new QPlainTextEdit(
      QTextDocumentFragment::fromHtml(QString::fromStdString(html)).toPlainText());
  shown->setReadOnly(true);
  shown->setFrameShape(QFrame::NoFrame);
  shown->setFixedHeight(kNotesHeight);
  shown->setFont(ui::font(ui::kCallout));
  shown->setTabChangesFocus(true);
  shown->setAccessibleName(text("updates.whats_new"));
  QPalette palette;
  palette.setColor(QPalette::Base, Qt::transparent);
  palette.setColor(QPalette::Text, colors.text);
  palette.setColor(QPalette::Highlight, kMoss);
  shown->setPalette(palette);
  shown->verticalScrollBar()->setStyleSheet(
      QString("QScrollBar { width: 6px; background: transparent; }"
              "QScrollBar::handle { background: %1; border-radius: 3px; min-height: 28px; }"
              "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
          .arg(colors.control.name(QColor::HexArgb)));
  auto* frame = new ui::ShapeBox(6, Qt::transparent);
  frame->setBorder(colors.border);
  ui::layOutColumn(*frame, {.padding = ui::padding(4, 4)}, {shown});
  auto* heading = new ui::Label(text("updates.whats_new"), ui::kCaption, colors.secondary);
  return ui::column({.spacing = 4}, {heading, frame});
}

QWidget* UpdatesView::buttons(const UpdatesContent& shown) {
  const ui::WindowColors colors = ui::windowColors(appearance_.value());
  const auto button = [&](const char* key, bool filled, const std::function<void()>& action) {
    auto* made = new ui::Button(text(key), {.style = ui::kCallout,
                                            .text = filled ? QColor(Qt::white) : colors.text,
                                            .fill = filled ? kMoss : colors.divider,
                                            .border = filled ? kMoss : colors.border,
                                            .horizontalPadding = 10,
                                            .verticalPadding = 5,
                                            .radius = 6});
    connect(made, &QAbstractButton::clicked, this, [&action] {
      if (action) action();
    });
    return made;
  };
  auto* row = ui::row({.spacing = 8}, {ui::Spacer()});
  const auto add = [&](const char* key, bool filled, const std::function<void()>& action) {
    row->layout()->addWidget(button(key, filled, action));
  };
  if (shown.offersSkip) add("updates.skip", false, state_.onSkip);
  add(shown.offersSkip ? "updates.later"
      : shown.busy     ? "common.cancel"
                       : "updates.close",
      false, state_.onClose);
  if (shown.offersPage) add("updates.download", true, state_.onOpenPage);
  focused_ = row->layout()->itemAt(row->layout()->count() - 1)->widget();
  return row;
}

void UpdatesView::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), ui::windowColors(appearance_.value()).surface);
}

void UpdatesView::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  if (state_.onClose) state_.onClose();
}

}  // namespace brimlo
