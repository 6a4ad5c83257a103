// The pattern compiler: one pass of recursive descent over the pattern text, appending nodes to a
// flat program (Program.h), then a link pass that gives every node its continuation.
#pragma once
#include "core/DomString.h"
#include "core/Exception.h"
#include "regexp/private/Program.h"
#include "regexp/private/WordBuffer.h"

#include <vector>

namespace RegExpPrivate {

class CParserException : public Core::IException {
public:
    enum ECode {
        InvalidQuantifierPrefix = 0,
        InvalidAtom = 1,
        InvalidAtomEscape = 2,
        InvalidDecimalEscape = 3,
        InvalidCharacterEscape = 4,
        InvalidCharacterClass = 5,
        MissingToken = 6,
    };
    explicit CParserException(int code, DomString argument = DomString())
        : m_nCode(code), m_sArgument(std::move(argument)) {}
    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }

private:
    int m_nCode;
    DomString m_sArgument;
};

// One item of a character class: a unit, a range, or one of the class escapes.
struct CClassItem {
    Word nKind;
    Word nFirst;
    Word nLast;
};

// Compiles `pattern` into a newly allocated program of words, owned by the caller (free it with
// std::free). Throws CParserException by pointer.
Word* Compile(const DomChar* pattern, int length, bool ignoreCase);

class CCompiler {
public:
    CCompiler(const DomChar* pattern, int length, bool ignoreCase);
    Word* Compile();

private:
    // Group nesting beyond this depth is refused, so that the descent cannot exhaust the stack.
    static constexpr int MaxDepth = 1000;

    bool AtEnd() const { return m_position >= m_length; }
    DomChar Current() const { return m_pPattern[m_position]; }
    bool At(DomChar unit) const { return !AtEnd() && Current() == unit; }
    bool AtQuantifier() const;
    [[noreturn]] void Fail(int code, const char16_t* argument = nullptr) const;

    Word NewNode(int size, Word operation);
    Word& Code(Word index) { return m_code.GetWords()[index]; }

    Word ParseAlternative();
    Word ParseSequence();
    Word ParseTerm();
    Word ParseQuantifier(Word atom, Word capturesBefore);
    Word ReadCount();
    Word ParseAtom();
    Word ParseAtomEscape();
    Word ParseAtomRun();
    Word ParseGroup();
    Word ParseCharacterEscape();
    Word ReadHexDigits(int count);
    Word ReadDecimalEscape();
    Word ParseClass();
    CClassItem ParseClassAtom();
    void AddClassItem(const CClassItem& item);
    void AddUpperCaseCounterparts();
    Word EmitClass(bool negated);
    Word EmitBitmapClass(bool negated);
    Word EmitListClass(bool negated);
    Word EmitUnits(const std::u16string& units);
    void Link(Word first);
    Word RequiredUnitAt(Word node);
    Word SkipPassThrough(Word node);

    const DomChar* m_pPattern;
    int m_length;
    int m_position = 0;
    CWordBuffer m_code;
    Word m_codeSize = 0;
    Word m_captureCount = 0;
    Word m_maxBackReference = 0;
    bool m_ignoreCase;
    int m_nDepth = 0;
    // The items of the class being parsed, with the lowest and highest unit seen.
    std::vector<CClassItem> m_aClassItems;
    Word m_nClassLow = 0;
    Word m_nClassHigh = 0;
};

}  // namespace RegExpPrivate
