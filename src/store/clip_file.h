#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/file_system.h"
#include "store/clip.h"

namespace brimlo {

/// The JSON forms of the history's two files. Compact, UTF-8, keys in the order of `Clip`'s
/// fields; read in any order, unknown keys ignored, strictly otherwise: one bad element spoils
/// the file.

template <typename T>
struct Decoded {
  std::optional<T> value;
  std::string fault;  ///< what is wrong, where there is no value
};

/// Reads an array of clips, in file order.
Decoded<std::vector<ClipPtr>> decodeClips(const FileContents& file);
void encodeClips(const ClipList& clips, ByteSink& sink);

/// Reads an array of clip ids.
Decoded<std::unordered_set<std::string>> decodeIds(const FileContents& file);
void encodeIds(const std::unordered_set<std::string>& ids, ByteSink& sink);

}  // namespace brimlo
