// A result tree fragment as an XPath value (type code 100): the recorded events of the content
// of a variable or parameter. Copying it replays the recording; as a string it is its text.
#pragma once
#include "xpath/Value.h"
#include "xslt/private/EventBuffer.h"

namespace XsltPrivate {

class CFragmentValue : public Xpath::CValue {
public:
    enum { TypeResultTreeFragment = 100 };

    explicit CFragmentValue(CEventBuffer* buffer) : m_pBuffer(buffer) {}

    int32_t GetType() const override { return TypeResultTreeFragment; }
    // A fragment always holds its root, so it converts to true.
    bool GetBoolean() const override { return true; }
    Xpath::CNumber GetNumber() const override;
    DomString GetString() const override;

    CEventBuffer* GetBuffer() const { return m_pBuffer; }

private:
    TRefPtr<CEventBuffer> m_pBuffer;
};

}  // namespace XsltPrivate
