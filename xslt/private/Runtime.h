// The state of one run beside the execution contexts: the tables merged from the module tree
// at the start of the run (named templates, namespace aliases, attribute sets, decimal formats,
// output settings, global variables), the parameters of the run and of the template call in
// progress, and the XPath services that every evaluation shares.
//
// The tables are built by walking the module tree from the highest import precedence downwards:
// a module, then its imports from the last to the first. The first entry a name receives stays;
// the "mark" of a table is its length when the walk entered the present module, which tells a
// conflict within one module from an override by a module of higher precedence.
#pragma once
#include "core/Array.h"
#include "dom/Node.h"
#include "xmlwriter/OutputProperties.h"
#include "xpath/Context.h"
#include "xpath/CoreFunctionLibrary.h"
#include "xslt/Environment.h"
#include "xslt/ParameterList.h"
#include "xslt/private/BoundParameters.h"
#include "xslt/private/Declarations.h"
#include "xslt/private/FunctionLibrary.h"
#include "xslt/private/KeyTable.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CDiagnosticReporter;
class CExecutionContext;
class CLocator;
class CStylesheetModule;
class CTemplate;
class CVariableFrame;
class CVariableInstruction;

// An attribute set merged from all its declarations: the used sets of every declaration, then
// the xsl:attribute instructions with the ordinal of their declaration in the walk.
class CMergedAttributeSet : public CRefObject {
public:
    SQName m_name;
    TArray<SQName> m_aUsedSets;
    struct SAttribute {
        TRefPtr<CInstruction> pInstruction;
        int nOrdinal;
    };
    TArray<SAttribute> m_aAttributes;
};

class CRuntime : public CRefObject {
public:
    // How deeply template invocations may nest before the run is ended with an error.
    static const int MaxTemplateDepth = 40000;

    CRuntime(CStylesheetModule* root, Xslt::CEnvironment* environment, CLocator* locator);
    ~CRuntime() override;

    // Resolves the names of the run's parameters against the root stylesheet element.
    void BindParameters(CExecutionContext& context, const Xslt::CParameterList* parameters);
    // Builds the tables in their order; fatal errors of duplicate declarations arise here.
    void BuildTables(CExecutionContext& context);
    // Evaluates every global variable in table order under `outermost`.
    void EvaluateGlobals(CExecutionContext& outermost);

    CStylesheetModule* GetRootModule() const { return m_pRootModule; }
    Xslt::CEnvironment* GetEnvironment() const { return m_pEnvironment; }
    CLocator* GetLocator() const { return m_pLocator; }
    CDiagnosticReporter* GetReporter() const { return m_pReporter; }
    XmlWriter::COutputProperties* GetOutputProperties() const { return m_pOutputProperties; }

    CTemplate* FindNamedTemplate(DomStringView uri, DomStringView localName) const;
    CMergedAttributeSet* FindAttributeSet(DomStringView uri, DomStringView localName) const;
    // The alias of a stylesheet namespace; false if it has none.
    bool FindAlias(DomStringView stylesheetUri, const DomString*& resultUri, const DomString*& resultPrefix) const;
    CDecimalFormatDeclaration* FindDecimalFormat(DomStringView uri, DomStringView localName) const;

    // The value of a global variable, evaluated on first demand; false if there is none.
    bool GetGlobalValue(DomStringView uri, DomStringView localName, TRefPtr<Xpath::CValue>& value);

    // The with-parameters of the template call in progress, or null.
    CBoundParameters* GetCurrentParameters() const { return m_pCurrentParameters; }
    void SetCurrentParameters(CBoundParameters* parameters) { m_pCurrentParameters = parameters; }

    // An empty frame for a template invocation. Frames are reused, the last given back first,
    // which spares an allocation per invocation; a frame keeps its expression context, which
    // the next invocation on the same node list (the next node of a loop) uses again. The
    // contexts hold their frames, so the run ends by resetting its frames.
    void TakeFrame(TRefPtr<CVariableFrame>& frame);
    // Takes back a frame from TakeFrame and empties it.
    void GiveBackFrame(CVariableFrame* frame);
    // The same for the with-parameters of a template call.
    void TakeParameters(TRefPtr<CBoundParameters>& parameters);
    void GiveBackParameters(CBoundParameters* parameters);

    // Counts nested template invocations; false when the limit is passed.
    bool EnterTemplate() { return ++m_nTemplateDepth <= MaxTemplateDepth; }
    void LeaveTemplate() { --m_nTemplateDepth; }

