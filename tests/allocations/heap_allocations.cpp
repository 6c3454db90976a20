// Replaces the allocation functions of a test program by ones that count.
#include "allocations/heap_allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace korvane::test {

long heapAllocations() {
    return allocations;
}

} // namespace korvane::test
