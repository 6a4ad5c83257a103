// The driver's handler of script parse errors: each one is printed on standard error with its
// line, and the parse stops once the limit is reached.
#pragma once
#include "ecmascript/ParseErrorHandler.h"

class CConsoleErrorHandler : public EcmaScript::IParseErrorHandler {
public:
    explicit CConsoleErrorHandler(int limit) : m_nLimit(limit) {}
    // Returns true while the count of errors is still below the limit.
    bool Report(int line, const DomString& message) override;

private:
    int m_nLimit;
    int m_nCount = 0;
};
