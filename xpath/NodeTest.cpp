// Node tests. The name tests read the interned name records, so a match costs no allocation;
// a prefix is resolved only once a node of the right type (and local name) comes along.
#include "xpath/NodeTest.h"

#include <cstring>

#include "core/Hash.h"
#include "xpath/Expression.h"

namespace Xpath {

namespace {

bool IsNamedType(const Dom::CNode* node) { return NamedNodeTypes & NodeTypeBit(node->GetNodeType()); }

// The local name a name test sees: a namespace node is named by its prefix.
DomStringView NameOf(const Dom::CNode* node) {
    if (node->GetNodeType() == Dom::NAMESPACE_NODE) return static_cast<const Dom::CNamespaceNode*>(node)->m_sPrefix;
    return node->GetName()->m_sLocalName;
}

DomStringView UriOf(const Dom::CNode* node) {
    if (node->GetNodeType() == Dom::NAMESPACE_NODE) return DomStringView();
    return node->GetName()->m_sNamespaceUri;
}

// The URI of `prefix`, in a buffer reused across calls (there is one thread, and a resolver
// does not evaluate XPath), so that matching many nodes allocates nothing.
DomStringView ResolveInBuffer(CContext* context, const DomString& prefix) {
    static DomString s_uri;
    ResolvePrefix(context, prefix, s_uri);
    return s_uri;
}

}  // namespace

bool CAnyNameTest::Matches(CContext*, const Dom::CNode* node) const { return IsNamedType(node); }

bool CNamespaceTest::Matches(CContext* context, const Dom::CNode* node) const {
    if (!IsNamedType(node)) return false;
    return UriOf(node) == ResolveInBuffer(context, m_sPrefix);
}

CNameTest::CNameTest(DomString prefix, DomString localName)
    : CNodeTest(NamedNodeTypes, false),
      m_sPrefix(std::move(prefix)), m_sLocalName(std::move(localName)), m_nLocalHash(Core::HashText(m_sLocalName)) {}

// Elements and attributes are read from their records directly, since this runs for every node
// a step walks. Most candidates fail on the length of the local name; of the rest, a name
// without a prefix is its own local name, so its record's hash must be the test's.
bool CNameTest::Matches(CContext* context, const Dom::CNode* node) const {
    const Dom::CName* name;
    int type = node->GetNodeType();
    if (type == Dom::ELEMENT_NODE)
        name = static_cast<const Dom::CElement*>(node)->m_pName;
    else if (type == Dom::ATTRIBUTE_NODE)
        name = static_cast<const Dom::CAttr*>(node)->m_pName;
    else
        return type == Dom::NAMESPACE_NODE && MatchesName(context, NameOf(node), UriOf(node));
    size_t length = name->m_sLocalName.size();
    if (length != m_sLocalName.size() || (name->m_sQualifiedName.size() == length && name->m_nHash != m_nLocalHash))
        return false;
    return MatchesName(context, name->m_sLocalName, name->m_sNamespaceUri);
}

bool CNameTest::MatchesName(CContext* context, DomStringView localName, DomStringView uri) const {
    size_t length = m_sLocalName.size();
    if (localName.size() != length || std::memcmp(localName.data(), m_sLocalName.data(), length * sizeof(DomChar)))
        return false;
    if (m_sPrefix.empty()) return uri.empty();
    return uri == ResolveInBuffer(context, m_sPrefix);
}

bool CCommentTest::Matches(CContext*, const Dom::CNode* node) const {
    return node->GetNodeType() == Dom::COMMENT_NODE;
}

bool CTextTest::Matches(CContext*, const Dom::CNode* node) const {
    int type = node->GetNodeType();
    return type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE;
}

bool CProcessingInstructionTest::Matches(CContext*, const Dom::CNode* node) const {
    if (node->GetNodeType() != Dom::PROCESSING_INSTRUCTION_NODE) return false;
    return !m_bHasTarget || static_cast<const Dom::CProcessingInstruction*>(node)->GetTargetView() == m_sTarget;
}

bool CAnyNodeTest::Matches(CContext*, const Dom::CNode*) const { return true; }

}  // namespace Xpath
