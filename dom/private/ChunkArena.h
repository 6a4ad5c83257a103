// Memory for the chunks of a large document. A document of many megabytes takes its node and
// text chunks from regions of a few megabytes whose pages the system fills in one go, instead of
// one page fault per four kilobytes as the document grows. Small documents (stylesheets,
// fragments) never get here and stay with the general allocator. While one region is being
// used, the next is prepared on another thread, so that filling its pages overlaps the building.
#pragma once
#include <cstddef>
#include <future>

#include "core/Array.h"

namespace Dom {

class CChunkArena {
public:
    CChunkArena() = default;
    CChunkArena(const CChunkArena&) = delete;
    CChunkArena& operator=(const CChunkArena&) = delete;
    ~CChunkArena();

    // A chunk of `size` bytes, or null when the arena does not serve it (too large, no region).
    void* Allocate(size_t size);
    // Grows the chunk in place, which works for the most recent chunk while its region has room.
    bool TryExtend(void* chunk, size_t size);
    bool Owns(const void* chunk) const;
    // The size the chunk was given.
    static size_t SizeOf(const void* chunk);

private:
    bool AddRegion();
    static char* MapRegion();
    void PrepareNextRegion();
    char* TakePreparedRegion();

    TArray<char*> m_aRegions;  // ascending by address
    char* m_pNext = nullptr;
    char* m_pEnd = nullptr;
    void* m_pLast = nullptr;
    std::future<char*> m_oPrepared;  // the next region, while it is being prepared
};

}  // namespace Dom
