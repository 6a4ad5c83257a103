// Scanning and compiling attribute value templates.
#include "xslt/private/Avt.h"

#include "xslt/private/CompileContext.h"

namespace XsltPrivate {

namespace {

const DomString s_sEmpty;

// The index of the "}" closing an expression that starts at `start`, or npos.
size_t FindExpressionEnd(DomStringView text, size_t start) {
    DomChar quote = 0;
    for (size_t i = start; i < text.size(); ++i) {
        DomChar c = text[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'}') {
            return i;
        }
    }
    return DomStringView::npos;
}

}  // namespace

void CAvt::Scan(DomStringView text, TArray<SPiece>& pieces) {
    size_t position = 0;
    while (position < text.size()) {
        size_t brace = text.find(u'{', position);
        size_t literalEnd = brace == DomStringView::npos ? text.size() : brace;
        if (literalEnd > position) pieces.Add(SPiece{DomString(text.substr(position, literalEnd - position)), false});
        if (brace == DomStringView::npos) return;
        size_t end = FindExpressionEnd(text, brace + 1);
        if (end == DomStringView::npos) return;
        pieces.Add(SPiece{DomString(text.substr(brace + 1, end - brace - 1)), true});
        position = end + 1;
    }
}

void CAvt::Compile(const CCompileContext& compile, DomStringView text, TRefPtr<CAvt>& avt) {
    TArray<SPiece> pieces;
    Scan(text, pieces);
    avt = new CAvt();
    for (const SPiece& piece : pieces) {
        TRefPtr<Xpath::CExpression> expression;
        if (piece.bExpression) {
            compile.CompileExpression(piece.sText, expression);
            avt->m_asParts.Add(DomString());
        } else {
            avt->m_asParts.Add(piece.sText);
        }
        avt->m_aExpressions.Add(expression);
    }
}

bool CAvt::IsConstant(const DomString*& text) const {
    if (m_asParts.GetSize() == 0) {
        text = &s_sEmpty;
        return true;
    }
    if (m_asParts.GetSize() == 1 && !m_aExpressions[0]) {
        text = &m_asParts[0];
        return true;
    }
    return false;
}

}  // namespace XsltPrivate
