// The view of one stylesheet node while it is compiled: its classification (XSLT instruction,
// extension element or literal result element), forwards-compatible processing, the inherited
// extension and excluded namespace sets, and the readers of attributes with their error codes.
// Every compile failure is fatal: reported with the element's location, then thrown.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Document.h"
#include "dom/StripSpaceRules.h"
#include "xpath/Expression.h"
#include "xslt/Environment.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CAvt;
class CContent;
class CInstruction;
class CLocator;
class CNamespaceContext;
class CPattern;

// A set of namespace URIs (extension or excluded namespaces), shared by the contexts that
// inherit it unchanged.
class CUriSet : public CRefObject {
public:
    bool Contains(DomStringView uri) const {
        for (const DomString& item : m_aUris) {
            if (item == uri) return true;
        }
        return false;
    }
    TArray<DomString> m_aUris;
};

// What every context of one compilation shares.
struct SLoadSession {
    TRefPtr<Xslt::CEnvironment> pEnvironment;
    TRefPtr<CLocator> pLocator;
    TRefPtr<Dom::CStripSpaceRules> pCompilerRules;  // for building stylesheet documents
    TRefPtr<Dom::CStripSpaceRules> pSpaceRules;     // xsl:strip-space and xsl:preserve-space
    int nNesting = 0;                               // imports and includes being loaded
    // The namespace snapshot of the last element, reused while the scope stays the same.
    const void* pLastScope = nullptr;
    TRefPtr<CNamespaceContext> pLastNamespaces;
};

class CCompileContext : public CRefObject {
public:
    // The context of a stylesheet document's root element.
    CCompileContext(SLoadSession& session, Dom::CNode* root);
    // A child's context, inheriting from `parent`; classified if it is an element.
    CCompileContext(const CCompileContext& parent, Dom::CNode* node);

    Dom::CNode* GetNode() const { return m_pNode; }
    SLoadSession& GetSession() const { return m_session; }
    bool IsXslt() const { return m_bIsXslt; }
    bool IsExtension() const { return m_bIsExtension; }
    bool IsLiteral() const { return m_bIsLiteral; }
    bool IsForwards() const { return m_bForwards; }
    // True if the element is the XSLT element of this local name.
    bool IsXsltElement(DomStringView localName) const;
    const DomString& GetLocalName() const { return m_sLocalName; }
    const DomString& GetQualifiedName() const { return m_sQualifiedName; }
    CUriSet* GetExtensionNamespaces() const { return m_pExtensionNamespaces; }
    CUriSet* GetExcludedNamespaces() const { return m_pExcludedNamespaces; }
    CNamespaceContext* GetNamespaces() const;

    // Attribute readers. On an XSLT element attributes are looked for without a namespace.
    bool GetAttribute(DomStringView name, bool required, DomString& value) const;
    DomString GetString(DomStringView name, bool required, DomStringView defaultValue = DomStringView()) const;
    bool GetUri(DomStringView name, bool required, DomString& uri) const;
    bool GetQName(DomStringView name, bool required, SQName& qname) const;
    bool GetQNameList(DomStringView name, TArray<SQName>& names) const;
    // With a null default a missing optional attribute leaves `expression` null.
    bool GetExpression(DomStringView name, bool required, TRefPtr<Xpath::CExpression>& expression,
                       const DomChar* defaultText = nullptr) const;
    bool GetPattern(DomStringView name, bool required, TRefPtr<CPattern>& pattern) const;
    bool GetAvt(DomStringView name, bool required, TRefPtr<CAvt>& avt) const;
    struct SEnumEntry {
        const DomChar* pKeyword;  // null closes the table
        int nValue;
    };
    bool GetEnum(DomStringView name, bool required, const SEnumEntry* table, int& value) const;
    bool GetYesNo(DomStringView name, bool required, bool& value) const;
    bool GetNumber(DomStringView name, bool required, double& value) const;

    // Resolves a QName text with the element's bindings; the default namespace applies only
    // with `useDefault`. Code 9 for an unknown prefix.
    void ResolveQName(DomStringView text, bool useDefault, SQName& qname) const;
    // Compiles an XPath text; code 7 on a syntax error, or a failing expression when forwards.
    void CompileExpression(DomStringView text, TRefPtr<Xpath::CExpression>& expression) const;
    // Compiles a pattern; code 7 on a syntax error, or a failing pattern when forwards.
    void CompilePattern(DomStringView text, TRefPtr<CPattern>& pattern) const;

    // Reports a fatal compile error at this element and throws it.
    [[noreturn]] void Raise(int code, const DomString& argument1 = DomString(),
                            const DomString& argument2 = DomString()) const;

    // Code 10 (content must be empty) if this element has children other than comments and
    // processing instructions.
    void RaiseIfNotEmpty() const;

    // Compiles the children of this node as a sequence.
    void CompileSequence(CContent& content) const;
    // Compiles one child of this node into `content`: text, or an element as an instruction;
    // comments and processing instructions are skipped.
    void CompileChild(Dom::CNode* child, CContent& content) const;
    // Compiles this element as an instruction; null for dropped elements.
    void CompileInstruction(TRefPtr<CInstruction>& instruction) const;
    // Compiles this element as a literal result element, whatever its classification.
    void CompileLiteralElement(TRefPtr<CInstruction>& instruction) const;

    // Splits a whitespace-separated list at space, tab, carriage return and form feed.
    static void SplitList(DomStringView text, TArray<DomString>& tokens);

private:
    void Classify(bool isRoot);
    void ReadPrefixList(DomStringView name, TRefPtr<CUriSet>& set);
    Dom::CAttr* FindAttribute(DomStringView name) const;

    SLoadSession& m_session;
    Dom::TNodeRef m_pNode;
    Dom::CDocument* m_pDocument;
    DomString m_sLocalName;
    DomString m_sQualifiedName;
    bool m_bIsXslt = false;
    bool m_bIsExtension = false;
    bool m_bIsLiteral = false;
    bool m_bForwards = false;
    bool m_bHasVersion = false;
    DomString m_sVersion;
    TRefPtr<CUriSet> m_pExtensionNamespaces;
    TRefPtr<CUriSet> m_pExcludedNamespaces;
};

}  // namespace XsltPrivate
