// Compiled XSLT patterns (match, count and from attributes) and what matching asks of the run.
//
// A CPattern is a union of CPathPattern alternatives. Each alternative is an anchor (relative,
// the root, id() or key()) followed by steps, outermost first, with gap steps for "//". Matching
// never evaluates the pattern as an expression: it tests the node against the last step and
// walks upward, backtracking over the gaps with a node stack that the context lends.
//
// Use: CPatternParser (PatternParser.h) compiles the text; CPatternContext (PatternContext.h)
// is made on the stack for the node to test; CPattern::Matches answers for count, from and key
// patterns, and MatchRule (RuleMatcher.h) adds the name-hash test and priorities for rules.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xslt/private/PatternAnchor.h"
#include "xslt/private/PatternStep.h"

namespace Xpath {
class CContext;
}

namespace XsltPrivate {

// What matching needs of the running transformation, for one node under test.
class IPatternContext : public CRefObject {
public:
    // The XPath context that node tests and predicates run in; kept alive by this context.
    virtual Xpath::CContext* GetExpressionContext() = 0;
    // The node this context was made for.
    virtual Dom::CNode* GetCurrentNode() = 0;
    virtual bool ResolvePrefix(const DomString& prefix, DomString& uri) = 0;
    // The ID value of `node`, if its document declared one of its attributes an ID.
    virtual bool GetElementId(const Dom::CNode* node, DomString& id) = 0;
    // Whether `node` has `value` among its values for the key (uri, local).
    virtual bool MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                          const DomString& value) = 0;
    // Room for at least `count` nodes, reused by every pattern tried for this node.
    virtual Dom::CNode** GetNodeStack(int count) = 0;
    // -1 for anything but an element, else the hash of the element's local name.
    virtual int32_t GetNameHash() = 0;
};

// One alternative of a pattern.
class CPathPattern : public CRefObject {
public:
    explicit CPathPattern(CPatternAnchor* anchor);
    ~CPathPattern() override;

    void AddStep(CPatternStep* step) { m_aSteps.Add(step); }
    CPatternAnchor* GetAnchor() const { return m_pAnchor; }
    int GetStepCount() const { return m_aSteps.GetSize(); }
    CPatternStep* GetStep(int index) const { return m_aSteps[index]; }

    bool Match(IPatternContext* context, Dom::CNode* node) const;
    // 0.5 for anchored or multi-step alternatives and for a step with predicates; otherwise by
    // the node test: a name 0, "prefix:*" -0.25, any other test -0.5.
    double GetDefaultPriority() const;
    // The hash of the last step's local name, or -1 when that step names no local name (or
    // there is no step). Computed once.
    int32_t GetNameHash() const;
    // Whether the answer of Match for the context's own node depends on nothing but the node's
    // type and whether it has a parent: one relative step without predicates whose test names
    // no name or target, or the root alone.
    bool DependsOnKindOnly() const {
        if (!IsAnalysed()) Analyse();
        return m_bKindOnly;
    }

private:
    // Reads the name hash, the default priority and whether the alternative is one relative
    // step, once all steps are in.
    void Analyse() const;
    bool IsAnalysed() const { return m_nNameHash != -2; }

    TRefPtr<CPatternAnchor> m_pAnchor;
    TArray<TRefPtr<CPatternStep>> m_aSteps;
    mutable int32_t m_nNameHash = -2;
    mutable double m_dDefaultPriority = 0;
    mutable bool m_bSingleRelativeStep = false;
    mutable bool m_bKindOnly = false;
};

class CPattern : public CRefObject {
public:
    // A pattern that failed to parse in forwards-compatible processing: one alternative that
    // throws a copy of `failure` when a node is first tested. Takes ownership of `failure`.
    static void CreateFailed(TRefPtr<CPattern>& pattern, Core::IException* failure);

    void AddPath(CPathPattern* path) { m_aPaths.Add(path); }
    int GetCount() const { return m_aPaths.GetSize(); }
    CPathPattern* GetPath(int index) const { return m_aPaths[index]; }
    // True at the first alternative that matches; no name-hash test.
    bool Matches(IPatternContext* context, Dom::CNode* node) const;

private:
    TArray<TRefPtr<CPathPattern>> m_aPaths;
};

}  // namespace XsltPrivate
