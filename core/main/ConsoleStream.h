// The stream through which every diagnostic and all xsl:message text of a run reach the console.
#pragma once
#include "core/Stream.h"

class CConsoleStream : public Core::IStream {
public:
    int Read(void* buffer, int count) override;
    // `count` is in 16-bit units; no line end is added.
    void Write(const void* buffer, int count) override;
    void Seek(long offset, int origin) override;
    long Tell() override;
};
