#pragma once

#include <QColor>
#include <vector>

#include "menu/menu_content.h"
#include "ui/row_list.h"

namespace brimlo {

/// Draws the rows of a list of the menu window.
class MenuRows : public ui::RowSource {
 public:
  MenuRows(const QColor& moss, const QColor& text) : moss_(moss), text_(text) {}

  void setRows(std::vector<MenuRow> rows) { rows_ = std::move(rows); }
  const std::vector<MenuRow>& rows() const { return rows_; }

  int height(std::size_t row, int width) override;
  void paint(QPainter& painter, std::size_t row, const QRectF& rect) override;
  QString name(std::size_t row) override;

 private:
  QColor moss_;
  QColor text_;
  std::vector<MenuRow> rows_;
};

}  // namespace brimlo
