// One stylesheet document compiled: its declarations in document order, its templates, and the
// modules it imports. Includes add to the including module; imports make modules of their own,
// and a module's import precedence is nothing but its place in this tree.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Document.h"
#include "xpath/Expression.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/Declarations.h"
#include "xslt/private/KeyDeclaration.h"
#include "xslt/private/RuleMatcher.h"
#include "xslt/private/Template.h"
#include "xslt/private/VariableInstruction.h"

namespace XsltPrivate {

class CExecutionContext;

class CStylesheetModule : public CRefObject {
public:
    // Deepest nesting of imports and includes; a stylesheet that includes itself ends here.
    static const int MaxNesting = 64;

    // Compiles the document into this module. `precedence` is the run's counter: the module
    // takes its value on entry and leaves it one above its own precedence.
    void Load(SLoadSession& session, Dom::CDocument* document, int& precedence);

    // The best rule of this module for the node, else of its imports, the last import first.
    // Equal best priorities report recoverable code 23 and take the later rule.
    CTemplate* FindTemplateRule(CExecutionContext& context, const SQName* mode);
    // The same search in the imports only, for xsl:apply-imports.
    CTemplate* FindImportedRule(CExecutionContext& context, const SQName* mode);

    int GetPrecedence() const { return m_nPrecedence; }
    Dom::CElement* GetRootElement() const { return m_pRootElement; }
    const Xpath::CExpression* GetBuiltInSelection() const { return m_pBuiltInSelection; }

    TArray<TRefPtr<CStylesheetModule>> m_aImports;
    TArray<TRefPtr<CAttributeSetDeclaration>> m_aAttributeSets;
    TArray<TRefPtr<CDecimalFormatDeclaration>> m_aDecimalFormats;
    TArray<TRefPtr<CKeyDeclaration>> m_aKeys;
    TArray<TRefPtr<CNamespaceAliasDeclaration>> m_aNamespaceAliases;
    TArray<TRefPtr<COutputDeclaration>> m_aOutputs;
    TArray<TRefPtr<CVariableInstruction>> m_aParameters;
    TArray<TRefPtr<CTemplate>> m_aTemplates;
    TArray<TRefPtr<CVariableInstruction>> m_aVariables;

private:
    void WalkTopLevel(CCompileContext& root);
    void CompileTopLevel(CCompileContext& element, bool& importAllowed);
    void LoadImport(CCompileContext& element, int& precedence);
    void LoadInclude(CCompileContext& element);
    void RetrieveDocument(CCompileContext& element, const DomString& uri, Dom::TNodeRef& document);
    void AddSimplifiedTemplate(CCompileContext& root);
    void AddSpaceRules(CCompileContext& element, bool preserve);
    void AddAttributeSet(CCompileContext& element);
    void AddDecimalFormat(CCompileContext& element);
    void AddNamespaceAlias(CCompileContext& element);
    void AddOutput(CCompileContext& element);
    // Tests the root of a document: true for a normal stylesheet, false for a simplified one.
    static bool IsNormalRoot(CCompileContext& root);
    CTemplate* FindOwnRule(CExecutionContext& context, const SQName* mode);

    SLoadSession* m_pSession = nullptr;  // only during Load
    TRefPtr<Dom::CStripSpaceRules> m_pSpaceRules;
    int m_nPrecedence = 0;
    bool m_bHasId = false;
    DomString m_sId;
    Dom::TNodeRef m_pDocument;
    Dom::CElement* m_pRootElement = nullptr;
    TRefPtr<Xpath::CExpression> m_pBuiltInSelection;
    TArray<Dom::TNodeRef> m_aDocuments;  // imported and included documents, kept with the module
    TRuleIndex<CTemplate> m_ruleIndex;   // built at the first rule lookup, when every template is in
};

}  // namespace XsltPrivate
