// The source of script text: a counted reader of 16-bit units, and the reader over a string that
// eval, new Function and hosts with text in memory use.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace EcmaScript {

class ICharacterStream : public CRefObject {
public:
    // Stores up to `maximum` units; zero or less means the end of the stream.
    virtual int Read(DomChar* buffer, int maximum) = 0;
};

class CStringCharacterStream : public ICharacterStream {
public:
    explicit CStringCharacterStream(DomString text) : m_sText(std::move(text)) {}
    int Read(DomChar* buffer, int maximum) override {
        size_t count = m_sText.size() - m_nPosition;
        if (count > static_cast<size_t>(maximum)) count = static_cast<size_t>(maximum);
        m_sText.copy(buffer, count, m_nPosition);
        m_nPosition += count;
        return static_cast<int>(count);
    }

private:
    DomString m_sText;
    size_t m_nPosition = 0;
};

}  // namespace EcmaScript
