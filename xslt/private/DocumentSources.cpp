// Document sources and document building.
#include "xslt/private/DocumentSources.h"

#include "dom/Document.h"
#include "dom/DocumentBuilder.h"
#include "xmlparser/Parser.h"
#include "xslt/private/Locator.h"

namespace XsltPrivate {

void CUriSource::Run() {
    TRefPtr<Sxp::IParser> parser;
    m_pEnvironment->CreateParser(parser);
    parser->SetContentHandler(m_pContentHandler);
    parser->SetDtdHandler(m_pDtdHandler);
    parser->ParseUri(m_sUri);
}

void CNodeSource::Run() {
    Sxp::IContentHandler& handler = *m_pContentHandler;
    handler.StartDocument();
    Dom::CNode* root = m_pNode;
    Dom::CNode* node = root;
    for (;;) {
        Open(node);
        Dom::CNode* child = node->GetFirstChild();
        if (child) {
            node = child;
            continue;
        }
        Close(node);
        while (node != root && !node->GetNextSibling()) {
            node = node->GetParentNode();
            Close(node);
        }
        if (node == root) break;
        node = node->GetNextSibling();
    }
    handler.EndDocument();
}

void CNodeSource::Open(Dom::CNode* node) {
    Sxp::IContentHandler& handler = *m_pContentHandler;
    switch (node->GetNodeType()) {
    case Dom::ELEMENT_NODE: {
        handler.StartElement(node->GetName()->GetQualifiedName());
        auto* element = static_cast<Dom::CElement*>(node);
        Dom::CNode* parent = node->GetParentNode();
        bool sameScope = parent && parent->GetNodeType() == Dom::ELEMENT_NODE &&
                         static_cast<Dom::CElement*>(parent)->m_pScope == element->m_pScope;
        for (int i = 0; !sameScope && i < node->GetNamespaceCount(); ++i) {
            const Dom::CNamespaceNode* binding = node->GetNamespaceAt(i);
            if (binding->GetName() == u"xml") continue;
            DomString name = binding->GetName().empty() ? DomString(u"xmlns") : u"xmlns:" + binding->GetName();
            handler.StartAttribute(name);
            handler.Characters(binding->GetValue().data(), static_cast<int>(binding->GetValue().size()));
            handler.EndAttribute();
        }
        for (int i = 0; i < node->GetAttributeCount(); ++i) {
            const Dom::CAttr* attribute = node->GetAttributeAt(i);
            DomStringView value = attribute->GetValueView();
            handler.StartAttribute(attribute->GetName());
            handler.Characters(value.data(), static_cast<int>(value.size()));
            handler.EndAttribute();
        }
        break;
    }
    case Dom::TEXT_NODE:
    case Dom::CDATA_SECTION_NODE: {
        DomStringView text = node->GetTextView();
        handler.Characters(text.data(), static_cast<int>(text.size()));
        break;
    }
    case Dom::COMMENT_NODE: {
        DomStringView text = node->GetTextView();
        handler.StartComment();
        handler.Characters(text.data(), static_cast<int>(text.size()));
        handler.EndComment();
        break;
    }
    case Dom::PROCESSING_INSTRUCTION_NODE:
        handler.ProcessingInstruction(static_cast<Dom::CProcessingInstruction*>(node)->GetTargetView(),
                                      node->GetTextView());
        break;
    default:
        break;
    }
}

void CNodeSource::Close(Dom::CNode* node) {
    if (node->GetNodeType() == Dom::ELEMENT_NODE) m_pContentHandler->EndElement();
}

void BuildDocument(Xslt::CEnvironment* environment, Xslt::IDocumentSource* source, Dom::CStripSpaceRules* rules,
                   CLocator* locator, Dom::TNodeRef& document) {
    Dom::TNodeRef made;
    environment->GetDomImplementation()->CreateDocument(made);
    TRefPtr<Dom::CDocumentBuilder> builder;
    environment->CreateBuilder(made, rules, locator, builder);
    TRefPtr<Sxp::IDtdHandler> dtdHandler;
    builder->GetDtdHandler(dtdHandler);
    source->SetContentHandler(builder);
    source->SetDtdHandler(dtdHandler);
    source->Run();
    auto* built = static_cast<Dom::CDocument*>(made.Get());
    if (built->GetDocumentUri().empty()) built->SetDocumentUri(source->GetUri());
    document = made;
}

}  // namespace XsltPrivate