    // The execution context whose expression is being evaluated: current() gives its node, and
    // the XSLT functions raise their errors and resolve their QNames through it.
    CExecutionContext* GetActiveContext() const { return m_pActiveContext; }
    CExecutionContext* SetActiveContext(CExecutionContext* context) {
        CExecutionContext* previous = m_pActiveContext;
        m_pActiveContext = context;
        return previous;
    }

    // Notes an instruction that keeps an expression context of this run. The contexts hold the
    // run's nodes, tables and frames, so they are dropped when the run ends, before its documents.
    void NoteCachedContext(CInstruction* instruction) { m_aCachingInstructions.Add(instruction); }

    // The resolver of an evaluation that belongs to no instruction.
    Xpath::INamespaceResolver* GetEmptyNamespaces() const { return m_pEmptyNamespaces; }
    Xpath::IFunctionLibrary* GetFunctions() const { return m_pFunctions; }
    Xpath::INodeOrder* GetNodeOrder() const { return m_pNodeOrder; }
    // The key table is the run's node order.
    CKeyTable* GetKeyTable() const { return static_cast<CKeyTable*>(m_pNodeOrder.Get()); }
    CDocumentTable* GetDocumentTable() const { return m_pDocuments; }
    Xpath::IExtensionTypes* GetExtensionTypes() const { return m_pExtensionTypes; }

private:
    struct SNamedTemplate {
        SQName name;
        CTemplate* pTemplate;
    };
    struct SAlias {
        DomString sStylesheetUri;
        DomString sResultUri;
        DomString sResultPrefix;
    };
    struct SGlobal {
        SQName name;
        CVariableInstruction* pDeclaration;
        TRefPtr<Xpath::CValue> pValue;
        bool bInEvaluation;
    };

    // Visits a module and then its imports from the last to the first.
    template <class F>
    void Walk(CStylesheetModule* module, F&& visit);
    void BuildNamedTemplates(CExecutionContext& context);
    void BuildAliases(CExecutionContext& context);
    void BuildAttributeSets();
    void BuildDecimalFormats(CExecutionContext& context);
    void BuildOutput(CExecutionContext& context);
    void BuildGlobals(CExecutionContext& context);
    void BuildKeys();
    void AddGlobal(CExecutionContext& context, CVariableInstruction* declaration, int mark);
    void EvaluateGlobal(SGlobal& global);
    void MergeOutput(CExecutionContext& context, COutputDeclaration* declaration, int* states);

    TRefPtr<CStylesheetModule> m_pRootModule;
    TRefPtr<Xslt::CEnvironment> m_pEnvironment;
    TRefPtr<CLocator> m_pLocator;
    TRefPtr<CDiagnosticReporter> m_pReporter;

    TArray<SNamedTemplate> m_aNamedTemplates;
    TArray<SAlias> m_aAliases;
    TArray<TRefPtr<CMergedAttributeSet>> m_aAttributeSets;
    TArray<TRefPtr<CDecimalFormatDeclaration>> m_aDecimalFormats;
    TRefPtr<XmlWriter::COutputProperties> m_pOutputProperties;
    TArray<SGlobal> m_aGlobals;

    TRefPtr<CBoundParameters> m_pRunParameters;
    TArray<SQName> m_aRunParameterNames;  // sized once, so the bound parameters can point into it
    CBoundParameters* m_pCurrentParameters = nullptr;
    CExecutionContext* m_pOutermost = nullptr;
    TRefPtr<CVariableFrame> m_pGlobalFrame;
    TArray<TRefPtr<CVariableFrame>> m_aSpareFrames;
    TArray<TRefPtr<CBoundParameters>> m_aSpareParameters;
    int m_nTemplateDepth = 0;
    CExecutionContext* m_pActiveContext = nullptr;

    TRefPtr<Xpath::CCoreFunctionLibrary> m_pFunctions;
    TRefPtr<Xpath::INodeOrder> m_pNodeOrder;
    TRefPtr<Xpath::IExtensionTypes> m_pExtensionTypes;
    TRefPtr<Xpath::INamespaceResolver> m_pEmptyNamespaces;
    TRefPtr<CDocumentTable> m_pDocuments;
    TArray<CInstruction*> m_aCachingInstructions;  // alive with the root module
};

}  // namespace XsltPrivate
