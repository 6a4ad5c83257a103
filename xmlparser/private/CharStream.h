// One level of the parser's input stack: a buffer of units with room in front for put-back
// characters, fed by a counted unit source (the document) or by an entity's replacement text.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xmlparser/ContentHandler.h"

namespace XmlParserPrivate {

// Where the document's units come from.
class IUnitSource : public CRefObject {
public:
    // Delivers up to `count` units; 0 at the end.
    virtual int Read(DomChar* units, int count) = 0;
};

class CCharStream {
public:
    enum : int { BackRoom = 32, DataRoom = 1024 };

    void OpenSource(IUnitSource* source);
    // The text must outlive the stream's use; entity texts live as long as the document type.
    void OpenText(const DomChar* text, int length);
    void Close();

    // The next unit, 0 at the end of this stream. Counts lines and columns.
    DomChar Next() {
        if (m_nPos == m_nEnd && !Refill()) return 0;
        DomChar unit = m_aBuffer[m_nPos++];
        if (unit == u'\n') {
            ++m_position.nLine;
            m_position.nColumn = 0;
        } else if (unit != 0) {
            ++m_position.nColumn;
        }
        return unit;
    }
    // Puts a unit back and takes back its count; a line feed leaves the column at 0.
    void Unread(DomChar unit) {
        if (m_nPos == 0) return;  // more than the front room holds; the scanner never does this
        m_aBuffer[--m_nPos] = unit;
        if (unit == u'\n') {
            --m_position.nLine;
        } else if (unit != 0) {
            --m_position.nColumn;
        }
    }

    // The buffered units not yet read, for scanning in blocks.
    const DomChar* Current() const { return m_aBuffer + m_nPos; }
    const DomChar* End() const { return m_aBuffer + m_nEnd; }
    // Moves over `count` buffered units that hold neither a line feed nor a 0.
    void Advance(int count) {
        m_nPos += count;
        m_position.nColumn += count;
    }
    // Moves over `count` buffered units without a 0 that hold `lines` line feeds, the last of
    // them just before `lineStart`.
    void AdvanceOverLines(int count, int lines, const DomChar* lineStart) {
        m_nPos += count;
        if (lines == 0) {
            m_position.nColumn += count;
            return;
        }
        m_position.nLine += lines;
        m_position.nColumn = static_cast<int>(m_aBuffer + m_nPos - lineStart);
    }
    bool HasBuffered() const { return m_nPos < m_nEnd; }

    int GetLine() const { return m_position.nLine; }
    int GetColumn() const { return m_position.nColumn; }
    const Sxp::SPosition* GetPositionRecord() const { return &m_position; }

private:
    bool Refill();

    TRefPtr<IUnitSource> m_pSource;
    const DomChar* m_pText = nullptr;
    int m_nTextLength = 0;
    int m_nTextPos = 0;
    DomChar m_aBuffer[BackRoom + DataRoom];
    int m_nEnd = BackRoom;
    int m_nPos = BackRoom;
    Sxp::SPosition m_position{1, 0};
};

}  // namespace XmlParserPrivate
