// File streams: the flag table, and the single point where names become platform file names.
#include "core/FileStream.h"

#include <sys/stat.h>

namespace Core {

FILE* OpenFile(DomStringView fileName, const char* mode) {
    // Linux file names are bytes; the system's 16-bit names travel as UTF-8. A name that holds a
    // NUL unit cannot be a file name at all.
    if (fileName.empty() || fileName.find(u'\0') != DomStringView::npos) return nullptr;
    std::string name = ToUtf8(fileName);
    struct stat info;
    if (stat(name.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) return nullptr;
    return std::fopen(name.c_str(), mode);
}

void CFileStream::MakeMode(int flags, char mode[5]) {
    int n = 0;
    bool read = false;
    if (!(flags & 0x01)) {
        read = !(flags & 0x10);
        mode[n++] = read ? 'r' : 'a';
        if (read && (flags & 0x08)) mode[n++] = '+';
    } else {
        mode[n++] = (flags & 0x02) ? 'a' : 'w';
    }
    if (!read && (flags & 0x10)) mode[n++] = '+';
    // Text mode is binary mode here, so "t" is left out rather than handed to the C library.
    if (flags & 0x40) mode[n++] = 'b';
    mode[n] = '\0';
}

CFileStream::~CFileStream() {
    if (m_pFile) std::fclose(m_pFile);
}

bool CFileStream::Open(DomStringView fileName, int flags) {
    if (m_pFile) {
        std::fclose(m_pFile);
        m_pFile = nullptr;
    }
    char mode[5];
    MakeMode(flags, mode);
    m_pFile = OpenFile(fileName, mode);
    return m_pFile != nullptr;
}

int CFileStream::Read(void* buffer, int count) {
    if (!m_pFile || count <= 0) return 0;
    return static_cast<int>(std::fread(buffer, 1, static_cast<size_t>(count), m_pFile));
}

void CFileStream::Write(const void* buffer, int count) {
    if (m_pFile && count > 0) std::fwrite(buffer, 1, static_cast<size_t>(count), m_pFile);
}

void CFileStream::Seek(long offset, int origin) {
    if (!m_pFile) return;
    int whence = origin == 1 ? SEEK_CUR : origin == 2 ? SEEK_END : SEEK_SET;
    std::fseek(m_pFile, offset, whence);
}

long CFileStream::Tell() { return m_pFile ? std::ftell(m_pFile) : 0; }

}  // namespace Core
