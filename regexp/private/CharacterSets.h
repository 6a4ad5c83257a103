// The character sets of the matcher and the ASCII case-folding table. They cover units below
// 256: a unit of 256 or more is no digit, word unit or white space, and folds to itself.
#pragma once
#include <array>
#include <cstdint>

namespace RegExpPrivate {

enum ECharacterSet : std::uint8_t { SetDigit = 1, SetWord = 2, SetSpace = 4 };

extern const std::array<std::uint8_t, 256> g_aCharacterSets;
extern const std::array<std::uint8_t, 256> g_aFold;

inline bool InSet(std::uint32_t unit, std::uint8_t set) { return unit < 256 && (g_aCharacterSets[unit] & set); }
inline std::uint32_t Fold(std::uint32_t unit) { return unit < 256 ? g_aFold[unit] : unit; }
inline bool IsLineTerminator(std::uint32_t unit) {
    return unit == 10 || unit == 13 || unit == 0x2028 || unit == 0x2029;
}

}  // namespace RegExpPrivate
