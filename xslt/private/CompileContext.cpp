// Classification of stylesheet elements and the attribute readers of the compiler.
#include "xslt/private/CompileContext.h"

#include "uri/Uri.h"
#include "xpath/Converter.h"
#include "xpath/Parser.h"
#include "xpath/XpathException.h"
#include "xslt/XsltException.h"
#include "xslt/private/Avt.h"
#include "xslt/private/DiagnosticReporter.h"
#include "xslt/private/PatternParser.h"
#include "xslt/private/Locator.h"
#include "xslt/private/NamespaceContext.h"

namespace XsltPrivate {

using Xslt::CXsltException;

CCompileContext::CCompileContext(SLoadSession& session, Dom::CNode* root)
    : m_session(session),
      m_pNode(root),
      m_pDocument(root->GetOwnerDocument()),
      m_pExtensionNamespaces(new CUriSet()),
      m_pExcludedNamespaces(new CUriSet()) {
    Classify(true);
}

CCompileContext::CCompileContext(const CCompileContext& parent, Dom::CNode* node)
    : m_session(parent.m_session),
      m_pNode(node),
      m_pDocument(parent.m_pDocument),
      m_bForwards(parent.m_bForwards),
      m_bHasVersion(parent.m_bHasVersion),
      m_sVersion(parent.m_sVersion),
      m_pExtensionNamespaces(parent.m_pExtensionNamespaces),
      m_pExcludedNamespaces(parent.m_pExcludedNamespaces) {
    if (node->GetNodeType() == Dom::ELEMENT_NODE) Classify(false);
}

void CCompileContext::Classify(bool isRoot) {
    const Dom::CName* name = m_pNode->GetName();
    m_sLocalName = name->GetLocalName();
    m_sQualifiedName = name->GetQualifiedName();
    const DomString& uri = name->GetNamespaceUri();
    m_bIsXslt = uri == kXsltNamespace;
    if (isRoot || !m_bIsXslt) ReadPrefixList(u"extension-element-prefixes", m_pExtensionNamespaces);
    m_bIsExtension = !m_bIsXslt && m_pExtensionNamespaces->Contains(uri);
    m_bIsLiteral = !m_bIsXslt && !m_bIsExtension;
    if (!isRoot && !m_bIsLiteral) return;
    DomString version;
    if (GetAttribute(u"version", false, version)) {
        m_bHasVersion = true;
        m_sVersion = version;
        m_bForwards = version != u"1.0";
    } else if (isRoot && m_bIsLiteral) {
        m_bForwards = true;
    }
    ReadPrefixList(u"exclude-result-prefixes", m_pExcludedNamespaces);
}

void CCompileContext::ReadPrefixList(DomStringView name, TRefPtr<CUriSet>& set) {
    DomString text;
    if (!GetAttribute(name, false, text)) return;
    TArray<DomString> tokens;
    SplitList(text, tokens);
    TRefPtr<CUriSet> extended = new CUriSet();
    extended->m_aUris = set->m_aUris;
    CNamespaceContext* namespaces = GetNamespaces();
    for (const DomString& token : tokens) {
        DomString uri;
        DomStringView prefix = token == u"#default" ? DomStringView() : DomStringView(token);
        if (!namespaces->Lookup(prefix, uri)) Raise(CXsltException::UndefinedPrefix, token);
        extended->m_aUris.Add(uri);
    }
    set = extended;
}

void CCompileContext::SplitList(DomStringView text, TArray<DomString>& tokens) {
    size_t i = 0;
    auto isSeparator = [](DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\f'; };
    while (i < text.size()) {
        while (i < text.size() && isSeparator(text[i])) ++i;
        size_t start = i;
        while (i < text.size() && !isSeparator(text[i])) ++i;
        if (i > start) tokens.Add(DomString(text.substr(start, i - start)));
    }
}

bool CCompileContext::IsXsltElement(DomStringView localName) const {
    return m_bIsXslt && m_sLocalName == localName;
}

CNamespaceContext* CCompileContext::GetNamespaces() const {
    Dom::CNode* element = m_pNode;
    while (element && element->GetNodeType() != Dom::ELEMENT_NODE) element = element->GetParentNode();
    const void* scope = element ? static_cast<Dom::CElement*>(element)->m_pScope : nullptr;
    if (!m_session.pLastNamespaces || m_session.pLastScope != scope) {
        m_session.pLastNamespaces = new CNamespaceContext(element);
        m_session.pLastScope = scope;
    }
    return m_session.pLastNamespaces;
}

Dom::CAttr* CCompileContext::FindAttribute(DomStringView name) const {
    if (m_pNode->GetNodeType() != Dom::ELEMENT_NODE) return nullptr;
    auto* element = static_cast<Dom::CElement*>(m_pNode.Get());
    return element->GetAttributeNodeNs(m_bIsXslt ? DomStringView() : DomStringView(kXsltNamespace), name);
}

bool CCompileContext::GetAttribute(DomStringView name, bool required, DomString& value) const {
    Dom::CAttr* attribute = FindAttribute(name);
    if (attribute) {
        value.assign(attribute->GetValueView());
        return true;
    }
    if (required) Raise(CXsltException::MissingAttribute, DomString(name));
    return false;
}

DomString CCompileContext::GetString(DomStringView name, bool required, DomStringView defaultValue) const {
    DomString value;
    if (!GetAttribute(name, required, value)) value.assign(defaultValue);
    return value;
}

bool CCompileContext::GetUri(DomStringView name, bool required, DomString& uri) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    const DomString& base = m_pDocument->GetDocumentUri();
    if (base.empty()) Raise(CXsltException::CannotResolveRelativeUri, text);
    try {
        Uri::CUri baseUri;
        baseUri.Parse(base);
        uri = baseUri.Resolve(text);
    } catch (Uri::CUriException* failure) {
        DomString message;
        failure->GetMessage(message);
        delete failure;
        Raise(CXsltException::InvalidUriSyntax, text, message);
    }
    return true;
}

void CCompileContext::ResolveQName(DomStringView text, bool useDefault, SQName& qname) const {
    DomStringView prefix;
    DomStringView localName;
    SplitQName(text, prefix, localName);
    qname.sLocalName.assign(localName);
    qname.sUri.clear();
    if (prefix.empty() && !useDefault) return;
    if (!GetNamespaces()->Lookup(prefix, qname.sUri)) Raise(CXsltException::UndefinedPrefix, DomString(prefix));
}

bool CCompileContext::GetQName(DomStringView name, bool required, SQName& qname) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    ResolveQName(text, false, qname);
    return true;
}

