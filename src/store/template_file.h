#pragma once

#include <vector>

#include "platform/file_system.h"
#include "store/decoded.h"
#include "store/template.h"

namespace brimlo {

/// The JSON form of the templates' file: a compact array of objects, keys in the order of
/// `Template`'s fields; all four are required, in any order, and unknown ones are ignored.

/// Reads an array of templates, in file order.
Decoded<std::vector<Template>> decodeTemplates(const FileContents& file);
void encodeTemplates(const std::vector<Template>& templates, ByteSink& sink);

}  // namespace brimlo
