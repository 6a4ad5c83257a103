// The one hash function of every table in the program: h = h*9 + unit, masked to 31 bits.
#pragma once
#include "core/DomString.h"

namespace Core {

inline unsigned int HashText(const DomChar* text, size_t length) {
    unsigned int h = 0;
    for (size_t i = 0; i < length; ++i) h = h * 9 + text[i];
    return h & 0x7FFFFFFF;
}
inline unsigned int HashText(DomStringView text) { return HashText(text.data(), text.size()); }

}  // namespace Core
