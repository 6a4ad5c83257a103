// Shared helpers of the XPath tests: documents built from a small markup through the DOM
// builder, and an evaluator with the core library, a few prefixes and variables.
#pragma once
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

#include "dom/Document.h"
#include "dom/DocumentBuilder.h"
#include "xpath/Context.h"
#include "xpath/Converter.h"
#include "xpath/CoreFunctionLibrary.h"
#include "xpath/Expression.h"
#include "xpath/NodeSet.h"
#include "xpath/Parser.h"
#include "xpath/Value.h"
#include "xpath/XpathException.h"

namespace XpathTest {

inline DomString U(const std::string& text) { return Core::WidenLatin1(text); }
inline std::string A(const DomString& text) { return Core::ToUtf8(text); }

// Feeds the builder from markup with elements, attributes (double quotes), text, comments,
// processing instructions and CDATA sections; no entities. `idAttributes` lists
// "element/attribute" pairs declared of type ID.
class CMarkupReader {
public:
    static void Build(Dom::TNodeRef& document, const std::string& markup,
                      std::initializer_list<const char*> idAttributes = {}) {
        static TRefPtr<Dom::CDocumentFactory> s_factory(new Dom::CDocumentFactory(1));
        s_factory->CreateDocument(document);
        TRefPtr<Dom::CDocumentBuilder> builder;
        Dom::CDocumentBuilder::Create(document, nullptr, nullptr, builder);
        TRefPtr<Sxp::IDtdHandler> dtd;
        builder->GetDtdHandler(dtd);
        for (const char* pair : idAttributes) {
            std::string text(pair);
            size_t slash = text.find('/');
            dtd->AttributeDecl(U(text.substr(0, slash)), U(text.substr(slash + 1)), u"ID", u"#IMPLIED", u"");
        }
        builder->StartDocument();
        CMarkupReader reader(markup, builder);
        reader.Content();
        builder->EndDocument();
    }

private:
    CMarkupReader(const std::string& markup, Dom::CDocumentBuilder* builder) : m_s(markup), m_pBuilder(builder) {}

    bool At(const char* text) const { return m_s.compare(m_n, std::strlen(text), text) == 0; }
    std::string Until(const char* end) {
        size_t stop = m_s.find(end, m_n);
        std::string text = m_s.substr(m_n, stop - m_n);
        m_n = stop + std::strlen(end);
        return text;
    }
    std::string Name() {
        size_t start = m_n;
        while (m_n < m_s.size() && !std::strchr(" />=\t\n", m_s[m_n])) ++m_n;
        return m_s.substr(start, m_n - start);
    }
    void Blanks() {
        while (m_n < m_s.size() && std::strchr(" \t\n", m_s[m_n])) ++m_n;
    }
    void Text(const std::string& text) {
        DomString units = U(text);
        m_pBuilder->Characters(units.data(), static_cast<int>(units.size()));
    }
    void Content() {
        while (m_n < m_s.size()) {
            if (At("<!--")) {
                m_n += 4;
                m_pBuilder->StartComment();
                Text(Until("-->"));
                m_pBuilder->EndComment();
            } else if (At("<![CDATA[")) {
                m_n += 9;
                m_pBuilder->StartCData();
                Text(Until("]]>"));
                m_pBuilder->EndCData();
            } else if (At("<?")) {
                m_n += 2;
                std::string target = Name();
                Blanks();
                m_pBuilder->ProcessingInstruction(U(target), U(Until("?>")));
            } else if (At("</")) {
                Until(">");
                m_pBuilder->EndElement();
            } else if (At("<")) {
                ++m_n;
                Element();
            } else {
                size_t stop = m_s.find('<', m_n);
                Text(m_s.substr(m_n, stop - m_n));
                m_n = stop == std::string::npos ? m_s.size() : stop;
            }
        }
    }
    void Element() {
        m_pBuilder->StartElement(U(Name()));
        for (Blanks(); !At(">") && !At("/>"); Blanks()) {
            m_pBuilder->StartAttribute(U(Name()));
            m_n += 2;  // ="
            Text(Until("\""));
            m_pBuilder->EndAttribute();
        }
        if (At("/>")) m_pBuilder->EndElement();
        m_n += At("/>") ? 2 : 1;
    }

