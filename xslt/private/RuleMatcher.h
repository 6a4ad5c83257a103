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
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
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
template <class TRule>
TRule* FindBestRule(const TArray<TRefPtr<TRule>>& rules, IPatternContext& context, const SQName* mode,
                    bool& ambiguous) {
    TRule* best = nullptr;
    double bestPriority = 0;
    ambiguous = false;
    for (TRule* rule : rules) {
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

}  // namespace XsltPrivate
