#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "store/clip.h"
#include "store/decoded.h"

namespace brimlo {

/// The JSON forms of the history's two files: compact, UTF-8, keys in the order of `Clip`'s fields.
/// They are read with keys in any order and unknown keys ignored; anything else that is wrong makes
/// the whole file damaged.

/// Reads an array of clips, in file order.
Decoded<std::vector<ClipPtr>> decodeClips(const FileContents& file);

/// Writes `clips`. The file being replaced is known to hold exactly those from index `saved` on, so
/// its bytes are copied where possible; `clips.size()` when its content is not known.
void encodeClips(const ClipList& clips, std::size_t saved, ByteSink& sink);

/// Reads an array of clip ids.
Decoded<IdSet> decodeIds(const FileContents& file);
void encodeIds(const IdSet& ids, ByteSink& sink);

}  // namespace brimlo
