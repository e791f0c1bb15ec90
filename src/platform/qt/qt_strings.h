#pragma once

#include <QTranslator>

#include "platform/localized_strings.h"

namespace brimlo {

/// The string tables built into the executable: id-based Qt catalogues, the one of the user's
/// language where there is one, else the English one.
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
