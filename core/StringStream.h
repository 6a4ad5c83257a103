// A read-only stream of 16-bit units over a text held in memory, for the parser and the script engine.
#pragma once
#include "core/DomString.h"
#include "core/Stream.h"

namespace Core {

class CStringStream : public IStream {
public:
    explicit CStringStream(DomString text) : m_sText(std::move(text)) {}

    // Counts are in 16-bit units.
    int Read(void* buffer, int count) override;
    // Writing does nothing.
    void Write(const void* buffer, int count) override;
    // Origin 1 from here, 2 from the end, anything else from the start.
    void Seek(long offset, int origin) override;
    long Tell() override { return m_nPosition; }

private:
    DomString m_sText;
    long m_nPosition = 0;
};

}  // namespace Core
