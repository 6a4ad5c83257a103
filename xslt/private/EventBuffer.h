// The recording of a result tree fragment: result events in a flat list of chunks of 16-bit
// units, written by a CResultTree in buffer mode and replayed into another one wherever the
// fragment is copied, so that it gets the namespace treatment of that place.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"

namespace XsltPrivate {

class CResultTree;

// An event is one unit holding the tag, then its data: a length or flag as two units (low
// half first), a text as its length and its units, unterminated. Data may span chunks.
class CEventBuffer : public CRefObject {
public:
    enum ETag {
        StartRecording = 1,
        EndRecording = 2,
        StartElement = 3,           // name, namespace URI
        EndElement = 4,
        StartAttribute = 5,         // name, namespace URI
        EndAttribute = 6,
        StartNamespace = 7,         // prefix
        EndNamespace = 8,
        Characters = 9,             // disable-escaping flag, text
        StartComment = 10,
        EndComment = 11,
        ProcessingInstruction = 12  // target, data
    };
    static const int ChunkUnits = 4096;

    CEventBuffer() = default;
    CEventBuffer(const CEventBuffer&) = delete;
    CEventBuffer& operator=(const CEventBuffer&) = delete;
    ~CEventBuffer() override;

    void Record(ETag tag);
    void Record(ETag tag, DomStringView text);
    void Record(ETag tag, DomStringView text1, DomStringView text2);
    void RecordCharacters(const DomChar* text, int length, bool disableEscaping);
    // Forgets the recording; the chunks stay for reuse.
    void Clear();

    // Calls the operations of `target` for the recorded events. The marks of start and end of
    // recording are not passed on: the fragment lands inside whatever `target` has open.
    void Replay(CResultTree& target) const;
    // The string value of the fragment: its text outside attributes, namespaces, comments
    // and processing instructions.
    void GetText(DomString& text) const;

    // The number of units recorded.
    int GetLength() const { return m_nLength; }

private:
    friend class CEventReader;

    void WriteUnit(DomChar unit);
    void WriteValue(int value);
    void WriteUnits(const DomChar* units, int count);
    void WriteText(DomStringView text) {
        WriteValue(static_cast<int>(text.size()));
        WriteUnits(text.data(), static_cast<int>(text.size()));
    }
    void NextChunk();

    TArray<DomChar*> m_aChunks;
    int m_nChunk = -1;  // the chunk being written
    int m_nUsed = ChunkUnits;
    int m_nLength = 0;
};

// Reads a recording event by event. Texts come as views, into the chunk where they lie
// whole, or into a scratch copy of the reader where they span a border.
class CEventReader {
public:
    explicit CEventReader(const CEventBuffer& buffer) : m_buffer(buffer) {}

    // Moves to the next event; false at the end of the recorded units.
    bool Next();
    CEventBuffer::ETag GetTag() const { return m_nTag; }
    DomStringView GetText1() const { return m_text1; }
    DomStringView GetText2() const { return m_text2; }
    bool GetFlag() const { return m_bFlag; }

private:
    DomChar ReadUnit();
    int ReadValue();
    DomStringView ReadText(DomString& scratch);

    const CEventBuffer& m_buffer;
    int m_nPosition = 0;
    CEventBuffer::ETag m_nTag = CEventBuffer::StartRecording;
    DomStringView m_text1;
    DomStringView m_text2;
    bool m_bFlag = false;
    DomString m_sScratch1;
    DomString m_sScratch2;
};

}  // namespace XsltPrivate
