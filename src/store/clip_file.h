#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "store/clip.h"
#include "store/decoded.h"

namespace brimlo {

/// The JSON forms of the history's two files. Compact, UTF-8, keys in the order of `Clip`'s
/// fields; read in any order, unknown keys ignored, strictly otherwise: one bad element spoils
/// the file.

/// Reads an array of clips, in file order.
Decoded<std::vector<ClipPtr>> decodeClips(const FileContents& file);

/// Writes `clips`. Those from `saved` on are known to be all that the file being replaced holds, so
/// that they are copied over where possible; `clips.size()` when nothing is known of it.
void encodeClips(const ClipList& clips, std::size_t saved, ByteSink& sink);

/// Reads an array of clip ids.
Decoded<IdSet> decodeIds(const FileContents& file);
void encodeIds(const IdSet& ids, ByteSink& sink);

}  // namespace brimlo
