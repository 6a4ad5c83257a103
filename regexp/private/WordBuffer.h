// A growable array of 32-bit words for the compiled program and the backtrack stack. It grows
// in whole steps of 4096 words, so deep backtracking costs few reallocations.
#pragma once
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace RegExpPrivate {

class CWordBuffer {
public:
    static constexpr std::int64_t Step = 4096;
    // Indexes into the buffer are stored in words of the buffer itself, hence the signed 32-bit bound.
    static constexpr std::int64_t Limit = 0x7FFFFFFF;

    CWordBuffer() = default;
    CWordBuffer(const CWordBuffer&) = delete;
    CWordBuffer& operator=(const CWordBuffer&) = delete;
    ~CWordBuffer() { std::free(m_pWords); }

    std::uint32_t* GetWords() { return m_pWords; }
    std::int64_t GetCapacity() const { return m_nCapacity; }

    // Makes room for `needed` words, rounded up to a multiple of the step. False when memory
    // is exhausted or the size would pass the index bound; the buffer is then unchanged.
    bool Reserve(std::int64_t needed) {
        if (needed <= m_nCapacity) return true;
        std::int64_t capacity = (needed + Step - 1) / Step * Step;
        if (capacity > Limit) return false;
        void* words = std::realloc(m_pWords, static_cast<size_t>(capacity) * sizeof(std::uint32_t));
        if (!words) return false;
        m_pWords = static_cast<std::uint32_t*>(words);
        m_nCapacity = capacity;
        return true;
    }

    // Hands the words over to the caller as an exact-size copy of the first `size` words.
    std::uint32_t* CopyOut(std::int64_t size) const {
        auto* copy = static_cast<std::uint32_t*>(std::malloc(static_cast<size_t>(size ? size : 1) * sizeof(std::uint32_t)));
        if (copy && size) std::memcpy(copy, m_pWords, static_cast<size_t>(size) * sizeof(std::uint32_t));
        return copy;
    }

private:
    std::uint32_t* m_pWords = nullptr;
    std::int64_t m_nCapacity = 0;
};

}  // namespace RegExpPrivate
