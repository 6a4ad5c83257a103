// Free lists of small memory blocks by 16-byte size class. Counted objects (values, node-set
// iterators, contexts) are made and dropped at every step of an evaluation; taking their blocks
// from a list is much cheaper than a round trip through the general allocator. The program runs
// one thread at a time. Sanitizer builds go to the general allocator so that use after free is
// still caught.
#pragma once
#include <cstddef>
#include <new>

namespace Core {

class CSmallBlocks {
public:
    static void* Allocate(size_t size) {
#ifndef KST_SANITIZE
        if (size <= kLargest) {
            SList& list = s_lists[ClassOf(size)];
            if (SBlock* block = list.pFree) {
                list.pFree = block->pNext;
                --list.nCount;
                ++s_nReused;
                return block;
            }
            // A fresh block has the size of its class, so that any size of the class can reuse it.
            return ::operator new((ClassOf(size) + 1) * kGranule);
        }
#endif
        return ::operator new(size);
    }

    static void Free(void* memory, size_t size) {
#ifndef KST_SANITIZE
        if (size <= kLargest) {
            SList& list = s_lists[ClassOf(size)];
            if (list.nCount < kMaxBlocksPerClass) {
                SBlock* block = static_cast<SBlock*>(memory);
                block->pNext = list.pFree;
                list.pFree = block;
                ++list.nCount;
                return;
            }
        }
#else
        (void)size;
#endif
        ::operator delete(memory);
    }

    // Blocks handed out again from the lists (fresh ones come from the general allocator), so
    // that tests can count every allocation.
    static long GetReuseCount() { return s_nReused; }

private:
    struct SBlock {
        SBlock* pNext;
    };
    struct SList {
        SBlock* pFree;
        int nCount;
    };
    static constexpr size_t kGranule = 16;
    static constexpr size_t kLargest = 256;
    // Bounds what a burst of short-lived objects leaves behind.
    static constexpr int kMaxBlocksPerClass = 16384;

    static size_t ClassOf(size_t size) { return (size - 1) / kGranule; }

    static inline SList s_lists[kLargest / kGranule] = {};
    static inline long s_nReused = 0;
};

}  // namespace Core
