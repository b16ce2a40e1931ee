#pragma once

namespace ostrel {

// Hands back to the system what a start or a window needed and the hours after do not: free blocks
// of the heap, and the pages of programs, libraries and fonts that are as they are on the disk.
// What is needed again comes back by itself, mostly without the disk.
void releaseUnusedMemory();

}  // namespace ostrel
