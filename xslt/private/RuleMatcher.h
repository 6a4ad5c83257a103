// Template-rule selection: whether one rule matches a node in a mode and with which priority,
// and the best of a module's rules.
//
// Use from a template class with `bool MatchRule(IPatternContext&, const SQName* mode,
// double& priority) const`, implemented by calling XsltPrivate::MatchRule below with the
// template's pattern, mode and priority attribute:
//     CPatternContext context(host, node);
//     bool ambiguous;
//     CTemplate* rule = FindBestRule(m_aTemplates, context, mode, ambiguous);
//     if (ambiguous) ... report recoverable code 23; if (!rule) ... ask the imports.
// With many rules, a TRuleIndex (which also needs `const CPattern* GetPattern() const` and
// `const SQName* GetMode() const`) narrows the rules to those that can match the node, and
// FindBestRule runs over its candidates instead.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "xslt/private/EntryIndex.h"
#include "xslt/private/Pattern.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

// A rule without a pattern never matches. `mode` null is the default mode, which needs a rule
// without a mode; otherwise the rule's mode must have the same URI and local name. Alternatives
// whose name hash differs from the context's are skipped, so a rule for a named attribute
// (`@id`) is never selected while `@*` is. With a priority attribute the first matching
// alternative decides and `priority` is that attribute's value; otherwise `priority` is the
// highest default priority of the matching alternatives.
bool MatchRule(const CPattern* pattern, const SQName* ruleMode, bool hasPriority, double givenPriority,
               IPatternContext& context, const SQName* mode, double& priority);

// The rule of highest priority among `rules` in stored order, the last of equals; null if
// none matches. `ambiguous` is true when the winning priority was reached more than once.
template <class TRules>
auto FindBestRule(const TRules& rules, IPatternContext& context, const SQName* mode, bool& ambiguous) {
    decltype(&*rules[0]) best = nullptr;
    double bestPriority = 0;
    ambiguous = false;
    for (const auto& rule : rules) {
        double priority;
        if (!rule->MatchRule(context, mode, priority)) continue;
        if (!best || priority > bestPriority) {
            best = rule;
            bestPriority = priority;
            ambiguous = false;
        } else if (priority == bestPriority) {
            best = rule;
            ambiguous = true;
        }
    }
    return best;
}

// The rules of a list that can match a node, by mode and by the node's name hash, each list in
// stored order. A rule is a candidate for an element whose local name hashes to h when one of
// its alternatives has name hash h or none; for any other node only through an alternative
// without a name hash. Rules without a pattern never match and are left out. Every rule left
// out would have been refused by MatchRule before any test of the node, so selecting from the
// candidates gives the same rule, priority and ambiguity as selecting from the whole list.
template <class TRule>
class TRuleIndex {
public:
    using CRules = TArray<TRule*>;

    bool IsBuilt() const { return m_bBuilt; }
    void Build(const TArray<TRefPtr<TRule>>& rules) {
        for (TRule* rule : rules) {
            if (rule->GetPattern()) AddRule(rule);
        }
        for (SMode& mode : m_aModes) {
            mode.anyName.Finish();
            for (int i = 0; i < mode.aByHash.GetSize(); ++i) {
                mode.aByHash[i].candidates.Finish();
                mode.index.Add(static_cast<unsigned int>(mode.aByHash[i].nHash), i);
            }
        }
        m_bBuilt = true;
    }

    // The candidates for `mode` (null for the default mode) and a node of name hash `hash`
    // (-1 for a node that is not an element).
    const CRules& Find(const SQName* mode, int32_t hash) const { return FindCandidates(mode, hash).aRules; }

