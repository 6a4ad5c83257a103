// Console output of 16-bit units; reading and seeking do nothing.
#include "core/main/ConsoleStream.h"

#include "core/main/Console.h"

int CConsoleStream::Read(void*, int) { return 0; }

void CConsoleStream::Write(const void* buffer, int count) {
    if (count > 0) Console::Print(DomStringView(static_cast<const DomChar*>(buffer), static_cast<size_t>(count)));
}

void CConsoleStream::Seek(long, int) {}

long CConsoleStream::Tell() { return 0; }
