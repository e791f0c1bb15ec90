#include "palette/quick_paste_rows.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/color.h"
#include "ui/label.h"
#include "ui/one_line.h"
#include "ui/shapes.h"
#include "ui/symbol.h"
#include "ui/text_style.h"

namespace brimlo {
namespace {

constexpr double kSpacing = 10;
constexpr double kHorizontalPadding = 10;
constexpr double kVerticalPadding = 8;
constexpr double kBadge = 20;
constexpr double kLeastRoom = 8;  // after the text
constexpr std::size_t kNumberedRows = 9;
constexpr ui::TextStyle kBadgeText{.size = 11, .weight = QFont::DemiBold, .rounded = true};
constexpr const char* kPhone = "iphone";
constexpr const char* kTemplate = "text.badge.plus";

double rightOf(const QRectF& rect) {
  return rect.right() - kHorizontalPadding;
}

/// The part of a row after its badge.
QRectF contentOf(const QRectF& rect) {
  return rect.adjusted(kHorizontalPadding + kBadge + kSpacing, 0, 0, 0);
}

bool isFromPhone(const Clip& clip) {
  return clip.source == "action";
}

/// The width that the text of a clip has in a row `width` wide.
double textRoom(const Clip& clip, double width) {
  const double mark =
      isFromPhone(clip) ? kSpacing + ui::symbolSize(kPhone, ui::kSmallCaption).width() : 0;
  return contentOf({0, 0, width, 0}).width() - kHorizontalPadding - kSpacing - kLeastRoom - mark;
}

std::unique_ptr<QTextLayout> layOut(const QString& text) {
  auto layout = std::make_unique<QTextLayout>(text, ui::font(ui::kCallout));
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  layout->setTextOption(option);
  layout->setCacheEnabled(true);
  return layout;
}

}  // namespace

QuickPasteRows::QuickPasteRows(const QuickPasteViewState& state, const QuickPasteColors& colors)
    : state_(state), colors_(colors) {}

int QuickPasteRows::height(std::size_t row, int width) {
  const QuickPasteItem item = state_.items.value()[row];
  double content = QFontMetricsF(ui::font(ui::kCallout)).height();
  if (const ClipPtr clip = item.clip()) {
    content *= static_cast<double>(linesOf(row, *clip, width).size());
  }
  return static_cast<int>(std::ceil(std::max(kBadge, content) + 2 * kVerticalPadding));
}

void QuickPasteRows::paint(QPainter& painter, std::size_t row, const QRectF& rect) {
  constexpr double kCornerRadius = 9;
  const QuickPasteItem item = state_.items.value()[row];
  const bool selected = static_cast<std::int64_t>(row) == state_.selectedIndex.value();
  if (selected) ui::fillRounded(painter, rect, kCornerRadius, colors_.moss);
  paintBadge(painter, row, rect, selected);
  if (const ClipPtr clip = item.clip()) {
    paintClip(painter, row, *clip, rect, selected);
  } else {
    paintTemplate(painter, *item.shownTemplate(), rect, selected);
  }
}

QString QuickPasteRows::name(std::size_t row) {
  const QuickPasteItem item = state_.items.value()[row];
  if (const ClipPtr clip = item.clip()) return ui::oneLine(clip->text);
  const Template& shown = *item.shownTemplate();
  const QString body = ui::oneLine(shown.body);
  return shown.title.empty() ? body : ui::oneLine(shown.title) + u' ' + body;
}

const QuickPasteRows::Lines& QuickPasteRows::linesOf(std::size_t row, const Clip& clip,
                                                     double rowWidth) {
  // Far more than are in sight at once.
  constexpr std::size_t kMostLayouts = 200;
  if (layouts_.size() > kMostLayouts || rowWidth != layoutWidth_) layouts_.clear();
  layoutWidth_ = rowWidth;
  const auto [found, isNew] = layouts_.try_emplace(row);
  if (!isNew) return found->second;
  const QString text = ui::oneLine(clip.text);
  const double width = textRoom(clip, rowWidth);
  auto first = layOut(text);
  first->beginLayout();
  QTextLine line = first->createLine();
  if (line.isValid()) line.setLineWidth(width);
  first->endLayout();
  const qsizetype rest = line.isValid() ? line.textLength() : text.size();
  found->second.push_back(std::move(first));
  if (rest >= text.size()) return found->second;
  const QFontMetricsF metrics(ui::font(ui::kCallout));
  auto second = layOut(metrics.elidedText(text.mid(rest), Qt::ElideRight, width));
  second->beginLayout();
  second->createLine();
  second->endLayout();
  found->second.push_back(std::move(second));
  return found->second;
}

void QuickPasteRows::paintBadge(QPainter& painter, std::size_t row, const QRectF& rect,
                                bool selected) const {
  constexpr double kCornerRadius = 5;
  const QRectF badge(rect.left() + kHorizontalPadding, rect.center().y() - kBadge / 2, kBadge,
                     kBadge);
  const QString text = row < kNumberedRows ? QString::number(row + 1) : QString(u'·');
  ui::paintBadge(painter, badge, kCornerRadius, text, kBadgeText,
                 selected ? ui::white(1) : colors_.mossLight, ui::white(selected ? 0.22 : 0.08));
}

void QuickPasteRows::paintClip(QPainter& painter, std::size_t row, const Clip& clip, QRectF rect,
                               bool selected) {
  const Lines& lines = linesOf(row, clip, rect.width());
  const QFontMetricsF metrics(ui::font(ui::kCallout));
  const double lineHeight = metrics.height();
  QPointF at = contentOf(rect).topLeft();
  at.setY(std::round(rect.center().y() - lineHeight * static_cast<double>(lines.size()) / 2));
  painter.setPen(selected ? ui::white(1) : colors_.text);
  for (const auto& line : lines) {
    // A line with characters of a taller font has its baseline where the others have theirs.
    line->draw(&painter, at + QPointF(0, metrics.ascent() - line->lineAt(0).ascent()));
    at.ry() += lineHeight;
  }
  if (!isFromPhone(clip)) return;
  const QSizeF size = ui::symbolSize(kPhone, ui::kSmallCaption);
  ui::paintSymbol(painter, kPhone,
                  {{rightOf(rect) - size.width(), rect.center().y() - size.height() / 2}, size},
                  selected ? ui::white(0.95) : colors_.secondary);
}

void QuickPasteRows::paintTemplate(QPainter& painter, const Template& shown, QRectF rect,
                                   bool selected) const {
  const QSizeF size = ui::symbolSize(kTemplate, ui::kCaption);
  QRectF room = contentOf(rect);
  ui::paintSymbol(painter, kTemplate, {{room.left(), rect.center().y() - size.height() / 2}, size},
                  selected ? ui::white(0.95) : colors_.mossLight);
  room.setLeft(room.left() + size.width() + kSpacing);
  room.setRight(rightOf(rect) - kSpacing - kLeastRoom);
  const QColor color = selected ? ui::white(1) : colors_.text;
  const QString body = ui::oneLine(shown.body);
  if (shown.title.empty()) return ui::paintText(painter, room, body, ui::kCallout, color);
  // Where both are too long, each has half of the room; what one does not need goes to the other.
  const QString title = ui::oneLine(shown.title);
  const double wanted = ui::textWidth(title, ui::kCallout);
  const double wantedByBody = ui::textWidth(body, ui::kCaption);
  const double both = room.width() - kSpacing;
  const double given = std::min(wanted, std::max(both / 2, both - wantedByBody));
  ui::paintText(painter, {room.topLeft(), QSizeF(given, room.height())}, title, ui::kCallout,
                color);
  room.setLeft(room.left() + given + kSpacing);
  ui::paintText(painter, room, body, ui::kCaption, selected ? ui::white(0.75) : colors_.secondary);
}

}  // namespace brimlo
