// Tokens of an XPath expression and the scanner that delivers them. The scanner decides
// between operator and name readings of `*` and of words from the kind of the previous token.
#pragma once
#include <cstdint>

#include "core/DomString.h"
#include "xpath/Number.h"

namespace Xpath {

enum CTokenKind : int32_t {
    TokenNone = 0,
    TokenEnd = 1,
    TokenLeftParenthesis = 2,
    TokenRightParenthesis = 3,
    TokenLeftBracket = 4,
    TokenRightBracket = 5,
    TokenCurrentNode = 6,
    TokenParentNode = 7,
    TokenAt = 8,
    TokenComma = 9,
    TokenDoubleColon = 10,
    TokenNameTest = 11,
    TokenNodeType = 12,
    TokenOperatorName = 13,
    TokenMultiply = 14,
    TokenSlash = 15,
    TokenDoubleSlash = 16,
    TokenUnion = 17,
    TokenPlus = 18,
    TokenMinus = 19,
    TokenEqual = 20,
    TokenNotEqual = 21,
    TokenLess = 22,
    TokenLessOrEqual = 23,
    TokenGreater = 24,
    TokenGreaterOrEqual = 25,
    TokenFunctionName = 26,
    TokenAxisName = 27,
    TokenLiteral = 28,
    TokenNumber = 29,
    TokenVariableReference = 30,
};

// Selectors of the operator-name table.
enum { OperatorAnd = 0, OperatorOr = 1, OperatorMod = 2, OperatorDiv = 3 };
// Selectors of the node-type table.
enum { NodeTypeComment = 0, NodeTypeText = 1, NodeTypeProcessingInstruction = 2, NodeTypeNode = 3 };
// Selectors of the axis-name table (not the axis kinds of CAxis).
enum {
    AxisNameAncestor = 0,
    AxisNameAncestorOrSelf,
    AxisNameAttribute,
    AxisNameChild,
    AxisNameDescendant,
    AxisNameDescendantOrSelf,
    AxisNameFollowing,
    AxisNameFollowingSibling,
    AxisNameNamespace,
    AxisNameParent,
    AxisNamePreceding,
    AxisNamePrecedingSibling,
    AxisNameSelf,
};

class CToken {
public:
    int32_t m_nKind = TokenNone;
    // Index of the word in its table for operator names, node types and axis names.
    int32_t m_nSelector = 0;
    CNumber m_number;
    // Literals without their quotes, names, variable names without the dollar sign.
    DomString m_sText;
};

class CScanner {
public:
    // Starts over on `source`, as if no token had been delivered.
    void Reset(DomStringView source);
    // Delivers the next token; throws CXpathException on a malformed one.
    void Next(CToken& token);

    static bool IsNameStart(DomChar c);
    static bool IsNameChar(DomChar c);
    static bool IsWhitespace(DomChar c);

private:
    DomChar GetChar();
    void UngetChar(DomChar c);
    void SkipWhitespace();
    void CollectName();
    bool OperatorExpected() const;
    void Deliver(CToken& token, int32_t kind);
    void ScanLiteral(CToken& token, DomChar quote);
    void ScanVariable(CToken& token);
    void ScanNumber(CToken& token, size_t start);
    void ScanName(CToken& token, size_t start);
    bool ScanOperatorName(CToken& token);

    DomString m_sSource;
    size_t m_nLength = 0;
    size_t m_nPosition = 0;
    int32_t m_nPrevious = TokenNone;
};

// Index of `word` in a null-terminated table of words, or -1.
int FindWord(const DomChar* const* table, DomStringView word);
extern const DomChar* const g_apOperatorNames[];
extern const DomChar* const g_apNodeTypes[];
extern const DomChar* const g_apAxisNames[];

}  // namespace Xpath
