#pragma once

#include <QColor>
#include <QString>
#include <QTextLayout>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "palette/quick_paste_view_state.h"
#include "ui/color.h"
#include "ui/row_list.h"
#include "ui/window_colors.h"

namespace brimlo {

/// The colours of the palette, which is always dark.
struct QuickPasteColors : ui::WindowColors {
  QuickPasteColors() : WindowColors(ui::windowColors(Appearance::kDark)) {}

  QColor moss = ui::moss();
  QColor mossLight = ui::srgb(143, 207, 169);
};

/// Draws the rows of the palette. Of a text, however long, only its beginning is ever looked at.
class QuickPasteRows : public ui::RowSource {
 public:
  /// Both outlive it.
  QuickPasteRows(const QuickPasteViewState& state, const QuickPasteColors& colors);

  int height(std::size_t row, int width) override;
  void paint(QPainter& painter, std::size_t row, const QRectF& rect) override;
  QString name(std::size_t row) override;

  /// To be called when the state has other items.
  void forgetLayouts() { layouts_.clear(); }

 private:
  using Lines = std::vector<std::unique_ptr<QTextLayout>>;

  const Lines& linesOf(std::size_t row, const Clip& clip, double rowWidth);
  void paintBadge(QPainter& painter, std::size_t row, const QRectF& rect, bool selected) const;
  void paintClip(QPainter& painter, std::size_t row, const Clip& clip, QRectF rect, bool selected);
  void paintTemplate(QPainter& painter, const Template& shown, QRectF rect, bool selected) const;

  const QuickPasteViewState& state_;
  const QuickPasteColors& colors_;
  std::unordered_map<std::size_t, Lines> layouts_;
  double layoutWidth_ = 0;  // the width of a row when they were made
};

}  // namespace brimlo
