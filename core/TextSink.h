// Where a writer puts its text when the result is wanted as a string rather than as bytes.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Core {

class ITextSink : public CRefObject {
public:
    // Receives the units as they are, without encoding.
    virtual void Write(const DomChar* units, int count) = 0;
};

}  // namespace Core