bool CCompileContext::GetQNameList(DomStringView name, TArray<SQName>& names) const {
    DomString text;
    if (!GetAttribute(name, false, text)) return false;
    TArray<DomString> tokens;
    SplitList(text, tokens);
    for (const DomString& token : tokens) {
        SQName qname;
        ResolveQName(token, false, qname);
        names.Add(qname);
    }
    return true;
}

void CCompileContext::CompileExpression(DomStringView text, TRefPtr<Xpath::CExpression>& expression) const {
    try {
        Xpath::CParser parser;
        parser.Parse(expression, text);
    } catch (Xpath::CXpathException* failure) {
        if (m_bForwards) {
            expression = new Xpath::CFailedExpr(failure);
            return;
        }
        DomString message;
        failure->GetMessage(message);
        delete failure;
        Raise(CXsltException::InvalidExpressionSyntax, DomString(text), message);
    }
}

bool CCompileContext::GetExpression(DomStringView name, bool required, TRefPtr<Xpath::CExpression>& expression,
                                    const DomChar* defaultText) const {
    DomString text;
    if (!GetAttribute(name, required, text)) {
        if (!defaultText) return false;
        text = defaultText;
    }
    CompileExpression(text, expression);
    return true;
}

void CCompileContext::CompilePattern(DomStringView text, TRefPtr<CPattern>& pattern) const {
    try {
        CPatternParser parser;
        parser.Parse(pattern, text);
    } catch (Core::IException* failure) {
        if (m_bForwards) {
            CPattern::CreateFailed(pattern, failure);
            return;
        }
        DomString message;
        failure->GetMessage(message);
        delete failure;
        Raise(CXsltException::InvalidExpressionSyntax, DomString(text), message);
    }
}

bool CCompileContext::GetPattern(DomStringView name, bool required, TRefPtr<CPattern>& pattern) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    CompilePattern(text, pattern);
    return true;
}

bool CCompileContext::GetAvt(DomStringView name, bool required, TRefPtr<CAvt>& avt) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    CAvt::Compile(*this, text, avt);
    return true;
}

bool CCompileContext::GetEnum(DomStringView name, bool required, const SEnumEntry* table, int& value) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    for (const SEnumEntry* entry = table; entry->pKeyword; ++entry) {
        if (text == entry->pKeyword) {
            value = entry->nValue;
            return true;
        }
    }
    Raise(CXsltException::InvalidAttributeValue, DomString(name), text);
}

bool CCompileContext::GetYesNo(DomStringView name, bool required, bool& value) const {
    static const SEnumEntry s_aYesNo[] = {{u"yes", 1}, {u"no", 0}, {nullptr, 0}};
    int number;
    if (!GetEnum(name, required, s_aYesNo, number)) return false;
    value = number != 0;
    return true;
}

bool CCompileContext::GetNumber(DomStringView name, bool required, double& value) const {
    DomString text;
    if (!GetAttribute(name, required, text)) return false;
    Xpath::CNumber number = Xpath::CConverter::StringToNumber(text);
    if (number.IsNaN()) Raise(CXsltException::InvalidAttributeValue, DomString(name), text);
    value = number.GetValue();
    return true;
}

void CCompileContext::RaiseIfNotEmpty() const {
    for (Dom::CNode* child = GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        int type = child->GetNodeType();
        if (type != Dom::COMMENT_NODE && type != Dom::PROCESSING_INSTRUCTION_NODE) {
            Raise(Xslt::CXsltException::ContentMustBeEmpty);
        }
    }
}

void CCompileContext::Raise(int code, const DomString& argument1, const DomString& argument2) const {
    auto* exception = new CXsltException(code, m_session.pLocator->GetNodeLocation(m_pNode), m_sQualifiedName.empty()
                                                                                      ? m_pNode->GetNodeName()
                                                                                      : m_sQualifiedName,
                                         argument1, argument2);
    m_session.pEnvironment->GetDiagnosticReporter()->Report(CDiagnosticReporter::Fatal, exception, m_session.pLocator);
    throw exception;
}

}  // namespace XsltPrivate
