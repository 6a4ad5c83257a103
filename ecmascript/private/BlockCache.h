// Keeps freed blocks of one size for reuse by the objects that the interpreter makes and drops
// at every step (number values, activation objects). The program has one thread.
#pragma once
#include <cstddef>
#include <new>

namespace EcmaScriptPrivate {

template <size_t Size>
class TBlockCache {
public:
    static void* Allocate(size_t size) {
        if (size == Size && s_pFree) {
            SBlock* block = s_pFree;
            s_pFree = block->pNext;
            --s_nCount;
            return block;
        }
        return ::operator new(size);
    }
    static void Free(void* memory, size_t size) {
        if (size == Size && s_nCount < kMaxBlocks) {
            SBlock* block = static_cast<SBlock*>(memory);
            block->pNext = s_pFree;
            s_pFree = block;
            ++s_nCount;
            return;
        }
        ::operator delete(memory);
    }

private:
    struct SBlock {
        SBlock* pNext;
    };
    static const int kMaxBlocks = 4096;
    static inline SBlock* s_pFree = nullptr;
    static inline int s_nCount = 0;
};

}  // namespace EcmaScriptPrivate
