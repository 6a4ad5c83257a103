// The stack of input streams: the document at the bottom, one level per entity being expanded.
// Reading goes on in the level below when the top one ends; the document level is never
// popped, so positions stay meaningful at the end of input.
#pragma once
#include <memory>
#include <vector>

#include "xmlparser/private/CharStream.h"

namespace XmlParserPrivate {

// Raises a parse error with the parser's code; never returns.
class IFailure {
public:
    [[noreturn]] virtual void Raise(int code) = 0;

protected:
    ~IFailure() = default;
};

class CStreamStack {
public:
    explicit CStreamStack(IFailure* failure) : m_pFailure(failure) {}

    // The next unit of the top stream, popping ended entity levels. At the end of the document:
    // 0 if an end is allowed, otherwise "Unexpected end of document".
    DomChar NextChar() {
        CCharStream* top = m_pTop;
        if (top && top->HasBuffered() && *top->Current() != 0) return top->Next();
        return NextCharSlow();
    }
    // The next unit without taking it.
    DomChar PeekChar() {
        CCharStream* top = m_pTop;
        if (top && top->HasBuffered() && *top->Current() != 0) return *top->Current();
        DomChar unit = NextCharSlow();
        PushBack(unit);
        return unit;
    }
    void PushBack(DomChar unit) {
        if (m_pTop && unit != 0) m_pTop->Unread(unit);
    }
    void Push(IUnitSource* source);
    void Push(const DomChar* text, int length);
    void Clear();

    CCharStream* Top() const { return m_pTop; }
    int GetDepth() const { return m_nDepth; }
    void SetEofAllowed(bool allowed) { m_bEofAllowed = allowed; }
    int GetLine() const { return m_pTop ? m_pTop->GetLine() : 0; }
    int GetColumn() const { return m_pTop ? m_pTop->GetColumn() : 0; }
    // The slot stays put while levels come and go; without a level it points at 0:0.
    const Sxp::SPosition* const* GetPositionSlot() const { return &m_pTopPosition; }

private:
    DomChar NextCharSlow();
    CCharStream* PushLevel();
    void SetTop(CCharStream* top) {
        m_pTop = top;
        m_pTopPosition = top ? top->GetPositionRecord() : &NoPosition;
    }

    static constexpr Sxp::SPosition NoPosition{0, 0};

    IFailure* m_pFailure;
    // Levels are kept after a pop, so that expanding entities allocates nothing.
    std::vector<std::unique_ptr<CCharStream>> m_aStreams;
    int m_nDepth = 0;
    CCharStream* m_pTop = nullptr;
    const Sxp::SPosition* m_pTopPosition = &NoPosition;
    bool m_bEofAllowed = false;
};

}  // namespace XmlParserPrivate
