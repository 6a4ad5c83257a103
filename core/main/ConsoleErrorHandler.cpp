// Parse errors of scripts on standard error, as UTF-8.
#include "core/main/ConsoleErrorHandler.h"

#include <cstdio>

bool CConsoleErrorHandler::Report(int line, const DomString& message) {
    std::fprintf(stderr, "Parse error at line %d: %s\n", line, Core::ToUtf8(message).c_str());
    ++m_nCount;
    return m_nCount < m_nLimit;
}