    std::string m_s;
    size_t m_n = 0;
    Dom::CDocumentBuilder* m_pBuilder;
};

class CTestNamespaces : public Xpath::INamespaceResolver {
public:
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override {
        auto found = m_aBindings.find(prefix);
        if (found == m_aBindings.end()) return false;
        uri = found->second;
        return true;
    }
    std::map<DomString, DomString> m_aBindings;
};

class CTestVariables : public Xpath::IVariableBindings {
public:
    void GetVariable(TRefPtr<Xpath::CValue>& value, const DomString& uri, const DomString& local) override {
        auto found = m_aValues.find(uri + u"|" + local);
        if (found != m_aValues.end()) value = found->second;
    }
    std::map<DomString, TRefPtr<Xpath::CValue>> m_aValues;
};

// How a node shows in expected lists: an element by name, "@name" for an attribute, the text
// in quotes, "#comment", "?target", "/" for the document, "ns:prefix" for a namespace node.
inline std::string Describe(const Dom::CNode* node) {
    switch (node->GetNodeType()) {
        case Dom::ELEMENT_NODE: return A(node->GetNodeName());
        case Dom::ATTRIBUTE_NODE: return "@" + A(node->GetNodeName());
        case Dom::TEXT_NODE: return "'" + A(node->GetStringValue()) + "'";
        case Dom::COMMENT_NODE: return "#comment";
        case Dom::PROCESSING_INSTRUCTION_NODE: return "?" + A(node->GetNodeName());
        case Dom::NAMESPACE_NODE: return "ns:" + A(node->GetNodeName());
        default: return "/";
    }
}

// A document and a context on one of its nodes, with the core library, the prefixes "p" and
// "q" and the variables that a test sets.
class CEvaluator {
public:
    explicit CEvaluator(const std::string& markup, std::initializer_list<const char*> idAttributes = {})
        : m_pNamespaces(new CTestNamespaces()), m_pVariables(new CTestVariables()) {
        CMarkupReader::Build(m_document, markup, idAttributes);
        m_pNamespaces->m_aBindings[u"p"] = u"urn:p";
        m_pNamespaces->m_aBindings[u"q"] = u"urn:q";
        SetContextNode(m_document);
    }

    void SetContextNode(Dom::CNode* node) {
        TRefPtr<Xpath::CNodeSet> set(new Xpath::CSingleNodeSet(node));
        TRefPtr<Xpath::CNodeIterator> iterator;
        set->CreateIterator(iterator);
        m_pContext = new Xpath::CContext(iterator, m_pVariables, new Xpath::CCoreFunctionLibrary(), m_pNamespaces,
                                         new Xpath::CDocumentNodeOrder(), new Xpath::CDefaultExtensionTypes());
    }
    // Moves the context to the first node that `path` selects from the document.
    void MoveTo(const std::string& path) {
        SetContextNode(m_document);
        TRefPtr<Xpath::CValue> value = Evaluate(path);
        SetContextNode(value->GetNodeSet()->GetFirst());
    }

    TRefPtr<Xpath::CValue> Evaluate(const std::string& expression) {
        Xpath::CParser parser;
        TRefPtr<Xpath::CExpression> tree;
        parser.Parse(tree, U(expression));
        TRefPtr<Xpath::CValue> value;
        tree->Evaluate(value, m_pContext);
        return value;
    }
    std::string String(const std::string& expression) {
        TRefPtr<Xpath::CValue> value = Evaluate(expression);
        return A(Xpath::CConverter(m_pContext).ToString(value));
    }
    // The nodes in iteration order, each with its position, joined by blanks.
    std::string Nodes(const std::string& expression) {
        TRefPtr<Xpath::CValue> value = Evaluate(expression);
        TRefPtr<Xpath::CNodeIterator> iterator;
        value->GetNodeSet()->CreateIterator(iterator);
        std::string text;
        for (; iterator->Current(); iterator->Next())
            text += (text.empty() ? "" : " ") + Describe(iterator->Current());
        return text;
    }
    // The message of the failure that evaluating the expression throws, or "" without one.
    std::string Failure(const std::string& expression) {
        try {
            TRefPtr<Xpath::CValue> value = Evaluate(expression);
            if (value->GetType() == Xpath::TypeNodeSet) value->GetNodeSet()->GetLength();
        } catch (Core::IException* failure) {
            DomString message;
            failure->GetMessage(message);
            delete failure;
            return A(message);
        }
        return "";
    }

    Dom::TNodeRef m_document;
    TRefPtr<CTestNamespaces> m_pNamespaces;
    TRefPtr<CTestVariables> m_pVariables;
    TRefPtr<Xpath::CContext> m_pContext;
};

}  // namespace XpathTest
