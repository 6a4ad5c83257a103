// File streams: the flag table, and the single point where names become platform file names.
#include "core/FileStream.h"

#include <sys/stat.h>

namespace Core {

namespace {
const size_t kFileBufferSize = 64 * 1024;
}  // namespace

std::string ToPlatformName(DomStringView fileName) { return ToUtf8(fileName); }

// Length of the well-formed UTF-8 sequence at `p`, or 0.
static int WellFormedLength(const unsigned char* p, size_t left, unsigned int& value) {
    unsigned int lead = p[0];
    int length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
    if (length == 0 || static_cast<size_t>(length) > left) return 0;
    value = length == 1 ? lead : lead & (0x3F >> (length - 1));
    for (int i = 1; i < length; ++i) {
        if ((p[i] & 0xC0) != 0x80) return 0;
        value = (value << 6) | (p[i] & 0x3F);
    }
    static const unsigned int kMinimum[5] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kMinimum[length] || value > 0x10FFFF) return 0;
    return length;
}

DomString FromPlatformName(std::string_view name) {
    // Strict UTF-8; a byte that starts no well-formed sequence stands for itself.
    DomString text;
    text.reserve(name.size());
    const unsigned char* p = reinterpret_cast<const unsigned char*>(name.data());
    size_t left = name.size();
    while (left > 0) {
        unsigned int value = 0;
        int length = WellFormedLength(p, left, value);
        if (length == 0) {
            length = 1;
            value = p[0];
        }
        if (value >= 0x10000) {
            text += static_cast<DomChar>(0xD800 + ((value - 0x10000) >> 10));
            text += static_cast<DomChar>(0xDC00 + ((value - 0x10000) & 0x3FF));
        } else {
            text += static_cast<DomChar>(value);
        }
        p += length;
        left -= static_cast<size_t>(length);
    }
    return text;
}

FILE* OpenFile(DomStringView fileName, const char* mode) {
    if (fileName.empty() || fileName.find(u'\0') != DomStringView::npos) return nullptr;
    std::string name = ToPlatformName(fileName);
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
    if (!m_pFile) return false;
    if (!m_pBuffer) m_pBuffer.reset(new char[kFileBufferSize]);
    std::setvbuf(m_pFile, m_pBuffer.get(), _IOFBF, kFileBufferSize);
    return true;
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
