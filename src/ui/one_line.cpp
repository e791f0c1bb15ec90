#include "ui/one_line.h"

#include <algorithm>

namespace brimlo::ui {

QString oneLine(std::string_view text) {
  constexpr std::size_t kMostBytes = 1024;
  std::size_t end = std::min(text.size(), kMostBytes);
  while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  const QString begin = QString::fromUtf8(text.data(), static_cast<qsizetype>(end));
  QString shown;
  shown.reserve(begin.size() + 1);
  for (const QChar each : begin) {
    if (each == u'\n' || each == QChar::LineSeparator || each == QChar::ParagraphSeparator) {
      shown += u' ';
    } else if (each == u'\t') {
      shown += u"  ";
    } else if (each.category() != QChar::Other_Control) {
      shown += each;
    }
  }
  if (end < text.size()) shown += u'…';
  return shown;
}

}  // namespace brimlo::ui
