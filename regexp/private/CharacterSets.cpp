// Tables built at compile time, so they are in place before any pattern runs.
#include "regexp/private/CharacterSets.h"

namespace RegExpPrivate {

namespace {

constexpr std::array<std::uint8_t, 256> MakeSets() {
    std::array<std::uint8_t, 256> sets{};
    for (int c = '0'; c <= '9'; ++c) sets[c] |= SetDigit | SetWord;
    for (int c = 'a'; c <= 'z'; ++c) sets[c] |= SetWord;
    for (int c = 'A'; c <= 'Z'; ++c) sets[c] |= SetWord;
    sets['_'] |= SetWord;
    for (int c : {9, 10, 11, 12, 13, 32, 160}) sets[c] |= SetSpace;
    return sets;
}

constexpr std::array<std::uint8_t, 256> MakeFold() {
    std::array<std::uint8_t, 256> fold{};
    for (int c = 0; c < 256; ++c) fold[c] = static_cast<std::uint8_t>(c >= 'a' && c <= 'z' ? c - 32 : c);
    return fold;
}

}  // namespace

constinit const std::array<std::uint8_t, 256> g_aCharacterSets = MakeSets();
constinit const std::array<std::uint8_t, 256> g_aFold = MakeFold();

}  // namespace RegExpPrivate
