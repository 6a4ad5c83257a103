// Execution contexts: construction, Leave, and the evaluation, result and raising wrappers.
#include "xslt/private/ExecutionContext.h"

#include "xpath/Converter.h"
#include "xslt/XsltException.h"
#include "xslt/private/Avt.h"
#include "xslt/private/DiagnosticReporter.h"
#include "xslt/private/EventBuffer.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/Locator.h"
#include "xslt/private/OutputException.h"
#include "xslt/private/ResultTree.h"
#include "xslt/private/Runtime.h"
#include "xslt/private/VariableFrame.h"

namespace XsltPrivate {

namespace {

// Makes this context the one whose expression runs, for current() and the XSLT functions.
class CCurrentNodeScope {
public:
    CCurrentNodeScope(CRuntime* runtime, CExecutionContext* context)
        : m_pRuntime(runtime), m_pPrevious(runtime->SetActiveContext(context)) {}
    ~CCurrentNodeScope() { m_pRuntime->SetActiveContext(m_pPrevious); }
    CCurrentNodeScope(const CCurrentNodeScope&) = delete;
    CCurrentNodeScope& operator=(const CCurrentNodeScope&) = delete;

private:
    CRuntime* m_pRuntime;
    CExecutionContext* m_pPrevious;
};

}  // namespace

CExecutionContext::CExecutionContext(CRuntime* runtime, CResultTree* result)
    : m_pRuntime(runtime), m_pResult(result) {
    runtime->TakeFrame(m_pOwnFrame);
    m_pFrame = m_pOwnFrame;
    m_nFlags |= OpenedFrame;
    Enter();
}

CExecutionContext::CExecutionContext(CExecutionContext& parent, CInstruction* instruction, bool newFrame)
    : m_nFlags(parent.m_nFlags & NoNodes),
      m_pRuntime(parent.m_pRuntime),
      m_pResult(parent.m_pResult),
      m_pInstruction(instruction),
      m_pNodes(parent.m_pNodes),
      m_pFrame(parent.m_pFrame),
      m_pCurrentTemplate(parent.m_pCurrentTemplate),
      m_pParent(&parent) {
    if (newFrame) {
        m_pRuntime->TakeFrame(m_pOwnFrame);
        m_pFrame = m_pOwnFrame;
        m_nFlags |= OpenedFrame;
    }
    m_nFlags |= PushedInstruction;
    Enter();
}

CExecutionContext::CExecutionContext(CExecutionContext& parent, Xpath::CNodeIterator* nodes)
    : m_nFlags(parent.m_nFlags & NoNodes),
      m_pRuntime(parent.m_pRuntime),
      m_pResult(parent.m_pResult),
      m_pInstruction(parent.m_pInstruction),
      m_pNodes(nodes),
      m_pFrame(parent.m_pFrame),
      m_pCurrentTemplate(parent.m_pCurrentTemplate),
      m_pParent(&parent) {
    Enter();
}

CExecutionContext::CExecutionContext(CExecutionContext& parent, CResultTree* result)
    : m_nFlags(0),
      m_pRuntime(parent.m_pRuntime),
      m_pResult(result),
      m_pInstruction(parent.m_pInstruction),
      m_pNodes(parent.m_pNodes),
      m_pFrame(parent.m_pFrame),
      m_pCurrentTemplate(parent.m_pCurrentTemplate),
      m_pParent(&parent) {
    Enter();
}

CExecutionContext::CExecutionContext(CExecutionContext& outermost, CInstruction* declaration,
                                     CVariableFrame* globalFrame)
    : m_nFlags(EvaluatesGlobal),
      m_pRuntime(outermost.m_pRuntime),
      m_pResult(outermost.m_pResult),
      m_pInstruction(declaration),
      m_pNodes(outermost.m_pNodes),
      m_pFrame(globalFrame),
      m_pParent(&outermost) {
    Enter();
}

CExecutionContext::~CExecutionContext() {
    if (m_pOwnFrame) m_pRuntime->GiveBackFrame(m_pOwnFrame);
}

void CExecutionContext::Enter() {
    m_nFrameMark = m_pFrame->GetMark();
    m_nFlags |= Active;
}

void CExecutionContext::EnterBinding() {
    m_bBindingPending = false;
    CVariableFrame* frame = m_pParent ? m_pParent->m_pFrame : m_pFrame;
    if (frame->Contains(m_pBindingName->sUri, m_pBindingName->sLocalName)) {
        RaiseFatal(Xslt::CXsltException::DuplicateVariableName, m_pBindingName->sUri, m_pBindingName->sLocalName);
    }
    frame->Add(m_pBindingName, m_pBindingValue);
    m_pBindingValue = nullptr;
}

void CExecutionContext::SetBinding(const SQName* name, Xpath::CValue* value) {
    m_nFlags |= BindsVariable;
    m_bBindingPending = true;
    m_pBindingName = name;
    m_pBindingValue = value;
}

void CExecutionContext::MakeXpathContext(TRefPtr<Xpath::CContext>& context) {
    CInstruction* instruction = m_pInstruction;
    if (instruction) {
        Xpath::CContext* cached = instruction->m_pXpathContext;
        if (cached && cached->GetIterator() == m_pNodes && cached->GetVariables() == m_pFrame) {
            context = cached;
            return;
        }
    }
    Xpath::INamespaceResolver* namespaces = instruction ? instruction->GetNamespaces() : nullptr;
    if (!namespaces) namespaces = m_pRuntime->GetEmptyNamespaces();
    Xpath::CContext* shared = m_pFrame->m_pXpathContext;
    if (shared && shared->GetIterator() == m_pNodes && shared->GetNamespaces() == namespaces) {
        context = shared;
    } else {
        context = new Xpath::CContext(m_pNodes, m_pFrame, m_pRuntime->GetFunctions(), namespaces,
                                      m_pRuntime->GetNodeOrder(), m_pRuntime->GetExtensionTypes());
        m_pFrame->m_pXpathContext = context;
    }
    if (instruction) {
        if (!instruction->m_pXpathContext) m_pRuntime->NoteCachedContext(instruction);
        instruction->m_pXpathContext = context;
    }
}

void CExecutionContext::Evaluate(const Xpath::CExpression* expression, TRefPtr<Xpath::CValue>& value) {
    TRefPtr<Xpath::CContext> context;
    MakeXpathContext(context);
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        expression->Evaluate(value, context);
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ExpressionEvaluationError, failure);
    }
}

