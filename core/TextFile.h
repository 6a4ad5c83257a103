// Line and block reading (and writing) of text files, either byte by byte widened to units or
// through an encoding. Used by the script import and the text-input extension.
#pragma once
#include <cstdio>

#include "core/DomString.h"
#include "core/Encoding.h"
#include "core/Stream.h"

namespace Core {

class CTextFile : public CRefObject {
public:
    enum : int {
        ErrorNotOpen = 10001,
        ErrorAlreadyOpen = 10002,
        ErrorBadName = 10003,
        ErrorBadMode = 10004,
        ErrorAttached = 10005,
    };
    enum : int { ByteBufferSize = 0x6000, UnitBlock = 0x1000 };

    CTextFile() = default;
    ~CTextFile() override;
    CTextFile(const CTextFile&) = delete;
    CTextFile& operator=(const CTextFile&) = delete;

    // Opens a file with a C mode ("r", "w", "a", ...). With an encoding the mode may hold neither
    // "+" nor "b"; the file is then read and written in binary and decoded or encoded.
    // On false the object stays closed and GetError tells why (or holds the C library's errno).
    bool Open(DomStringView fileName, const char* mode, IEncoding* encoding = nullptr);
    // Reads from a byte stream (decoded by `encoding`, or widened byte by byte when null) or from a
    // stream of 16-bit units, instead of a file. An attached stream is let go by Detach, not Close.
    bool AttachByteStream(IStream* stream, IEncoding* encoding);
    bool AttachTextStream(IStream* stream);
    void Detach();
    bool Close();
    bool IsOpen() const { return m_pFile || m_bExternal; }
    int GetError() const { return m_nError; }

    // The next line with its line feed if it had one; "" at the end.
    DomString ReadLine();
    // Up to `count` units; "" at the end.
    DomString Read(int count);
    // Writes the units: encoded, or narrowed to their low byte without an encoding. Units the
    // encoding cannot represent are written as "?".
    bool Write(DomStringView text);

private:
    bool CheckClosed();
    void MakeBuffers();
    void FreeBuffers();
    int ReadBytes(unsigned char* buffer, int count);
    bool FillUnits();
    bool DecodeBlock();
    void WriteBytes(const unsigned char* bytes, int count);

    bool m_bExternal = false;
    FILE* m_pFile = nullptr;
    TRefPtr<IStream> m_pByteStream;
    TRefPtr<IStream> m_pTextStream;
    TRefPtr<IEncoding> m_pEncoding;
    unsigned char* m_pBytes = nullptr;
    int m_nByteFill = 0;
    int m_nBytePos = 0;
    DomChar* m_pUnits = nullptr;
    int m_nUnitFill = 0;
    int m_nUnitPos = 0;
    int m_nError = 0;
};

}  // namespace Core
