// Regions come straight from the system (Linux: mmap, then madvise to fill the region's pages in
// one call, which the system may refuse; the pages are then filled on first touch as usual). Each
// chunk has a small header with its size, so that a chunk that moves can take its content along.
// Sanitizer builds serve nothing from regions, so that every chunk stays a checked allocation.
#include "dom/private/ChunkArena.h"

#include <sys/mman.h>

#include <algorithm>
#include <system_error>

namespace Dom {

namespace {

const size_t kRegionSize = size_t(4) << 20;
const size_t kLargestChunk = size_t(256) << 10;
const size_t kHeader = 16;

size_t RoundUp(size_t size) { return (size + 15) & ~size_t(15); }

}  // namespace

CChunkArena::~CChunkArena() {
    if (char* prepared = TakePreparedRegion()) munmap(prepared, kRegionSize);
    for (char* region : m_aRegions) munmap(region, kRegionSize);
}

void* CChunkArena::Allocate(size_t size) {
#ifdef KST_SANITIZE
    (void)size;
    return nullptr;
#else
    if (size > kLargestChunk) return nullptr;
    size_t needed = kHeader + RoundUp(size);
    if (static_cast<size_t>(m_pEnd - m_pNext) < needed && !AddRegion()) return nullptr;
    char* chunk = m_pNext + kHeader;
    *reinterpret_cast<size_t*>(m_pNext) = size;
    m_pNext += needed;
    m_pLast = chunk;
    return chunk;
#endif
}

bool CChunkArena::TryExtend(void* chunk, size_t size) {
    if (chunk != m_pLast || size > kLargestChunk) return false;
    char* end = static_cast<char*>(chunk) + RoundUp(size);
    if (end > m_pEnd) return false;
    *reinterpret_cast<size_t*>(static_cast<char*>(chunk) - kHeader) = size;
    m_pNext = end;
    return true;
}

bool CChunkArena::Owns(const void* chunk) const {
    const char* address = static_cast<const char*>(chunk);
    auto after = std::upper_bound(m_aRegions.begin(), m_aRegions.end(), address,
                                  [](const char* a, const char* region) { return a < region; });
    if (after == m_aRegions.begin()) return false;
    const char* region = *(after - 1);
    return address < region + kRegionSize;
}

size_t CChunkArena::SizeOf(const void* chunk) {
    return *reinterpret_cast<const size_t*>(static_cast<const char*>(chunk) - kHeader);
}

// A region is used from start to end soon after it is made, so its pages are filled at once,
// which costs much less than a fault for each of them.
char* CChunkArena::MapRegion() {
    void* mapped = mmap(nullptr, kRegionSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
#ifdef MADV_POPULATE_WRITE
    madvise(mapped, kRegionSize, MADV_POPULATE_WRITE);
#endif
    return static_cast<char*>(mapped);
}

// A document that has needed one region usually needs more. Where no thread can be started the
// next region is simply mapped when it is needed.
void CChunkArena::PrepareNextRegion() {
    try {
        m_oPrepared = std::async(std::launch::async, &CChunkArena::MapRegion);
    } catch (const std::system_error&) {
        m_oPrepared = {};
    }
}

char* CChunkArena::TakePreparedRegion() { return m_oPrepared.valid() ? m_oPrepared.get() : nullptr; }

bool CChunkArena::AddRegion() {
    char* region = TakePreparedRegion();
    if (!region) region = MapRegion();
    if (!region) return false;
    m_aRegions.Insert(static_cast<int>(std::lower_bound(m_aRegions.begin(), m_aRegions.end(), region) - m_aRegions.begin()),
                      region);
    m_pNext = region;
    m_pEnd = region + kRegionSize;
    PrepareNextRegion();
    return true;
}

}  // namespace Dom
