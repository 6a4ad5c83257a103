// The one exception of the output writers: a code and two texts for its message.
#pragma once
#include "core/DomString.h"
#include "core/Exception.h"

namespace XmlWriter {

class CWriterException : public Core::IException {
public:
    enum {
        UnsupportedOutputMethod = 0,
        UnsupportedEncoding = 1,
        InvalidVersion = 2,
        InvalidEncodingName = 3,
        InvalidSurrogatePair = 4,
        UnsupportedCharacter = 5
    };

    explicit CWriterException(int code, DomString argument1 = DomString(), DomString argument2 = DomString());

    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }

private:
    int m_nCode;
    DomString m_sArgument1;
    DomString m_sArgument2;
};

}  // namespace XmlWriter
