// Helpers for the tree tests: a builder driven by hand-written events.
#pragma once
#include <gtest/gtest.h>

#include <string>

#include "dom/DocumentBuilder.h"
#include "dom/DomException.h"

namespace DomTest {

inline DomString U(const std::string& text) { return Core::Ascii(text); }

// Feeds events to a fresh document. Attributes are given as "name=value" in StartTag.
class CEventFeeder {
public:
    explicit CEventFeeder(Dom::CStripSpaceRules* rules = nullptr, Dom::IBuildListener* listener = nullptr,
                          uint32_t factoryNumber = 0)
        : m_pFactory(new Dom::CDocumentFactory(factoryNumber)) {
        m_pFactory->CreateDocument(m_pDocument);
        Dom::CDocumentBuilder::Create(m_pDocument, rules, listener, m_pBuilder);
        m_pBuilder->StartDocument();
    }
    CEventFeeder& Start(const std::string& name) {
        m_pBuilder->StartElement(U(name));
        return *this;
    }
    CEventFeeder& Attribute(const std::string& name, const std::string& value) {
        m_pBuilder->StartAttribute(U(name));
        DomString units = U(value);
        if (!units.empty()) m_pBuilder->Characters(units.data(), static_cast<int>(units.size()));
        m_pBuilder->EndAttribute();
        return *this;
    }
    CEventFeeder& Text(const std::string& text) {
        DomString units = U(text);
        m_pBuilder->Characters(units.data(), static_cast<int>(units.size()));
        return *this;
    }
    CEventFeeder& Comment(const std::string& text) {
        m_pBuilder->StartComment();
        Text(text);
        m_pBuilder->EndComment();
        return *this;
    }
    CEventFeeder& Pi(const std::string& target, const std::string& data) {
        m_pBuilder->ProcessingInstruction(U(target), U(data));
        return *this;
    }
    CEventFeeder& End() {
        m_pBuilder->EndElement();
        return *this;
    }
    Dom::CDocument* Finish() {
        m_pBuilder->EndDocument();
        return Document();
    }
    Dom::CDocument* Document() const { return static_cast<Dom::CDocument*>(m_pDocument.Get()); }
    Dom::CDocumentBuilder* Builder() const { return m_pBuilder; }

private:
    TRefPtr<Dom::CDocumentFactory> m_pFactory;
    Dom::TNodeRef m_pDocument;
    TRefPtr<Dom::CDocumentBuilder> m_pBuilder;
};

// Runs `action` and returns the code of the CDomException it throws, or 0.
template <class F>
int DomErrorCode(F action, DomString* message = nullptr) {
    try {
        action();
    } catch (Dom::CDomException* exception) {
        int code = exception->GetCode();
        if (message) exception->GetMessage(*message);
        delete exception;
        return code;
    }
    return 0;
}

}  // namespace DomTest
