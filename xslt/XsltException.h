// The one exception class of the XSLT engine, with the engine's message table and the places in
// the stylesheet and the source document at which an error arose.
#pragma once
#include "core/Exception.h"

namespace Xslt {

// A node's place: the document it belongs to and a position inside that document, as the
// locator records them. A null key means that no node is known.
struct SLocation {
    const void* pKey = nullptr;
    int nPosition = 0;
    bool IsNull() const { return pKey == nullptr; }
};

class CXsltException : public Core::IException {
public:
    enum ECode : int {
        InvalidStylesheet = 0,
        InvalidStylesheetContent = 1,
        StylesheetRetrievalError = 2,
        MisplacedImport = 3,
        InvalidTopLevelElement = 4,
        MissingAttribute = 5,
        InvalidAttributeValue = 6,
        InvalidExpressionSyntax = 7,
        InvalidAvtSyntax = 8,
        UndefinedPrefix = 9,
        ContentMustBeEmpty = 10,
        InvalidContent = 11,
        InvalidPcdata = 12,
        InvalidInstruction = 13,
        InvalidElement = 14,
        MissingElement = 15,
        MisplacedElement = 16,
        InvalidUriSyntax = 17,
        CannotResolveRelativeUri = 18,
        ExtensionStaticError = 19,
        ProcessingTerminated = 20,
        CannotCreateResultStream = 21,
        MultipleMatchingSpaceRules = 22,
        MultipleMatchingTemplateRules = 23,
        CurrentTemplateRuleNull = 24,
        NamedTemplateNotFound = 25,
        DuplicateTemplateName = 26,
        DuplicateNamespaceAlias = 27,
        AttributeSetNotFound = 28,
        DuplicateAttributeName = 29,
        DuplicateDecimalFormatName = 30,
        DefaultDecimalFormatNotFound = 31,
        DecimalFormatNotFound = 32,
        DuplicateOutputAttribute = 33,
        DuplicateVariableName = 34,
        CircularVariableDefinitions = 35,
        MisplacedAttributeNode = 36,
        MisplacedCommentNode = 37,
        MisplacedElementNode = 38,
        MisplacedProcessingInstructionNode = 39,
        MisplacedNamespaceNode = 40,
        InvalidAttributeName = 41,
        AvtEvaluationError = 42,
        ExpressionEvaluationError = 43,
        ValueConversionError = 44,
        InvalidComputedAttributeValue = 45,
        InvalidSelectionResultType = 46,
        InvalidNumberOfArguments = 47,
        InvalidArgumentType = 48,
        DocumentRetrievalError = 49,
        OutputError = 50,
        WriterError = 51,
        UnsupportedFeature = 52,
        ExtensionRuntimeWarning = 53,
        ExtensionRuntimeError = 54,
        MessageText = 55,
    };

    explicit CXsltException(int code, DomString argument1 = DomString(), DomString argument2 = DomString());
    CXsltException(int code, SLocation stylesheet, DomString stylesheetNode, DomString argument1 = DomString(),
                   DomString argument2 = DomString());
    CXsltException(int code, SLocation stylesheet, DomString stylesheetNode, SLocation document,
                   DomString documentNode, DomString argument1 = DomString(), DomString argument2 = DomString());

    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }
    const SLocation& GetStylesheetLocation() const { return m_rStylesheetLocation; }
    const DomString& GetStylesheetNodeName() const { return m_sStylesheetNode; }
    const SLocation& GetDocumentLocation() const { return m_rDocumentLocation; }
    const DomString& GetDocumentNodeName() const { return m_sDocumentNode; }
    const DomString& GetArgument1() const { return m_sArgument1; }
    const DomString& GetArgument2() const { return m_sArgument2; }

private:
    int m_nCode;
    SLocation m_rStylesheetLocation;
    DomString m_sStylesheetNode;
    SLocation m_rDocumentLocation;
    DomString m_sDocumentNode;
    DomString m_sArgument1;
    DomString m_sArgument2;
};

}  // namespace Xslt
