#include "platform/qt/qt_strings.h"

#include <QCoreApplication>
#include <QLocale>

namespace brimlo {

QtStrings::QtStrings() {
  // The translator installed last is asked first.
  if (english_.load(":/i18n/brimlo_en.qm")) QCoreApplication::installTranslator(&english_);
  if (user_.load(QLocale(), "brimlo", "_", ":/i18n")) QCoreApplication::installTranslator(&user_);
}

std::string QtStrings::text(const char* key) const {
  return qtTrId(key).toStdString();
}

}  // namespace brimlo
