// Replaces the global allocation functions of a test program to count allocations. Include it in
// exactly one file of the program. Small blocks handed out again from the free lists count too,
// so a count shows every object made, whether or not it reached the general allocator.
#pragma once
#include <cstdlib>
#include <new>

#include "core/SmallBlocks.h"

namespace AllocationCounting {
inline long g_nAllocations = 0;

inline long Count() { return g_nAllocations + Core::CSmallBlocks::GetReuseCount(); }
}  // namespace AllocationCounting

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size) {
    ++AllocationCounting::g_nAllocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
// The other replaceable forms, so that every allocation of the program pairs with free().
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size ? size : 1); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size ? size : 1); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
