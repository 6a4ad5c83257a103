// The UTF-8 decoder merges continuation bits by OR against offsets laid out for addition; where
// bits of the lead and a continuation byte meet, one is lost. That reading is kept on purpose.
#include "core/Utf8Encoding.h"

#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Core {

namespace {

// Widens ASCII bytes to units, sixteen at a time where the machine can, and returns how many
// it took: it stops before the first block that holds a byte of 0x80 or above.
int WidenAsciiBlocks(const unsigned char* bytes, int count, DomChar* units) {
    int done = 0;
#ifdef __SSE2__
    const __m128i zero = _mm_setzero_si128();
    for (; count - done >= 16; done += 16) {
        __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + done));
        if (_mm_movemask_epi8(block)) break;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(units + done), _mm_unpacklo_epi8(block, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(units + done + 8), _mm_unpackhi_epi8(block, zero));
    }
#else
    uint64_t block;
    for (; count - done >= 8 && (std::memcpy(&block, bytes + done, 8), !(block & 0x8080808080808080ull)); done += 8) {
        for (int i = 0; i < 8; ++i) units[done + i] = bytes[done + i];
    }
#endif
    return done;
}

}  // namespace

CUtf8Encoding::CUtf8Encoding() {
    for (int b = 0; b < 256; ++b) {
        m_anLength[b] = b < 0xC0 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : b < 0xF8 ? 4 : b < 0xFC ? 5 : 6;
    }
    const unsigned int marks[7] = {0, 0x00, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};
    for (int length = 0; length < 7; ++length) {
        m_anMark[length] = marks[length];
        uint32_t offset = marks[length];
        for (int i = 1; i < length; ++i) offset = (offset + 2) << 6;
        m_anOffset[length] = offset;
    }
}

DomString CUtf8Encoding::GetName() const { return u"UTF-8"; }

int CUtf8Encoding::Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units,
                          int unitCapacity, bool& incomplete) const {
    incomplete = false;
    int pos = 0;
    int out = 0;
    while (pos < byteCount && out < unitCapacity) {
        // ASCII decodes to itself, in blocks where it can; the parser's hot path.
        if (bytes[pos] < 0x80) {
            int end = pos + (byteCount - pos < unitCapacity - out ? byteCount - pos : unitCapacity - out);
            int widened = WidenAsciiBlocks(bytes + pos, end - pos, units + out);
            pos += widened;
            out += widened;
            while (pos < end && bytes[pos] < 0x80) units[out++] = bytes[pos++];
            continue;
        }
        int length = m_anLength[bytes[pos]];
        if (length > byteCount - pos) {
            incomplete = true;
            break;
        }
        uint32_t value = bytes[pos];
        for (int i = 1; i < length; ++i) value = (value << 6) | bytes[pos + i];
        value -= m_anOffset[length];
        if (value < 0x10000) {
            units[out++] = static_cast<DomChar>(value);
        } else if (value <= 0x10FFFF) {
            if (unitCapacity - out < 2) break;
            value -= 0x10000;
            units[out++] = static_cast<DomChar>(0xD800 + (value >> 10));
            units[out++] = static_cast<DomChar>(0xDC00 + (value & 0x3FF));
        } else {
            units[out++] = 0xFFFD;
        }
        pos += length;
    }
    bytesConsumed = pos;
    return out;
}

int CUtf8Encoding::SequenceLengthOf(unsigned int value) {
    if (value < 0x80) return 1;
    if (value < 0x800) return 2;
    if (value < 0x10000) return 3;
    if (value < 0x200000) return 4;
    if (value < 0x3FFFFFF) return 5;
    if (value <= 0x7FFFFFFF) return 6;
    return 0;
}

// Reads one code point at `units`; a high surrogate directly followed by a low one joins it.
static uint32_t ReadCodePoint(const DomChar* units, int unitCount, int& used) {
    uint32_t value = units[0];
    used = 1;
    if (value >= 0xD800 && value <= 0xDBFF && unitCount > 1 && units[1] >= 0xDC00 && units[1] <= 0xDFFF) {
        value = (value + 0x3F2809u) * 0x400u + units[1];
        used = 2;
    }
    return value;
}

int CUtf8Encoding::Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity,
                          int& bytesWritten, bool& failed) const {
    failed = false;
    int in = 0;
    int out = 0;
    while (in < unitCount) {
        // Runs of ASCII units go straight through.
        if (units[in] < 0x80) {
            int end = in + (unitCount - in < byteCapacity - out ? unitCount - in : byteCapacity - out);
            while (in < end && units[in] < 0x80) bytes[out++] = static_cast<unsigned char>(units[in++]);
            if (in < end || in == unitCount) continue;
            break;
        }
        int used;
        uint32_t value = ReadCodePoint(units + in, unitCount - in, used);
        int length = SequenceLengthOf(value);
        if (length == 0) {
            failed = true;
            break;
        }
        if (length > byteCapacity - out) break;
        for (int i = length - 1; i > 0; --i) {
            bytes[out + i] = static_cast<unsigned char>(0x80 | (value & 0x3F));
            value >>= 6;
        }
        bytes[out] = static_cast<unsigned char>(m_anMark[length] | value);
        out += length;
        in += used;
    }
    bytesWritten = out;
    return in;
}

int CUtf8Encoding::GetUnencodableLength(const DomChar* units, int unitCount) const {
    int in = 0;
    while (in < unitCount) {
        int used;
        uint32_t value = ReadCodePoint(units + in, unitCount - in, used);
        in += used;
        if (value <= 0x7FFFFFFF) break;
    }
    return in;
}

const DomChar* CUtf8Encoding::GetByteOrderMark(int& unitCount) const {
    unitCount = 0;
    return nullptr;
}

}  // namespace Core
