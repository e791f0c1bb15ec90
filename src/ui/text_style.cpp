#include "ui/text_style.h"

#include <QFontDatabase>
#include <QFontInfo>

namespace brimlo::ui {

QFont font(const TextStyle& style) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  if (style.rounded) {
    const QString rounded = QFontInfo(font).family() + " Rounded";
    if (QFontDatabase::hasFamily(rounded)) font.setFamily(rounded);
  }
  font.setPixelSize(style.size);
  font.setWeight(style.weight);
  return font;
}

}  // namespace brimlo::ui
