// The per-node pattern context.
#include "xslt/private/PatternContext.h"

#include "core/Hash.h"

namespace XsltPrivate {

namespace {

// The hash of the local name; a name without prefix has it in its record already.
int32_t NameHashOf(const Dom::CNode* node) {
    if (!node || node->GetNodeType() != Dom::ELEMENT_NODE) return -1;
    const Dom::CName* name = node->GetName();
    if (name->GetLocalName().size() == name->GetQualifiedName().size()) return static_cast<int32_t>(name->GetHash());
    return static_cast<int32_t>(Core::HashText(name->GetLocalName()));
}

}  // namespace

CPatternContext::CPatternContext(IPatternHost& host, Dom::CNode* node)
    : m_host(host), m_pNode(node), m_nNameHash(NameHashOf(node)) {}

CPatternContext::~CPatternContext() = default;

Xpath::CContext* CPatternContext::GetExpressionContext() {
    if (!m_pExpressionContext) m_host.MakeExpressionContext(m_pExpressionContext);
    return m_pExpressionContext;
}

bool CPatternContext::ResolvePrefix(const DomString& prefix, DomString& uri) {
    return m_host.ResolvePrefix(prefix, uri);
}

bool CPatternContext::GetElementId(const Dom::CNode* node, DomString& id) { return m_host.GetElementId(node, id); }

bool CPatternContext::MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                               const DomString& value) {
    return m_host.MatchKey(node, uri, local, value);
}

Dom::CNode** CPatternContext::GetNodeStack(int count) {
    if (count <= InlineStack) return m_apInline;
    if (m_aStack.GetSize() < count) m_aStack.SetSize(count);
    return m_aStack.GetData();
}

}  // namespace XsltPrivate
