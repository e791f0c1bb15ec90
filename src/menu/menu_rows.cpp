#include "menu/menu_rows.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/label.h"
#include "ui/one_line.h"
#include "ui/symbol.h"

namespace brimlo {
namespace {

constexpr double kSpacing = 8;
constexpr double kHorizontalPadding = 8;
constexpr double kVerticalPadding = 5;
constexpr double kBadge = 16;
constexpr double kBadgeRadius = 4;
constexpr float kBadgeOpacity = 0.12F;  // of what is behind the number
constexpr ui::TextStyle kBadgeText{.size = 10, .weight = QFont::DemiBold, .rounded = true};

}  // namespace

int MenuRows::height(std::size_t, int) {
  const double text = QFontMetricsF(ui::font(ui::kCallout)).height();
  return static_cast<int>(std::ceil(std::max(kBadge, text) + 2 * kVerticalPadding));
}

void MenuRows::paint(QPainter& painter, std::size_t row, const QRectF& rect) {
  const MenuRow& shown = rows_[row];
  QRectF room = rect.adjusted(kHorizontalPadding, 0, -kHorizontalPadding, 0);
  QColor fill = moss_;
  fill.setAlphaF(kBadgeOpacity);
  ui::paintBadge(painter, {room.left(), room.center().y() - kBadge / 2, kBadge, kBadge},
                 kBadgeRadius, QString::fromStdString(shown.badge), kBadgeText, moss_, fill);
  room.setLeft(room.left() + kBadge + kSpacing);
  if (!shown.symbol.empty()) {
    const QString symbol = QString::fromStdString(shown.symbol);
    const QSizeF size = ui::symbolSize(symbol, ui::kSmallCaption);
    ui::paintSymbol(painter, symbol, {{room.left(), room.center().y() - size.height() / 2}, size},
                    moss_);
    room.setLeft(room.left() + size.width() + kSpacing);
  }
  ui::paintText(painter, room, ui::oneLine(*shown.text), ui::kCallout, text_);
}

QString MenuRows::name(std::size_t row) {
  return ui::oneLine(*rows_[row].text);
}

}  // namespace brimlo
