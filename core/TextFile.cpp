// Text files: a byte buffer of 0x6000 bytes feeds a unit buffer of 0x1001 units, from which lines
// and blocks are cut.
#include "core/TextFile.h"

#include <cerrno>
#include <cstring>

#include "core/FileStream.h"

namespace Core {

CTextFile::~CTextFile() {
    if (m_pFile) std::fclose(m_pFile);
    FreeBuffers();
}

bool CTextFile::CheckClosed() {
    if (!IsOpen()) return true;
    m_nError = ErrorAlreadyOpen;
    return false;
}

void CTextFile::MakeBuffers() {
    if (!m_pBytes) m_pBytes = new unsigned char[ByteBufferSize];
    if (!m_pUnits) m_pUnits = new DomChar[UnitBlock + 1];
    m_nByteFill = m_nBytePos = m_nUnitFill = m_nUnitPos = 0;
}

void CTextFile::FreeBuffers() {
    delete[] m_pBytes;
    delete[] m_pUnits;
    m_pBytes = nullptr;
    m_pUnits = nullptr;
    m_nByteFill = m_nBytePos = m_nUnitFill = m_nUnitPos = 0;
}

bool CTextFile::Open(DomStringView fileName, const char* mode, IEncoding* encoding) {
    if (!CheckClosed()) return false;
    if (fileName.find(u'\0') != DomStringView::npos) {
        m_nError = ErrorBadName;
        return false;
    }
    std::string fullMode = mode;
    if (encoding) {
        if (fullMode.find_first_of("+b") != std::string::npos) {
            m_nError = ErrorBadMode;
            return false;
        }
        fullMode += 'b';
    }
    errno = 0;
    m_pFile = OpenFile(fileName, fullMode.c_str());
    if (!m_pFile) {
        m_nError = errno ? errno : ErrorNotOpen;
        return false;
    }
    m_pEncoding = encoding;
    m_nError = 0;
    MakeBuffers();
    return true;
}

bool CTextFile::AttachByteStream(IStream* stream, IEncoding* encoding) {
    if (!CheckClosed()) return false;
    m_bExternal = true;
    m_pByteStream = stream;
    m_pEncoding = encoding;
    MakeBuffers();
    return true;
}

bool CTextFile::AttachTextStream(IStream* stream) {
    if (!CheckClosed()) return false;
    m_bExternal = true;
    m_pTextStream = stream;
    MakeBuffers();
    return true;
}

void CTextFile::Detach() {
    if (!m_bExternal) return;
    m_bExternal = false;
    m_pByteStream = nullptr;
    m_pTextStream = nullptr;
    m_pEncoding = nullptr;
    FreeBuffers();
}

bool CTextFile::Close() {
    if (m_bExternal) {
        m_nError = ErrorAttached;
        return false;
    }
    if (!m_pFile) {
        m_nError = ErrorNotOpen;
        return false;
    }
    std::fclose(m_pFile);
    m_pFile = nullptr;
    m_pEncoding = nullptr;
    FreeBuffers();
    return true;
}

int CTextFile::ReadBytes(unsigned char* buffer, int count) {
    if (m_pFile) return static_cast<int>(std::fread(buffer, 1, static_cast<size_t>(count), m_pFile));
    if (m_pByteStream) return m_pByteStream->Read(buffer, count);
    return 0;
}

// Decodes what the byte buffer holds into the unit buffer; false if nothing could be decoded.
bool CTextFile::DecodeBlock() {
    int available = m_nByteFill - m_nBytePos;
    if (available <= 0) return false;
    const unsigned char* bytes = m_pBytes + m_nBytePos;
    int produced;
    if (m_pEncoding) {
        int consumed = 0;
        bool incomplete = false;
        produced = m_pEncoding->Decode(bytes, available, consumed, m_pUnits, UnitBlock, incomplete);
        m_nBytePos += consumed;
    } else {
        // Without an encoding each byte is one unit, 0x00 to 0xFF unchanged.
        produced = available < UnitBlock ? available : UnitBlock;
        for (int i = 0; i < produced; ++i) m_pUnits[i] = bytes[i];
        m_nBytePos += produced;
    }
    m_nUnitFill = produced;
    m_nUnitPos = 0;
    return produced > 0;
}

// Makes units available; false at the end of the input, where all positions are reset to 0.
bool CTextFile::FillUnits() {
    if (m_nUnitPos < m_nUnitFill) return true;
    if (!m_pUnits) return false;
    m_nUnitFill = m_nUnitPos = 0;
    if (m_pTextStream) {
        int n = m_pTextStream->Read(m_pUnits, UnitBlock);
        m_nUnitFill = n > 0 ? n : 0;
        return m_nUnitFill > 0;
    }
    for (;;) {
        if (DecodeBlock()) return true;
        int tail = m_nByteFill - m_nBytePos;
        if (tail > 0) std::memmove(m_pBytes, m_pBytes + m_nBytePos, static_cast<size_t>(tail));
        m_nBytePos = 0;
        m_nByteFill = tail;
        int got = tail < ByteBufferSize ? ReadBytes(m_pBytes + tail, ByteBufferSize - tail) : 0;
        if (got <= 0) {
            // An unfinished sequence at the very end is dropped.
            m_nByteFill = m_nBytePos = 0;
            return false;
        }
        m_nByteFill += got;
    }
}

DomString CTextFile::ReadLine() {
    DomString line;
    while (FillUnits()) {
        const DomChar* start = m_pUnits + m_nUnitPos;
        const DomChar* end = m_pUnits + m_nUnitFill;
        const DomChar* stop = start;
        while (stop < end && *stop != u'\n') ++stop;
        bool found = stop < end;
        if (found) ++stop;
        line.append(start, stop);
        m_nUnitPos += static_cast<int>(stop - start);
        if (found) break;
    }
    return line;
}

DomString CTextFile::Read(int count) {
    DomString text;
    while (count > 0 && FillUnits()) {
        int available = m_nUnitFill - m_nUnitPos;
        int n = available < count ? available : count;
        text.append(m_pUnits + m_nUnitPos, static_cast<size_t>(n));
        m_nUnitPos += n;
        count -= n;
    }
    return text;
}

void CTextFile::WriteBytes(const unsigned char* bytes, int count) {
    if (m_pFile) {
        std::fwrite(bytes, 1, static_cast<size_t>(count), m_pFile);
    } else if (m_pByteStream) {
        m_pByteStream->Write(bytes, count);
    }
}

bool CTextFile::Write(DomStringView text) {
    if (!IsOpen() || m_pTextStream) {
        m_nError = ErrorNotOpen;
        return false;
    }
    const DomChar* units = text.data();
    int count = static_cast<int>(text.size());
    while (count > 0) {
        int used = 0;
        int written = 0;
        bool failed = false;
        if (m_pEncoding) {
            used = m_pEncoding->Encode(units, count, m_pBytes, ByteBufferSize, written, failed);
        } else {
            used = count < ByteBufferSize ? count : ByteBufferSize;
            for (int i = 0; i < used; ++i) m_pBytes[i] = static_cast<unsigned char>(units[i]);
            written = used;
        }
        WriteBytes(m_pBytes, written);
        if (used == 0 && !failed) break;
        if (failed) {
            int skip = m_pEncoding->GetUnencodableLength(units + used, count - used);
            if (skip < 1) skip = 1;
            WriteBytes(reinterpret_cast<const unsigned char*>("?"), 1);
            used += skip;
        }
        units += used;
        count -= used;
    }
    return true;
}

}  // namespace Core
