// Receives the errors found while scanning and parsing a program.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace EcmaScript {

class IParseErrorHandler : public CRefObject {
public:
    // Returns true to go on, false when the error limit is reached.
    virtual bool Report(int line, const DomString& message) = 0;
};

}  // namespace EcmaScript
