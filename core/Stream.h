// The counted stream interface: bytes for files, 16-bit units for strings and the console.
#pragma once
#include "core/RefObject.h"

namespace Core {

class IStream : public CRefObject {
public:
    // Returns the number of items read.
    virtual int Read(void* buffer, int count) = 0;
    virtual void Write(const void* buffer, int count) = 0;
    // origin 0 from the start, 1 from here, 2 from the end.
    virtual void Seek(long offset, int origin) = 0;
    virtual long Tell() = 0;
};

}  // namespace Core
