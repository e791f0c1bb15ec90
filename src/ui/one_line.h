#pragma once

#include <QString>
#include <string_view>

namespace brimlo::ui {

/// The beginning of `text` (UTF-8) on one line, more of it than any row can show. Line breaks and
/// tabs become spaces, other control characters are left out.
QString oneLine(std::string_view text);

}  // namespace brimlo::ui
