// Chunks of large documents: served from regions, the next of which is prepared on another thread.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "dom/private/ChunkArena.h"

namespace {

using Dom::CChunkArena;

TEST(ChunkArena, ServesChunksAcrossManyRegionsThatKeepTheirContent) {
    CChunkArena arena;
    if (!arena.Allocate(16)) GTEST_SKIP() << "this build serves no chunks from regions";
    const size_t size = 200 << 10;  // several to a region, so regions follow one another
    std::vector<unsigned char*> chunks;
    for (int i = 0; i < 100; ++i) {
        auto* chunk = static_cast<unsigned char*>(arena.Allocate(size));
        ASSERT_NE(chunk, nullptr);
        std::memset(chunk, i, size);
        chunks.push_back(chunk);
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(arena.Owns(chunks[i]));
        EXPECT_EQ(CChunkArena::SizeOf(chunks[i]), size);
        EXPECT_EQ(chunks[i][0], i);
        EXPECT_EQ(chunks[i][size - 1], i);
    }
    int local = 0;
    EXPECT_FALSE(arena.Owns(&local));
}

TEST(ChunkArena, ExtendsOnlyItsLatestChunkAndRefusesLargeOnes) {
    CChunkArena arena;
    void* first = arena.Allocate(64);
    if (!first) GTEST_SKIP() << "this build serves no chunks from regions";
    void* second = arena.Allocate(64);
    EXPECT_FALSE(arena.TryExtend(first, 128));
    EXPECT_TRUE(arena.TryExtend(second, 4096));
    EXPECT_EQ(CChunkArena::SizeOf(second), 4096u);
    EXPECT_EQ(arena.Allocate(size_t(1) << 20), nullptr);
}

}  // namespace