bool CExecutionContext::EvaluateBoolean(const Xpath::CExpression* expression) {
    TRefPtr<Xpath::CValue> value;
    Evaluate(expression, value);
    if (value->GetType() == Xpath::TypeBoolean) return value->GetBoolean();
    TRefPtr<Xpath::CContext> context;
    MakeXpathContext(context);
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        return Xpath::CConverter(context).ToBoolean(value);
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ValueConversionError, failure);
    }
}

void CExecutionContext::EvaluateString(const Xpath::CExpression* expression, DomString& text) {
    TRefPtr<Xpath::CValue> value;
    Evaluate(expression, value);
    ConvertToString(value, text);
}

void CExecutionContext::ConvertToString(Xpath::CValue* value, DomString& text) {
    TRefPtr<Xpath::CContext> context;
    MakeXpathContext(context);
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        text = Xpath::CConverter(context).ToString(value);
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ValueConversionError, failure);
    }
}

void CExecutionContext::EvaluateNodeSet(const Xpath::CExpression* expression, TRefPtr<Xpath::CNodeSet>& nodes) {
    TRefPtr<Xpath::CValue> value;
    Evaluate(expression, value);
    if (value->GetType() != Xpath::TypeNodeSet || !value->GetNodeSet()) {
        RaiseFatal(Xslt::CXsltException::InvalidSelectionResultType);
    }
    nodes = value->GetNodeSet();
}

void CExecutionContext::CreateIterator(Xpath::CNodeSet* nodes, TRefPtr<Xpath::CNodeIterator>& iterator) {
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        nodes->CreateIterator(iterator);
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ExpressionEvaluationError, failure);
    }
}

int32_t CExecutionContext::CountNodes(Xpath::CNodeSet* nodes) {
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        return nodes->GetLength();
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ExpressionEvaluationError, failure);
    }
    return 0;
}

void CExecutionContext::Advance(Xpath::CNodeIterator* iterator) {
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        iterator->Next();
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::ExpressionEvaluationError, failure);
    }
}

