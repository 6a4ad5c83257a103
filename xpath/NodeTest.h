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

class CNodeTest : public CRefObject {
public:
    virtual int32_t GetKind() const = 0;
    virtual bool Matches(CContext* context, const Dom::CNode* node) const = 0;
    // The name for rule indexing; empty but for name tests.
    virtual void GetLocalName(DomString& name) const { name.clear(); }
};

// `*`: an element, attribute or namespace node of any name.
class CAnyNameTest : public CNodeTest {
public:
    int32_t GetKind() const override { return TestAnyName; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// `prefix:*`
class CNamespaceTest : public CNodeTest {
public:
    explicit CNamespaceTest(DomString prefix) : m_sPrefix(std::move(prefix)) {}
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
    int32_t GetKind() const override { return TestComment; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// Text nodes, CDATA sections included.
class CTextTest : public CNodeTest {
public:
    int32_t GetKind() const override { return TestText; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

// `processing-instruction()` or, with a target, `processing-instruction('target')`.
class CProcessingInstructionTest : public CNodeTest {
public:
    CProcessingInstructionTest() = default;
    explicit CProcessingInstructionTest(DomString target) : m_sTarget(std::move(target)), m_bHasTarget(true) {}
    int32_t GetKind() const override { return m_bHasTarget ? TestProcessingInstructionTarget : TestProcessingInstruction; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
    const DomString& GetTarget() const { return m_sTarget; }

private:
    DomString m_sTarget;
    bool m_bHasTarget = false;
};

class CAnyNodeTest : public CNodeTest {
public:
    int32_t GetKind() const override { return TestAnyNode; }
    bool Matches(CContext* context, const Dom::CNode* node) const override;
};

}  // namespace Xpath
