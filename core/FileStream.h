// A byte stream over a file of the C library, opened by name with the system's flag set.
#pragma once
#include <cstdio>

#include "core/DomString.h"
#include "core/Stream.h"

namespace Core {

// Opens a file for the C library, or returns null. The one place where a file name meets the
// platform: the 16-bit name is passed as UTF-8, and a directory is refused as a file.
FILE* OpenFile(DomStringView fileName, const char* mode);

class CFileStream : public IStream {
public:
    // Flag bits: 0 write, 1 append to a written file, 3 update a read file, 4 append/update, 6 binary.
    // 0x44 opens for reading ("rb"); 0x51 creates or truncates for reading and writing ("w+b").
    enum : int { ReadBinary = 0x44, CreateBinary = 0x51 };

    CFileStream() = default;
    ~CFileStream() override;
    CFileStream(const CFileStream&) = delete;
    CFileStream& operator=(const CFileStream&) = delete;

    bool Open(DomStringView fileName, int flags);
    bool IsOpen() const { return m_pFile != nullptr; }

    int Read(void* buffer, int count) override;
    void Write(const void* buffer, int count) override;
    void Seek(long offset, int origin) override;
    long Tell() override;

    // The mode text of the C library's open call for a set of flags.
    static void MakeMode(int flags, char mode[5]);

private:
    FILE* m_pFile = nullptr;
};

}  // namespace Core
