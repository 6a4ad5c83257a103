// Conversions between 16-bit text and the 8-bit text of the platform.
#include "core/DomString.h"

namespace Core {

DomString WidenSigned(std::string_view bytes) {
    DomString text;
    text.reserve(bytes.size());
    for (char c : bytes) text += static_cast<DomChar>(static_cast<short>(static_cast<signed char>(c)));
    return text;
}

DomString WidenLatin1(std::string_view bytes) {
    DomString text;
    text.reserve(bytes.size());
    for (char c : bytes) text += static_cast<DomChar>(static_cast<unsigned char>(c));
    return text;
}

std::string ToUtf8(DomStringView text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        unsigned int c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        }
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

}  // namespace Core
