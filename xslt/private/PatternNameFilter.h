// The name test that key indexes and xsl:number put before a pattern, so that most nodes the
// pattern cannot match never reach it.
#pragma once
#include <algorithm>
#include <cstdint>

#include "core/Array.h"
#include "core/Hash.h"
#include "dom/Name.h"
#include "dom/Node.h"
#include "xpath/Axis.h"
#include "xpath/PathExpr.h"
#include "xslt/private/Pattern.h"
#include "xslt/private/PatternStep.h"

namespace XsltPrivate {

// A quick test before the pattern: an element or attribute can match only if its local name is
// the one that the last step of some alternative names. Answers are kept per interned name,
// so a filter lives no longer than the documents it has seen.
class CPatternNameFilter {
public:
    explicit CPatternNameFilter(const CPattern* pattern) {
        for (int i = 0; i < pattern->GetCount(); ++i) {
            const CPathPattern* path = pattern->GetPath(i);
            int32_t hash = path->GetNameHash();
            if (hash < 0) m_bOpen = true;
            m_aHashes.Add(hash);
            const Xpath::CStepExpr* last = path->GetStepCount() ? path->GetStep(path->GetStepCount() - 1)->GetStepExpr() : nullptr;
            if (!last || last->GetAxis()->GetKind() == Xpath::AxisAttribute) m_bAttributes = true;
        }
    }

    // Only an alternative ending in an attribute step, or one without steps, can match an attribute.
    bool AdmitsAttributes() const { return m_bOpen || m_bAttributes; }

    // No pattern that names the local name of each of its alternatives can match a namespace node.
    bool AdmitsNamespaces() const { return m_bOpen; }

    // A name test matches elements and attributes only, so closed patterns pass no other node.
    bool AdmitsType(int type) const { return m_bOpen || type == Dom::ELEMENT_NODE || type == Dom::ATTRIBUTE_NODE; }

    bool Admits(const Dom::CNode* node) {
        if (m_bOpen) return true;
        int type = node->GetNodeType();
        if (!AdmitsType(type)) return false;
        const Dom::CName* name = node->GetName();
        SSlot& slot = m_aSlots[(reinterpret_cast<uintptr_t>(name) >> 4) % SlotCount];
        if (slot.pName != name) {
            slot.pName = name;
            auto hash = static_cast<int32_t>(Core::HashText(name->GetLocalName()));
            slot.bAdmits = std::find(m_aHashes.begin(), m_aHashes.end(), hash) != m_aHashes.end();
        }
        return slot.bAdmits;
    }

private:
    static const int SlotCount = 64;
    struct SSlot {
        const Dom::CName* pName = nullptr;
        bool bAdmits = false;
    };
    bool m_bOpen = false;
    bool m_bAttributes = false;
    TArray<int32_t> m_aHashes;
    SSlot m_aSlots[SlotCount];
};

}  // namespace XsltPrivate
