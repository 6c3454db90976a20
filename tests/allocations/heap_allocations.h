// How often the present thread has asked for memory.
#pragma once

namespace korvane::test {

long heapAllocations();

} // namespace korvane::test