void CExecutionContext::EvaluateAvt(const CAvt* avt, DomString& text) {
    const DomString* constant;
    if (avt->IsConstant(constant)) {
        text = *constant;
        return;
    }
    text.clear();
    TRefPtr<Xpath::CContext> context;
    MakeXpathContext(context);
    CCurrentNodeScope scope(m_pRuntime, this);
    try {
        Xpath::CConverter converter(context);
        for (int i = 0; i < avt->GetPartCount(); ++i) {
            const Xpath::CExpression* expression = avt->GetExpression(i);
            if (!expression) {
                text += avt->GetPart(i);
                continue;
            }
            TRefPtr<Xpath::CValue> value;
            expression->Evaluate(value, context);
            text += converter.ToString(value);
        }
    } catch (Xslt::CXsltException*) {
        throw;
    } catch (Core::IException* failure) {
        WrapFailure(Xslt::CXsltException::AvtEvaluationError, failure);
    }
}

void CExecutionContext::WrapFailure(int code, Core::IException* failure) {
    DomString text;
    failure->GetMessage(text);
    delete failure;
    RaiseFatal(code, text);
}

void CExecutionContext::WrapOutputFailure(Core::IException* failure) {
    WrapFailure(Xslt::CXsltException::OutputError, failure);
}

#define KST_RESULT_CALL(call)                    \
    try {                                        \
        m_pResult->call;                         \
    } catch (COutputException * failure) {       \
        WrapOutputFailure(failure);              \
    }

void CExecutionContext::StartDocumentOutput() { KST_RESULT_CALL(StartDocument()) }
void CExecutionContext::EndDocumentOutput() { KST_RESULT_CALL(EndDocument()) }
void CExecutionContext::StartElement(DomStringView name, DomStringView uri) { KST_RESULT_CALL(StartElement(name, uri)) }
void CExecutionContext::EndElement() { KST_RESULT_CALL(EndElement()) }
void CExecutionContext::StartAttribute(DomStringView name, DomStringView uri) { KST_RESULT_CALL(StartAttribute(name, uri)) }
void CExecutionContext::EndAttribute() { KST_RESULT_CALL(EndAttribute()) }
void CExecutionContext::StartNamespace(DomStringView prefix) { KST_RESULT_CALL(StartNamespace(prefix)) }
void CExecutionContext::EndNamespace() { KST_RESULT_CALL(EndNamespace()) }
void CExecutionContext::Characters(const DomChar* text, int length, bool disableEscaping) {
    KST_RESULT_CALL(Characters(text, length, disableEscaping))
}
void CExecutionContext::StartComment() { KST_RESULT_CALL(StartComment()) }
void CExecutionContext::EndComment() { KST_RESULT_CALL(EndComment()) }
void CExecutionContext::ProcessingInstruction(DomStringView target, DomStringView data) {
    KST_RESULT_CALL(ProcessingInstruction(target, data))
}
void CExecutionContext::Namespace(DomStringView prefix, DomStringView uri) { KST_RESULT_CALL(Namespace(prefix, uri)) }
void CExecutionContext::Attribute(DomStringView name, DomStringView uri, DomStringView value) {
    KST_RESULT_CALL(Attribute(name, uri, value))
}

void CExecutionContext::ReplayFragment(const CEventBuffer* buffer) {
    try {
        buffer->Replay(*m_pResult);
    } catch (COutputException* failure) {
        WrapOutputFailure(failure);
    }
}

#undef KST_RESULT_CALL

void CExecutionContext::RaiseRecoverable(int code, const DomString& argument1, const DomString& argument2) {
    Raise(CDiagnosticReporter::Recoverable, code, argument1, argument2, false);
}

void CExecutionContext::RaiseFatal(int code, const DomString& argument1, const DomString& argument2) {
    Raise(CDiagnosticReporter::Fatal, code, argument1, argument2, true);
    throw nullptr;  // not reached: Raise throws for a fatal error
}

void CExecutionContext::Raise(int severity, int code, const DomString& argument1, const DomString& argument2,
                              bool toThrow) {
    Xslt::SLocation stylesheetLocation;
    DomString stylesheetName;
    if (m_pInstruction) {
        stylesheetLocation = m_pInstruction->GetLocation();
        stylesheetName = m_pInstruction->GetName();
    }
    Xslt::SLocation documentLocation;
    DomString documentName;
    if (Dom::CNode* node = GetCurrentNode()) {
        documentLocation = m_pRuntime->GetLocator()->GetNodeLocation(node);
        documentName = node->GetNodeName();
    }
    auto* exception = new Xslt::CXsltException(code, stylesheetLocation, stylesheetName, documentLocation,
                                               documentName, argument1, argument2);
    m_pRuntime->GetReporter()->Report(severity, exception, m_pRuntime->GetLocator());
    if (toThrow) throw exception;
    delete exception;
}

}  // namespace XsltPrivate
