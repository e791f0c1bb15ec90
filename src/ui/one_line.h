#pragma once

#include <QString>
#include <string_view>

namespace brimlo::ui {

/// The beginning of `text` (UTF-8), as much as two lines of a narrow row can show, as one line:
/// without line breaks and without what has no look of its own.
QString oneLine(std::string_view text);

}  // namespace brimlo::ui
