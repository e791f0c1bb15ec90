#include "ui/text_style.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHash>

namespace brimlo::ui {
namespace {

/// The rounded variant of the family of `font`, or that family where there is none. It is
/// remembered, because looking it up takes long and every frame needs it.
QString roundedFamily(const QFont& font) {
  static QHash<QString, QString> known;
  QString& rounded = known[font.family()];
  if (rounded.isEmpty()) {
    const QString family = QFontInfo(font).family();
    rounded = QFontDatabase::hasFamily(family + " Rounded") ? family + " Rounded" : family;
  }
  return rounded;
}

}  // namespace

QFont font(const TextStyle& style) {
  QFont font = QGuiApplication::font();
  if (style.rounded) font.setFamily(roundedFamily(font));
  font.setPixelSize(style.size);
  font.setWeight(style.weight);
  return font;
}

}  // namespace brimlo::ui
