#pragma once

namespace brimlo {

/// Gives the system back what only the start needed: freed memory, and the pages of code, most of
/// which the toolkit runs once. Code that is run again comes back from the page cache, without
/// the disk.
void releaseStartUpMemory();

}  // namespace brimlo