    // The best rule for the context's node, as FindBestRule over all rules would choose it.
    // When every candidate matches by the kind of node alone, the choice is remembered for
    // that kind.
    TRule* Select(IPatternContext& context, const SQName* mode, bool& ambiguous) const {
        const SCandidates& candidates = FindCandidates(mode, context.GetNameHash());
        ambiguous = false;
        if (candidates.aRules.IsEmpty()) return nullptr;
        Dom::CNode* node = context.GetCurrentNode();
        int kind = node ? KindOf(node) : -1;
        if (!candidates.bByKindOnly || kind < 0) return FindBestRule(candidates.aRules, context, mode, ambiguous);
        SChoice& choice = candidates.aChoices[kind];
        if (!choice.bKnown) {
            choice.pRule = FindBestRule(candidates.aRules, context, mode, choice.bAmbiguous);
            choice.bKnown = true;
        }
        ambiguous = choice.bAmbiguous;
        return choice.pRule;
    }

private:
    static const int KindCount = 32;  // node types below 16, with a parent or without
    struct SChoice {
        bool bKnown = false;
        bool bAmbiguous = false;
        TRule* pRule = nullptr;
    };
    struct SCandidates {
        CRules aRules;  // in stored order
        bool bByKindOnly = false;
        mutable SChoice aChoices[KindCount];

        void Finish() {
            bByKindOnly = true;
            for (TRule* rule : aRules) {
                const CPattern* pattern = rule->GetPattern();
                for (int i = 0; i < pattern->GetCount(); ++i) {
                    if (!pattern->GetPath(i)->DependsOnKindOnly()) bByKindOnly = false;
                }
            }
        }
    };
    struct SByHash {
        int32_t nHash;
        SCandidates candidates;  // with those for any name
    };
    struct SMode {
        const SQName* pMode;
        SCandidates anyName;
        TArray<SByHash> aByHash;
        CEntryIndex index;  // hash -> entry of aByHash
    };

    static int KindOf(const Dom::CNode* node) {
        int type = node->GetNodeType();
        if (type < 0 || type >= KindCount / 2) return -1;
        return type * 2 + (node->GetParentNode() ? 1 : 0);
    }

    static bool SameMode(const SQName* a, const SQName* b) { return a == b || (a && b && *a == *b); }

    const SCandidates& FindCandidates(const SQName* mode, int32_t hash) const {
        static const SCandidates s_none;
        const SMode* found = nullptr;
        for (int i = 0; i < m_aModes.GetSize() && !found; ++i) {
            if (SameMode(m_aModes[i].pMode, mode)) found = &m_aModes[i];
        }
        if (!found) return s_none;
        if (hash >= 0) {
            int entry = found->index.FindLast(static_cast<unsigned int>(hash), [](int) { return true; });
            if (entry >= 0) return found->aByHash[entry].candidates;
        }
        return found->anyName;
    }

    // Rules come in stored order, so appending keeps every list in stored order.
    void AddRule(TRule* rule) {
        SMode& mode = ModeOf(rule->GetMode());
        const CPattern* pattern = rule->GetPattern();
        bool anyName = false;
        for (int i = 0; i < pattern->GetCount() && !anyName; ++i) anyName = pattern->GetPath(i)->GetNameHash() < 0;
        if (anyName) {
            mode.anyName.aRules.Add(rule);
            for (SByHash& entry : mode.aByHash) entry.candidates.aRules.Add(rule);
            return;
        }
        for (int i = 0; i < pattern->GetCount(); ++i) {
            CRules& rules = ByHash(mode, pattern->GetPath(i)->GetNameHash()).candidates.aRules;
            if (rules.IsEmpty() || rules.Last() != rule) rules.Add(rule);
        }
    }

    SMode& ModeOf(const SQName* mode) {
        for (SMode& entry : m_aModes) {
            if (SameMode(entry.pMode, mode)) return entry;
        }
        m_aModes.Add(SMode{mode, SCandidates(), TArray<SByHash>(), CEntryIndex()});
        return m_aModes.Last();
    }

    // A new hash starts with the rules for any name seen so far.
    static SByHash& ByHash(SMode& mode, int32_t hash) {
        for (SByHash& entry : mode.aByHash) {
            if (entry.nHash == hash) return entry;
        }
        SByHash entry{hash, SCandidates()};
        entry.candidates.aRules = mode.anyName.aRules;
        mode.aByHash.Add(std::move(entry));
        return mode.aByHash.Last();
    }

    TArray<SMode> m_aModes;
    bool m_bBuilt = false;
};

}  // namespace XsltPrivate
