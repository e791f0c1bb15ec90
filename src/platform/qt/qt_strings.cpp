#include "platform/qt/qt_strings.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <limits>

namespace brimlo {

QtStrings::QtStrings() {
  // The translator installed last is asked first.
  if (english_.load(":/i18n/brimlo_en.qm")) QCoreApplication::installTranslator(&english_);
  if (user_.load(QLocale(), "brimlo", "_", ":/i18n")) QCoreApplication::installTranslator(&user_);
}

std::string QtStrings::text(const char* key) const {
  return qtTrId(key).toStdString();
}

std::string QtStrings::textWithCount(const char* key, std::size_t count) const {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  return qtTrId(key, static_cast<int>(std::min(count, kMost))).toStdString();
}

}  // namespace brimlo
