#pragma once

#include <QTranslator>

#include "platform/localized_strings.h"

namespace brimlo {

/// The string tables built into the executable: id-based Qt catalogues. A text that the user's
/// language lacks is taken from the English one.
class QtStrings : public LocalizedStrings {
 public:
  /// Needs the running `QCoreApplication`.
  QtStrings();

  std::string text(const char* key) const override;
  std::string textWithCount(const char* key, std::size_t count) const override;

 private:
  QTranslator english_;
  QTranslator user_;
};

}  // namespace brimlo
