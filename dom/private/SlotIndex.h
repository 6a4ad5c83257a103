// Where a hash lands in a table of the tree (name tables, namespace scopes). Tables double from
// a power of two, and the slot is taken from the high bits of the hash times a large odd
// constant: the h*9 hash of names that differ in trailing digits falls into narrow, crowded
// ranges, which taken directly modulo the capacity make linear probing run through long
// clusters. Hash 0 (the empty text) still lands in slot 0.
#pragma once
#include <bit>

namespace Dom {

inline int SlotIndex(unsigned int hash, int capacity) {
    int bits = std::countr_zero(static_cast<unsigned int>(capacity));
    if (bits == 0) return 0;
    return static_cast<int>((hash * 0x9E3779B1u) >> (32 - bits));
}

}  // namespace Dom
