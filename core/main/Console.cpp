// Writing 16-bit text to standard error.
#include "core/main/Console.h"

#include <cstdio>

#include "core/Exception.h"

namespace Console {

void Print(DomStringView text) {
    std::string bytes = Core::ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

void Print(const DomChar* format, DomStringView argument) {
    DomString text;
    DomString copy(argument);
    Core::FormatMessage(text, format, copy.c_str());
    Print(text);
}

}  // namespace Console
