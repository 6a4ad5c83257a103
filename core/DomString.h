// The text type of the whole program: 16-bit code units with value semantics.
// Surrogate pairs are not interpreted here. Sharing is left out: copies are plain copies,
// and short texts stay inside the object.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

using DomChar = char16_t;
using DomString = std::u16string;
using DomStringView = std::u16string_view;

namespace Core {

// Widens 8-bit text one byte to one unit; bytes of 0x80 and above are sign-extended,
// as the command line and C-level messages are carried into 16-bit text.
DomString WidenSigned(std::string_view bytes);
// Widens 8-bit text one byte to one unit without sign extension (Latin-1).
DomString WidenLatin1(std::string_view bytes);
// Converts 16-bit text to UTF-8 bytes for the console and platform calls; lone surrogates
// are written as three-byte sequences, as the UTF-8 encoder does.
std::string ToUtf8(DomStringView text);
// Plain ASCII literal to DomString, for tables and tests.
inline DomString Ascii(std::string_view text) { return WidenLatin1(text); }

}  // namespace Core
