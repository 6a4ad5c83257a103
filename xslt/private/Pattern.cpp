// Matching of path patterns from the node upward, their default priorities and name hashes,
// and the anchors.
#include "xslt/private/Pattern.h"

#include "core/Hash.h"
#include "xpath/NodeTest.h"
#include "xpath/PathExpr.h"
#include "xpath/XpathException.h"
#include "xslt/private/PatternAnchor.h"
#include "xslt/private/PatternException.h"
#include "xslt/private/PatternStep.h"

namespace XsltPrivate {

CPathPattern::CPathPattern(CPatternAnchor* anchor) : m_pAnchor(anchor) {}

CPathPattern::~CPathPattern() = default;

// Steps are taken from the innermost. A matched step moves to the parent; a gap records in
// the stack the next ancestor to retry from, and a failure resumes at the nearest gap above
// it. When that gap has run out of ancestors the answer is no: the steps below it matched
// as near as they could, and matching them further up would leave only fewer ancestors to
// the steps above, so retrying them could not help and would cost time exponential in the
// number of gaps on deep documents.
bool CPathPattern::Match(IPatternContext* context, Dom::CNode* node) const {
    if (!IsAnalysed()) Analyse();
    // The relative anchor takes any node, so one step needs only the node and a parent.
    if (m_bSingleRelativeStep) return m_aSteps[0]->Matches(context, node) && node->GetParentNode();
    const int count = m_aSteps.GetSize();
    Dom::CNode** stack = count ? context->GetNodeStack(count) : nullptr;
    Dom::CNode* current = node;
    int i = count;
    for (;;) {
        bool failed = false;
        while (--i >= 0) {
            const CPatternStep* step = m_aSteps[i];
            if (step->IsGap()) {
                stack[i] = current->GetParentNode();
                continue;
            }
            if (!step->Matches(context, current)) {
                failed = true;
                break;
            }
            current = current->GetParentNode();
            if (!current) return false;
            stack[i] = nullptr;
        }
        if (!failed && m_pAnchor->Matches(context, current)) return true;
        do {
            if (++i >= count) return false;
        } while (!m_aSteps[i]->IsGap());
        if (!stack[i]) return false;
        current = stack[i];
        stack[i] = current->GetParentNode();
    }
}

double CPathPattern::GetDefaultPriority() const {
    if (!IsAnalysed()) Analyse();
    return m_dDefaultPriority;
}

int32_t CPathPattern::GetNameHash() const {
    if (!IsAnalysed()) Analyse();
    return m_nNameHash;
}

namespace {

double DefaultPriorityOf(const CPatternAnchor* anchor, const TArray<TRefPtr<CPatternStep>>& steps) {
    if (anchor->GetKind() != CPatternAnchor::Relative || steps.GetSize() != 1) return 0.5;
    const Xpath::CStepExpr* step = steps[0]->GetStepExpr();
    if (!step) return 0.5;
    if (!step->GetPredicates().IsEmpty()) return 0.5;
    switch (step->GetTest()->GetKind()) {
        case Xpath::TestName:
        case Xpath::TestProcessingInstructionTarget: return 0;
        case Xpath::TestNamespace: return -0.25;
        default: return -0.5;
    }
}

int32_t NameHashOf(const TArray<TRefPtr<CPatternStep>>& steps) {
    const Xpath::CStepExpr* step = steps.IsEmpty() ? nullptr : steps.Last()->GetStepExpr();
    if (!step) return -1;
    DomString name;
    step->GetTest()->GetLocalName(name);
    return name.empty() ? -1 : static_cast<int32_t>(Core::HashText(name));
}

bool TestsKindOnly(const CPatternStep* step) {
    const Xpath::CStepExpr* expression = step->GetStepExpr();
    if (!expression || !expression->GetPredicates().IsEmpty()) return false;
    switch (expression->GetTest()->GetKind()) {
        case Xpath::TestAnyName:
        case Xpath::TestComment:
        case Xpath::TestText:
        case Xpath::TestProcessingInstruction:
        case Xpath::TestAnyNode: return true;
        default: return false;
    }
}

}  // namespace

void CPathPattern::Analyse() const {
    m_dDefaultPriority = DefaultPriorityOf(m_pAnchor, m_aSteps);
    m_bSingleRelativeStep =
        m_pAnchor->GetKind() == CPatternAnchor::Relative && m_aSteps.GetSize() == 1 && !m_aSteps[0]->IsGap();
    m_bKindOnly = (m_bSingleRelativeStep && TestsKindOnly(m_aSteps[0])) ||
                  (m_pAnchor->GetKind() == CPatternAnchor::Root && m_aSteps.IsEmpty());
    m_nNameHash = NameHashOf(m_aSteps);
}

void CPattern::CreateFailed(TRefPtr<CPattern>& pattern, Core::IException* failure) {
    pattern = new CPattern();
    pattern->AddPath(new CPathPattern(new CFailedAnchor(failure)));
}

bool CPattern::Matches(IPatternContext* context, Dom::CNode* node) const {
    if (!node) return false;
    for (const TRefPtr<CPathPattern>& path : m_aPaths) {
        if (path->Match(context, node)) return true;
    }
    return false;
}

// A tree root of the same document as the current node: the document node, or the root of a
// fragment of it.
bool CRootAnchor::Matches(IPatternContext* context, Dom::CNode* node) const {
    int type = node->GetNodeType();
    if (type != Dom::DOCUMENT_NODE && type != Dom::DOCUMENT_FRAGMENT_NODE) return false;
    Dom::CNode* current = context->GetCurrentNode();
    return current && !node->GetParentNode() && node->GetOwnerDocument() == current->GetOwnerDocument();
}

bool CIdAnchor::Matches(IPatternContext* context, Dom::CNode* node) const {
    DomString id;
    return context->GetElementId(node, id) && id == m_sLiteral;
}

bool CKeyAnchor::Matches(IPatternContext* context, Dom::CNode* node) const {
    DomString uri;
    if (!m_sPrefix.empty() && !context->ResolvePrefix(m_sPrefix, uri))
        throw new CPatternException(CPatternException::InvalidPrefix, m_sPrefix);
    return context->MatchKey(node, uri, m_sLocalName, m_sLiteral);
}

CFailedAnchor::~CFailedAnchor() { delete m_pFailure; }

bool CFailedAnchor::Matches(IPatternContext*, Dom::CNode*) const {
    if (auto* pattern = dynamic_cast<const CPatternException*>(m_pFailure)) throw new CPatternException(*pattern);
    if (auto* xpath = dynamic_cast<const Xpath::CXpathException*>(m_pFailure))
        throw new Xpath::CXpathException(*xpath);
    throw new CPatternException(CPatternException::InvalidPatternSyntax);
}

}  // namespace XsltPrivate
