// A byte stream over a file of the C library, opened by name with the system's flag set.
#pragma once
#include <cstdio>
#include <memory>

#include "core/DomString.h"
#include "core/Stream.h"

namespace Core {

// The one place where file names meet the platform. Linux names are bytes: the system's 16-bit
// names travel as UTF-8, and names from the platform (the current directory) come back from it.
std::string ToPlatformName(DomStringView fileName);
DomString FromPlatformName(std::string_view name);

// Opens a file for the C library, or returns null. A directory is refused as a file, and so is a
// name holding a NUL unit.
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
    // The C library's buffer for the file: readers ask for a few kilobytes at a time, and a
    // larger buffer saves a system call for each. It outlives the file it serves.
    std::unique_ptr<char[]> m_pBuffer;
};

}  // namespace Core
