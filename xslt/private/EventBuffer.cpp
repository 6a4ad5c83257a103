// Recording and replay of result tree fragments.
#include "xslt/private/EventBuffer.h"

#include <cstring>

#include "xslt/private/ResultTree.h"

namespace XsltPrivate {

CEventBuffer::~CEventBuffer() {
    for (DomChar* chunk : m_aChunks) delete[] chunk;
}

void CEventBuffer::Record(ETag tag) { WriteUnit(static_cast<DomChar>(tag)); }

void CEventBuffer::Record(ETag tag, DomStringView text) {
    WriteUnit(static_cast<DomChar>(tag));
    WriteText(text);
}

void CEventBuffer::Record(ETag tag, DomStringView text1, DomStringView text2) {
    WriteUnit(static_cast<DomChar>(tag));
    WriteText(text1);
    WriteText(text2);
}

void CEventBuffer::RecordCharacters(const DomChar* text, int length, bool disableEscaping) {
    WriteUnit(static_cast<DomChar>(Characters));
    WriteValue(disableEscaping ? 1 : 0);
    WriteValue(length);
    WriteUnits(text, length);
}

void CEventBuffer::Clear() {
    m_nChunk = m_aChunks.IsEmpty() ? -1 : 0;
    m_nUsed = m_aChunks.IsEmpty() ? ChunkUnits : 0;
    m_nLength = 0;
}

void CEventBuffer::WriteUnit(DomChar unit) {
    if (m_nUsed == ChunkUnits) NextChunk();
    m_aChunks[m_nChunk][m_nUsed++] = unit;
    ++m_nLength;
}

void CEventBuffer::WriteValue(int value) {
    unsigned int bits = static_cast<unsigned int>(value);
    WriteUnit(static_cast<DomChar>(bits & 0xFFFF));
    WriteUnit(static_cast<DomChar>(bits >> 16));
}

void CEventBuffer::WriteUnits(const DomChar* units, int count) {
    while (count > 0) {
        if (m_nUsed == ChunkUnits) NextChunk();
        int room = ChunkUnits - m_nUsed;
        int part = count < room ? count : room;
        std::memcpy(m_aChunks[m_nChunk] + m_nUsed, units, sizeof(DomChar) * part);
        m_nUsed += part;
        m_nLength += part;
        units += part;
        count -= part;
    }
}

void CEventBuffer::NextChunk() {
    ++m_nChunk;
    if (m_nChunk == m_aChunks.GetSize()) m_aChunks.Add(new DomChar[ChunkUnits]);
    m_nUsed = 0;
}

void CEventBuffer::Replay(CResultTree& target) const {
    CEventReader reader(*this);
    while (reader.Next()) {
        switch (reader.GetTag()) {
        case StartElement: target.StartElement(reader.GetText1(), reader.GetText2()); break;
        case EndElement: target.EndElement(); break;
        case StartAttribute: target.StartAttribute(reader.GetText1(), reader.GetText2()); break;
        case EndAttribute: target.EndAttribute(); break;
        case StartNamespace: target.StartNamespace(reader.GetText1()); break;
        case EndNamespace: target.EndNamespace(); break;
        case Characters: {
            DomStringView text = reader.GetText1();
            target.Characters(text.data(), static_cast<int>(text.size()), reader.GetFlag());
            break;
        }
        case StartComment: target.StartComment(); break;
        case EndComment: target.EndComment(); break;
        case ProcessingInstruction: target.ProcessingInstruction(reader.GetText1(), reader.GetText2()); break;
        case StartRecording:
        case EndRecording: break;
        }
    }
}

void CEventBuffer::GetText(DomString& text) const {
    text.clear();
    CEventReader reader(*this);
    int inside = 0;  // depth of attributes, namespaces and comments
    while (reader.Next()) {
        switch (reader.GetTag()) {
        case StartAttribute:
        case StartNamespace:
        case StartComment: ++inside; break;
        case EndAttribute:
        case EndNamespace:
        case EndComment: --inside; break;
        case Characters:
            if (inside == 0) text += reader.GetText1();
            break;
        default: break;
        }
    }
}

bool CEventReader::Next() {
    if (m_nPosition >= m_buffer.m_nLength) return false;
    m_nTag = static_cast<CEventBuffer::ETag>(ReadUnit() & 0xFF);
    m_text1 = m_text2 = DomStringView();
    m_bFlag = false;
    switch (m_nTag) {
    case CEventBuffer::StartElement:
    case CEventBuffer::StartAttribute:
    case CEventBuffer::ProcessingInstruction:
        m_text1 = ReadText(m_sScratch1);
        m_text2 = ReadText(m_sScratch2);
        break;
    case CEventBuffer::StartNamespace: m_text1 = ReadText(m_sScratch1); break;
    case CEventBuffer::Characters:
        m_bFlag = ReadValue() != 0;
        m_text1 = ReadText(m_sScratch1);
        break;
    default: break;
    }
    return true;
}

DomChar CEventReader::ReadUnit() {
    int chunk = m_nPosition / CEventBuffer::ChunkUnits;
    int offset = m_nPosition % CEventBuffer::ChunkUnits;
    ++m_nPosition;
    return m_buffer.m_aChunks[chunk][offset];
}

int CEventReader::ReadValue() {
    unsigned int low = ReadUnit();
    unsigned int high = ReadUnit();
    return static_cast<int>(low | (high << 16));
}

DomStringView CEventReader::ReadText(DomString& scratch) {
    int length = ReadValue();
    if (length == 0) return DomStringView();
    int chunk = m_nPosition / CEventBuffer::ChunkUnits;
    int offset = m_nPosition % CEventBuffer::ChunkUnits;
    if (length <= CEventBuffer::ChunkUnits - offset) {
        m_nPosition += length;
        return DomStringView(m_buffer.m_aChunks[chunk] + offset, length);
    }
    scratch.clear();
    while (length > 0) {
        chunk = m_nPosition / CEventBuffer::ChunkUnits;
        offset = m_nPosition % CEventBuffer::ChunkUnits;
        int part = CEventBuffer::ChunkUnits - offset;
        if (part > length) part = length;
        scratch.append(m_buffer.m_aChunks[chunk] + offset, part);
        m_nPosition += part;
        length -= part;
    }
    return scratch;
}

}  // namespace XsltPrivate
