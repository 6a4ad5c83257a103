// Loading a stylesheet document into a module: the root test, the top-level walk with imports
// and includes, the declarations, and template rule selection over the module tree.
#include "xslt/private/StylesheetModule.h"

#include "xslt/XsltException.h"
#include "xslt/private/DocumentSources.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/KeyTable.h"
#include "xslt/private/PatternContext.h"
#include "xslt/private/RuleMatcher.h"
#include "xslt/private/Runtime.h"
#include "xslt/private/NamespaceContext.h"
#include "xslt/private/OutputInstructions.h"

namespace XsltPrivate {

using Xslt::CXsltException;

namespace {

// Counts one level of import or include nesting for the lifetime of the guard.
class CNestingGuard {
public:
    CNestingGuard(CCompileContext& element, const DomString& uri) : m_session(element.GetSession()) {
        if (++m_session.nNesting > CStylesheetModule::MaxNesting) {
            element.Raise(CXsltException::StylesheetRetrievalError, uri, u"Imports and includes nest too deeply");
        }
    }
    ~CNestingGuard() { --m_session.nNesting; }
    CNestingGuard(const CNestingGuard&) = delete;
    CNestingGuard& operator=(const CNestingGuard&) = delete;

private:
    SLoadSession& m_session;
};

bool IsSkippable(const Dom::CNode* node) {
    int type = node->GetNodeType();
    return type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE;
}

}  // namespace

void CStylesheetModule::Load(SLoadSession& session, Dom::CDocument* document, int& precedence) {
    m_pSession = &session;
    m_pSpaceRules = session.pSpaceRules;
    m_nPrecedence = precedence;
    m_pDocument = document;
    m_pRootElement = document->GetDocumentElement();
    CCompileContext root(session, m_pRootElement);
    if (IsNormalRoot(root)) {
        m_bHasId = root.GetAttribute(u"id", false, m_sId);
        WalkTopLevel(root);
    } else {
        AddSimplifiedTemplate(root);
    }
    root.CompileExpression(u"node()", m_pBuiltInSelection);
    precedence = m_nPrecedence + 1;
    m_pSession = nullptr;
}

bool CStylesheetModule::IsNormalRoot(CCompileContext& root) {
    if (root.IsLiteral()) return false;
    if (root.IsExtension()) root.Raise(CXsltException::InvalidStylesheet);
    if (root.GetLocalName() != u"stylesheet" && root.GetLocalName() != u"transform") {
        root.Raise(CXsltException::InvalidStylesheet);
    }
    return true;
}

void CStylesheetModule::WalkTopLevel(CCompileContext& root) {
    bool importAllowed = true;
    for (Dom::CNode* child = root.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (IsSkippable(child)) continue;
        CCompileContext element(root, child);
        if (child->GetNodeType() != Dom::ELEMENT_NODE) element.Raise(CXsltException::InvalidStylesheetContent);
        CompileTopLevel(element, importAllowed);
    }
}

void CStylesheetModule::CompileTopLevel(CCompileContext& element, bool& importAllowed) {
    if (!element.IsXslt()) {
        if (element.GetNode()->GetName()->GetNamespaceUri().empty() && !element.IsForwards()) {
            element.Raise(CXsltException::InvalidTopLevelElement);
        }
        importAllowed = false;
        return;
    }
    const DomString& name = element.GetLocalName();
    if (name == u"import") {
        if (!importAllowed) element.Raise(CXsltException::MisplacedImport);
        return LoadImport(element, m_nPrecedence);
    }
    importAllowed = false;
    if (name == u"include") return LoadInclude(element);
    if (name == u"template") {
        TRefPtr<CTemplate> rule;
        CTemplate::Compile(element, this, rule);
        return m_aTemplates.Add(rule);
    }
    if (name == u"param" || name == u"variable") {
        TRefPtr<CVariableInstruction> variable;
        bool isParameter = name == u"param";
        CVariableInstruction::Compile(element, isParameter ? CVariableInstruction::Parameter : CVariableInstruction::Variable,
                                      variable);
        return (isParameter ? m_aParameters : m_aVariables).Add(variable);
    }
    if (name == u"strip-space" || name == u"preserve-space") return AddSpaceRules(element, name == u"preserve-space");
    if (name == u"attribute-set") return AddAttributeSet(element);
    if (name == u"decimal-format") return AddDecimalFormat(element);
    if (name == u"namespace-alias") return AddNamespaceAlias(element);
    if (name == u"output") return AddOutput(element);
    if (name == u"key") {
        TRefPtr<CKeyDeclaration> key;
        CKeyDeclaration::Compile(element, key);
        return m_aKeys.Add(key);
    }
    if (!element.IsForwards()) element.Raise(CXsltException::InvalidTopLevelElement);
}

void CStylesheetModule::RetrieveDocument(CCompileContext& element, const DomString& uri, Dom::TNodeRef& document) {
    SLoadSession& session = element.GetSession();
    try {
        TRefPtr<CUriSource> source = new CUriSource(session.pEnvironment);
        source->SetUri(uri);
        BuildDocument(session.pEnvironment, source, session.pCompilerRules, session.pLocator, document);
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        DomString message;
        failure->GetMessage(message);
        delete failure;
        element.Raise(CXsltException::StylesheetRetrievalError, uri, message);
    }
    m_aDocuments.Add(document);
}

void CStylesheetModule::LoadImport(CCompileContext& element, int& precedence) {
    DomString uri;
    element.GetUri(u"href", true, uri);
    CNestingGuard guard(element, uri);
    Dom::TNodeRef document;
    RetrieveDocument(element, uri, document);
    TRefPtr<CStylesheetModule> module = new CStylesheetModule();
    module->Load(element.GetSession(), static_cast<Dom::CDocument*>(document.Get()), precedence);
    m_aImports.Add(module);
}

void CStylesheetModule::LoadInclude(CCompileContext& element) {
    DomString uri;
    element.GetUri(u"href", true, uri);
    CNestingGuard guard(element, uri);
    Dom::TNodeRef document;
    RetrieveDocument(element, uri, document);
    CCompileContext root(element.GetSession(), static_cast<Dom::CDocument*>(document.Get())->GetDocumentElement());
    if (IsNormalRoot(root)) {
        WalkTopLevel(root);
    } else {
        AddSimplifiedTemplate(root);
    }
}

void CStylesheetModule::AddSimplifiedTemplate(CCompileContext& root) {
    TRefPtr<CTemplate> rule;
    CTemplate::CompileSimplified(root, this, rule);
    m_aTemplates.Add(rule);
}

void CStylesheetModule::AddSpaceRules(CCompileContext& element, bool preserve) {
    DomString text;
    element.GetAttribute(u"elements", true, text);
    TArray<DomString> tokens;
    CCompileContext::SplitList(text, tokens);
    for (const DomString& token : tokens) {
        if (token == u"*") {
            m_pSpaceRules->AddRule(nullptr, nullptr, m_nPrecedence, preserve);
        } else if (token.size() > 2 && token.compare(token.size() - 2, 2, u":*") == 0) {
            SQName name;
            element.ResolveQName(token.substr(0, token.size() - 1) + u"a", false, name);
            m_pSpaceRules->AddRule(name.sUri.c_str(), nullptr, m_nPrecedence, preserve);
        } else {
            SQName name;
            element.ResolveQName(token, false, name);
            m_pSpaceRules->AddRule(name.sUri.c_str(), name.sLocalName.c_str(), m_nPrecedence, preserve);
        }
        if (!preserve) m_pSpaceRules->SetAnyStrip(true);
    }
}

void CStylesheetModule::AddAttributeSet(CCompileContext& element) {
    TRefPtr<CAttributeSetDeclaration> declaration = new CAttributeSetDeclaration();
    declaration->Initialise(element);
    element.GetQName(u"name", true, declaration->m_name);
    element.GetQNameList(u"use-attribute-sets", declaration->m_aUsedSets);
    for (Dom::CNode* child = element.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (child->GetNodeType() != Dom::ELEMENT_NODE) continue;
        CCompileContext attribute(element, child);
        if (!attribute.IsXsltElement(u"attribute")) continue;
        TRefPtr<CInstruction> instruction;
        CAttributeInstruction::Compile(attribute, instruction);
        declaration->m_aAttributes.Add(instruction);
    }
    m_aAttributeSets.Add(declaration);
}

void CStylesheetModule::AddDecimalFormat(CCompileContext& element) {
    TRefPtr<CDecimalFormatDeclaration> declaration = new CDecimalFormatDeclaration();
    declaration->Initialise(element);
    declaration->m_bHasName = element.GetQName(u"name", false, declaration->m_name);
    if (!declaration->m_bHasName) declaration->m_name = SQName{u"#default", u"default"};
    for (int i = 0; i < CDecimalFormatDeclaration::PropertyCount; ++i) {
        element.GetAttribute(CDecimalFormatDeclaration::s_apAttributeNames[i], false, declaration->m_asProperties[i]);
    }
    m_aDecimalFormats.Add(declaration);
}

void CStylesheetModule::AddNamespaceAlias(CCompileContext& element) {
    TRefPtr<CNamespaceAliasDeclaration> declaration = new CNamespaceAliasDeclaration();
    declaration->Initialise(element);
    DomString stylesheetPrefix;
    element.GetAttribute(u"stylesheet-prefix", true, stylesheetPrefix);
    element.GetAttribute(u"result-prefix", true, declaration->m_sResultPrefix);
    if (stylesheetPrefix == u"#default") stylesheetPrefix.clear();
    if (declaration->m_sResultPrefix == u"#default") declaration->m_sResultPrefix.clear();
    CNamespaceContext* namespaces = element.GetNamespaces();
    if (!namespaces->Lookup(stylesheetPrefix, declaration->m_sStylesheetUri)) {
        element.Raise(CXsltException::UndefinedPrefix, stylesheetPrefix);
    }
    if (!namespaces->Lookup(declaration->m_sResultPrefix, declaration->m_sResultUri)) {
        element.Raise(CXsltException::UndefinedPrefix, declaration->m_sResultPrefix);
    }
    m_aNamespaceAliases.Add(declaration);
}

void CStylesheetModule::AddOutput(CCompileContext& element) {
    TRefPtr<COutputDeclaration> declaration = new COutputDeclaration();
    declaration->Initialise(element);
    XmlWriter::COutputProperties& properties = *declaration->m_pProperties;
    static const CCompileContext::SEnumEntry s_aMethods[] = {
        {u"xml", XmlWriter::COutputProperties::XmlMethod},
        {u"html", XmlWriter::COutputProperties::HtmlMethod},
        {u"text", XmlWriter::COutputProperties::TextMethod},
        {nullptr, 0}};
    DomString text;
    if (element.GetAttribute(u"method", false, text)) {
        if (text.find(u':') != DomString::npos) {
            SQName name;
            element.ResolveQName(text, false, name);
            properties.SetMethodName(name.sUri, name.sLocalName);
        } else {
            int kind = 0;
            element.GetEnum(u"method", false, s_aMethods, kind);
            properties.SetMethodKind(kind);
        }
    }
    bool flag;
    if (element.GetAttribute(u"version", false, text)) properties.SetVersion(text);
    if (element.GetAttribute(u"encoding", false, text)) properties.SetEncoding(text);
    if (element.GetYesNo(u"omit-xml-declaration", false, flag)) properties.SetOmitXmlDeclaration(flag);
    if (element.GetYesNo(u"standalone", false, flag)) properties.SetStandalone(flag);
    if (element.GetAttribute(u"doctype-public", false, text)) properties.SetDoctypePublic(text);
    if (element.GetAttribute(u"doctype-system", false, text)) properties.SetDoctypeSystem(text);
    if (element.GetYesNo(u"indent", false, flag)) properties.SetIndent(flag);
    if (element.GetAttribute(u"media-type", false, text)) properties.SetMediaType(text);
    if (element.GetAttribute(u"cdata-section-elements", false, text)) {
        TArray<DomString> tokens;
        CCompileContext::SplitList(text, tokens);
        for (const DomString& token : tokens) {
            SQName name;
            element.ResolveQName(token, true, name);
            declaration->m_aCDataSectionElements.Add(name);
        }
    }
    m_aOutputs.Add(declaration);
}

CTemplate* CStylesheetModule::FindTemplateRule(CExecutionContext& context, const SQName* mode) {
    CTemplate* rule = FindOwnRule(context, mode);
    return rule ? rule : FindImportedRule(context, mode);
}

CTemplate* CStylesheetModule::FindImportedRule(CExecutionContext& context, const SQName* mode) {
    for (int i = m_aImports.GetSize() - 1; i >= 0; --i) {
        if (CTemplate* rule = m_aImports[i]->FindTemplateRule(context, mode)) return rule;
    }
    return nullptr;
}

CTemplate* CStylesheetModule::FindOwnRule(CExecutionContext& context, const SQName* mode) {
    if (!m_ruleIndex.IsBuilt()) m_ruleIndex.Build(m_aTemplates);
    CRunPatternHost host(context);
    CPatternContext patternContext(host, context.GetCurrentNode());
    bool ambiguous;
    CTemplate* best = m_ruleIndex.Select(patternContext, mode, ambiguous);
    if (ambiguous) context.RaiseRecoverable(CXsltException::MultipleMatchingTemplateRules);
    return best;
}

}  // namespace XsltPrivate
