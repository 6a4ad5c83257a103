// The failures of result tree construction: nodes written where the result cannot take them.
// Instructions see these wrapped as fatal "Output error" by the execution context.
#pragma once
#include "core/DomString.h"
#include "core/Exception.h"

namespace XsltPrivate {

class COutputException : public Core::IException {
public:
    enum {
        MisplacedAttribute = 0,
        MisplacedComment = 1,
        MisplacedProcessingInstruction = 2,
        DefaultNamespaceNotAllowed = 3,
    };

    explicit COutputException(int code, DomStringView argument1 = {}, DomStringView argument2 = {})
        : m_nCode(code), m_sArgument1(argument1), m_sArgument2(argument2) {}

    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }

private:
    int m_nCode;
    DomString m_sArgument1;
    DomString m_sArgument2;
};

}  // namespace XsltPrivate
