// Interim template-rule matching, used until the pattern compiler and matcher take over: an
// alternative matches a node if the node is among what the alternative selects as an XPath
// expression from the node or one of its ancestors. Simple name and type tests are decided
// directly. This whole file goes when the real matcher is in.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/Expression.h"
#include "xslt/private/NamespaceContext.h"

namespace XsltPrivate {

class CCompileContext;
class CExecutionContext;

// The node being matched and the context that matching may evaluate in.
class CPatternMatcher {
public:
    CPatternMatcher(CExecutionContext& context, Dom::CNode* node) : m_context(context), m_pNode(node) {}
    CExecutionContext& GetContext() const { return m_context; }
    Dom::CNode* GetNode() const { return m_pNode; }

private:
    CExecutionContext& m_context;
    Dom::CNode* m_pNode;
};

class CTemplatePattern : public CRefObject {
public:
    // Code 7 for a text that does not parse.
    static void Compile(const CCompileContext& compile, DomStringView text, TRefPtr<CTemplatePattern>& pattern);

    // True if an alternative matches; `priority` is the highest default priority among the
    // matching alternatives, or with `firstOnly` that of the first one.
    bool Match(CPatternMatcher& matcher, bool firstOnly, double& priority) const;

private:
    enum EKind { Root, ElementName, AnyElement, Text, AnyNode, Comment, AnyPi, AttributeName, AnyAttribute, General };
    struct SAlternative {
        EKind nKind;
        DomString sUri;  // for names
        DomString sLocalName;
        double dPriority;
        TRefPtr<Xpath::CExpression> pExpression;  // for General
    };
    static void Classify(const CCompileContext& compile, DomStringView text, SAlternative& alternative);
    bool MatchAlternative(CPatternMatcher& matcher, const SAlternative& alternative) const;
    bool MatchGeneral(CPatternMatcher& matcher, const SAlternative& alternative) const;

    TArray<SAlternative> m_aAlternatives;
    TRefPtr<CNamespaceContext> m_pNamespaces;
};

}  // namespace XsltPrivate
