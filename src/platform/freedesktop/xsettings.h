#pragma once

#include <string>
#include <string_view>

namespace brimlo {

/// The text called `name` in `settings`, which is the value of a settings manager's property
/// (XSETTINGS); empty where there is no such text, or `settings` is malformed.
std::string xsettingsText(std::string_view settings, std::string_view name);

}  // namespace brimlo
