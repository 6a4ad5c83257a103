// Interim template-rule matching by evaluation from the ancestors; see the header.
#include "xslt/private/InterimPatternMatcher.h"

#include "xpath/NodeSet.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/QName.h"
#include "xslt/private/Runtime.h"
#include "xslt/private/VariableFrame.h"

namespace XsltPrivate {

namespace {

DomStringView Trim(DomStringView text) {
    auto isSpace = [](DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

// Splits at each "|" outside quotes, brackets and parentheses.
void SplitAlternatives(DomStringView text, TArray<DomString>& alternatives) {
    int depth = 0;
    DomChar quote = 0;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        DomChar c = text[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'[' || c == u'(') {
            ++depth;
        } else if (c == u']' || c == u')') {
            --depth;
        } else if (c == u'|' && depth == 0) {
            alternatives.Add(DomString(Trim(text.substr(start, i - start))));
            start = i + 1;
        }
    }
    alternatives.Add(DomString(Trim(text.substr(start))));
}

Dom::CNode* ParentOf(Dom::CNode* node) {
    if (node->GetNodeType() == Dom::ATTRIBUTE_NODE) return static_cast<Dom::CAttr*>(node)->m_pOwner;
    return node->GetParentNode();
}

bool IsChildKind(int type) {
    return type == Dom::ELEMENT_NODE || type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE ||
           type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE;
}

bool NameEquals(const Dom::CNode* node, const DomString& uri, const DomString& localName) {
    const Dom::CName* name = node->GetName();
    return name && name->GetLocalName() == localName && name->GetNamespaceUri() == uri;
}

}  // namespace

void CTemplatePattern::Compile(const CCompileContext& compile, DomStringView text, TRefPtr<CTemplatePattern>& pattern) {
    pattern = new CTemplatePattern();
    pattern->m_pNamespaces = compile.GetNamespaces();
    TArray<DomString> alternatives;
    SplitAlternatives(text, alternatives);
    for (const DomString& alternative : alternatives) {
        SAlternative entry{General, DomString(), DomString(), 0.5, nullptr};
        Classify(compile, alternative, entry);
        pattern->m_aAlternatives.Add(entry);
    }
}

void CTemplatePattern::Classify(const CCompileContext& compile, DomStringView text, SAlternative& alternative) {
    struct SFixed {
        const DomChar* pText;
        EKind nKind;
        double dPriority;
    };
    static const SFixed s_aFixed[] = {
        {u"/", Root, 0.5},       {u"*", AnyElement, -0.5},
        {u"text()", Text, -0.5}, {u"node()", AnyNode, -0.5},
        {u"comment()", Comment, -0.5}, {u"processing-instruction()", AnyPi, -0.5},
        {u"@*", AnyAttribute, -0.5},
    };
    for (const SFixed& fixed : s_aFixed) {
        if (text == fixed.pText) {
            alternative.nKind = fixed.nKind;
            alternative.dPriority = fixed.dPriority;
            return;
        }
    }
    bool attribute = !text.empty() && text[0] == u'@';
    DomStringView name = attribute ? text.substr(1) : text;
    if (IsQName(name)) {
        SQName qname;
        compile.ResolveQName(name, false, qname);
        alternative.nKind = attribute ? AttributeName : ElementName;
        alternative.sUri = qname.sUri;
        alternative.sLocalName = qname.sLocalName;
        alternative.dPriority = 0;
        return;
    }
    compile.CompileExpression(text, alternative.pExpression);
    bool namespaceTest = name.size() > 2 && name.substr(name.size() - 2) == u":*" && IsQName(name.substr(0, name.size() - 2));
    if (namespaceTest) {
        alternative.dPriority = -0.25;
    } else if (text.substr(0, 23) == u"processing-instruction(" && text.find(u'/') == DomStringView::npos) {
        alternative.dPriority = 0;
    }
}

bool CTemplatePattern::Match(CPatternMatcher& matcher, bool firstOnly, double& priority) const {
    bool matched = false;
    for (const SAlternative& alternative : m_aAlternatives) {
        if (!MatchAlternative(matcher, alternative)) continue;
        if (!matched || alternative.dPriority > priority) priority = alternative.dPriority;
        matched = true;
        if (firstOnly) break;
    }
    return matched;
}

bool CTemplatePattern::MatchAlternative(CPatternMatcher& matcher, const SAlternative& alternative) const {
    Dom::CNode* node = matcher.GetNode();
    int type = node->GetNodeType();
    switch (alternative.nKind) {
    case Root:
        return type == Dom::DOCUMENT_NODE;
    case ElementName:
        return type == Dom::ELEMENT_NODE && NameEquals(node, alternative.sUri, alternative.sLocalName);
    case AnyElement:
        return type == Dom::ELEMENT_NODE;
    case Text:
        return type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE;
    case AnyNode:
        return IsChildKind(type);
    case Comment:
        return type == Dom::COMMENT_NODE;
    case AnyPi:
        return type == Dom::PROCESSING_INSTRUCTION_NODE;
    case AttributeName:
        return type == Dom::ATTRIBUTE_NODE && NameEquals(node, alternative.sUri, alternative.sLocalName);
    case AnyAttribute:
        return type == Dom::ATTRIBUTE_NODE;
    case General:
        return MatchGeneral(matcher, alternative);
    }
    return false;
}

bool CTemplatePattern::MatchGeneral(CPatternMatcher& matcher, const SAlternative& alternative) const {
    Dom::CNode* node = matcher.GetNode();
    CExecutionContext& context = matcher.GetContext();
    CRuntime* runtime = context.GetRuntime();
    for (Dom::CNode* origin = node; origin; origin = ParentOf(origin)) {
        TRefPtr<Xpath::CNodeSet> single = new Xpath::CSingleNodeSet(origin);
        TRefPtr<Xpath::CNodeIterator> position;
        single->CreateIterator(position);
        TRefPtr<Xpath::CContext> xpathContext =
            new Xpath::CContext(position, context.GetFrame(), runtime->GetFunctions(), m_pNamespaces,
                                runtime->GetNodeOrder(), runtime->GetExtensionTypes());
        TRefPtr<Xpath::CValue> value;
        alternative.pExpression->Evaluate(value, xpathContext);
        Xpath::CNodeSet* selected = value->GetNodeSet();
        if (!selected) return false;
        TRefPtr<Xpath::CNodeIterator> iterator;
        selected->CreateIterator(iterator);
        for (; iterator->Current(); iterator->Next()) {
            if (iterator->Current() == node) return true;
        }
    }
    return false;
}

}  // namespace XsltPrivate
