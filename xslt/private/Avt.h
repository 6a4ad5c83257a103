// Attribute value templates: literal parts and XPath expressions in braces. There is no escape:
// "{{" does not stand for a brace and "}" outside an expression is literal text. An expression
// ends at the first "}" outside quotes; a text that ends before it drops the unterminated tail.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Expression.h"

namespace XsltPrivate {

class CCompileContext;

class CAvt : public CRefObject {
public:
    struct SPiece {
        DomString sText;
        bool bExpression;
    };
    // Splits the text into literal and expression pieces by the scanning rules above.
    static void Scan(DomStringView text, TArray<SPiece>& pieces);
    // Scans and compiles the expressions with the element's bindings (code 7 on failure).
    static void Compile(const CCompileContext& compile, DomStringView text, TRefPtr<CAvt>& avt);

    int GetPartCount() const { return m_asParts.GetSize(); }
    // The text of a literal part; null expression marks it.
    const DomString& GetPart(int index) const { return m_asParts[index]; }
    const Xpath::CExpression* GetExpression(int index) const { return m_aExpressions[index]; }
    // True, with the text, when the template has no expression.
    bool IsConstant(const DomString*& text) const;

private:
    TArray<DomString> m_asParts;
    TArray<TRefPtr<Xpath::CExpression>> m_aExpressions;
};

}  // namespace XsltPrivate
