// The eight node tests of a location step. Name tests resolve their prefix through the
// context when a candidate node comes along, never at parse time.
#pragma once
#include <cstdint>

#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Node.h"

namespace Xpath {

class CContext;

enum {
    TestAnyName = 0,
    TestNamespace = 1,
    TestName = 2,
    TestComment = 3,
    TestText = 4,
    TestProcessingInstruction = 5,
    TestProcessingInstructionTarget = 6,
    TestAnyNode = 7,
};

constexpr uint32_t NodeTypeBit(int type) { return uint32_t{1} << type; }
constexpr uint32_t NamedNodeTypes =
    NodeTypeBit(Dom::ELEMENT_NODE) | NodeTypeBit(Dom::ATTRIBUTE_NODE) | NodeTypeBit(Dom::NAMESPACE_NODE);

class CNodeTest : public CRefObject {
public:
    virtual int32_t GetKind() const = 0;
    virtual bool Matches(CContext* context, const Dom::CNode* node) const = 0;
    // The name for rule indexing; empty but for name tests.
    virtual void GetLocalName(DomString& name) const { name.clear(); }

    // Matches, with the node type looked up in a mask first: a walk turns away or takes most
    // nodes without a virtual call.
    bool Accepts(CContext* context, const Dom::CNode* node) const {
        if (!(m_nTypes & NodeTypeBit(node->GetNodeType()))) return false;
        return m_bTypeDecides || Matches(context, node);
    }

protected:
    // `types`: the node types the test can accept (NodeTypeBit); `typeDecides`: every node of
    // those types matches.
    CNodeTest(uint32_t types, bool typeDecides) : m_nTypes(types), m_bTypeDecides(typeDecides) {}

private:
    uint32_t m_nTypes;
    bool m_bTypeDecides;
};

// `*`: an element, attribute or namespace node of any name.
class CAnyNameTest : public CNodeTest {
public:
    CAnyNameTest() : CNodeTest(NamedNodeTypes, true) {}
    int32_t GetKind() const override { return TestAnyName; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// `prefix:*`
class CNamespaceTest : public CNodeTest {
public:
    explicit CNamespaceTest(DomString prefix) : CNodeTest(NamedNodeTypes, false), m_sPrefix(std::move(prefix)) {}
    int32_t GetKind() const override { return TestNamespace; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
    const DomString& GetPrefix() const { return m_sPrefix; }

private:
    DomString m_sPrefix;
};

// `prefix:local` or `local`; no default namespace applies.
class CNameTest : public CNodeTest {
public:
    CNameTest(DomString prefix, DomString localName);
    int32_t GetKind() const override { return TestName; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
    void GetLocalName(DomString& name) const override { name = m_sLocalName; }
    const DomString& GetPrefix() const { return m_sPrefix; }
    const DomString& GetLocalNameText() const { return m_sLocalName; }

private:
    bool MatchesName(CContext* context, DomStringView localName, DomStringView uri) const;

    DomString m_sPrefix;
    DomString m_sLocalName;
    unsigned int m_nLocalHash;  // as the name records hash their qualified names
};

class CCommentTest : public CNodeTest {
public:
    CCommentTest() : CNodeTest(NodeTypeBit(Dom::COMMENT_NODE), true) {}
    int32_t GetKind() const override { return TestComment; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// Text nodes, CDATA sections included.
class CTextTest : public CNodeTest {
public:
    CTextTest() : CNodeTest(NodeTypeBit(Dom::TEXT_NODE) | NodeTypeBit(Dom::CDATA_SECTION_NODE), true) {}
    int32_t GetKind() const override { return TestText; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// `processing-instruction()` or, with a target, `processing-instruction('target')`.
class CProcessingInstructionTest : public CNodeTest {
public:
    CProcessingInstructionTest() : CNodeTest(NodeTypeBit(Dom::PROCESSING_INSTRUCTION_NODE), true) {}
    explicit CProcessingInstructionTest(DomString target)
        : CNodeTest(NodeTypeBit(Dom::PROCESSING_INSTRUCTION_NODE), false),
          m_sTarget(std::move(target)),
          m_bHasTarget(true) {}
    int32_t GetKind() const override { return m_bHasTarget ? TestProcessingInstructionTarget : TestProcessingInstruction; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
    const DomString& GetTarget() const { return m_sTarget; }

private:
    DomString m_sTarget;
    bool m_bHasTarget = false;
};

class CAnyNodeTest : public CNodeTest {
public:
    CAnyNodeTest() : CNodeTest(~uint32_t{0}, true) {}
    int32_t GetKind() const override { return TestAnyNode; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

}  // namespace Xpath
