// Matching of one template rule with the name-hash pre-test.
#include "xslt/private/RuleMatcher.h"

namespace XsltPrivate {

namespace {

bool ModeAgrees(const SQName* ruleMode, const SQName* mode) {
    if (!mode) return !ruleMode;
    return ruleMode && *ruleMode == *mode;
}

}  // namespace

bool MatchRule(const CPattern* pattern, const SQName* ruleMode, bool hasPriority, double givenPriority,
               IPatternContext& context, const SQName* mode, double& priority) {
    if (!pattern || !ModeAgrees(ruleMode, mode)) return false;
    Dom::CNode* node = context.GetCurrentNode();
    if (!node) return false;
    const int32_t hash = context.GetNameHash();
    bool matched = false;
    for (int i = 0; i < pattern->GetCount(); ++i) {
        const CPathPattern* path = pattern->GetPath(i);
        const int32_t pathHash = path->GetNameHash();
        if (pathHash >= 0 && pathHash != hash) continue;
        if (!path->Match(&context, node)) continue;
        if (hasPriority) {
            priority = givenPriority;
            return true;
        }
        double candidate = path->GetDefaultPriority();
        if (!matched || candidate > priority) priority = candidate;
        matched = true;
    }
    return matched;
}

}  // namespace XsltPrivate
