#pragma once

namespace brimlo {

/// Gives back to the system what only the start needed: freed memory, and the resident pages of
/// code, most of which the toolkit runs once. Code that runs again is mapped from the page cache,
/// without a disk access.
void releaseStartUpMemory();

}  // namespace brimlo
