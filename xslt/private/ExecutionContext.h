// The state of a run as one instruction sees it: the current node list, the variable frame,
// the result being written, and the template rule in force. Every instruction runs in a child
// context of its own, made on the machine stack by whoever runs it and closed by Leave; a
// variable binding takes effect in the parent's frame at Leave, which is what makes a variable
// visible to the following siblings only.
//
// All XPath evaluation and all result writing of instructions go through the wrappers here,
// which turn failures into the engine's fatal errors with the instruction's location.
#pragma once
#include <cstdint>

#include "core/DomString.h"
#include "core/Exception.h"
#include "core/RefObject.h"
#include "xpath/Context.h"
#include "xpath/Expression.h"
#include "xpath/NodeSet.h"
#include "xpath/Value.h"
#include "xslt/private/QName.h"
#include "xslt/private/VariableFrame.h"

namespace XsltPrivate {

class CAvt;
class CEventBuffer;
class CInstruction;
class CResultTree;
class CRuntime;
class CTemplate;

class CExecutionContext : public CRefObject {
public:
    enum EFlag : uint32_t {
        Active = 0x01,
        OpenedFrame = 0x02,
        PushedInstruction = 0x04,
        BindsVariable = 0x08,
        EvaluatesGlobal = 0x10,
        NoNodes = 0x20,  // inside an attribute, comment or processing instruction; inherited
    };

    // The outermost context of a run: no node list, no template.
    CExecutionContext(CRuntime* runtime, CResultTree* result);
    // A child for an instruction; with `newFrame` the child gets an empty variable frame.
    CExecutionContext(CExecutionContext& parent, CInstruction* instruction, bool newFrame);
    // A child on a new current node list.
    CExecutionContext(CExecutionContext& parent, Xpath::CNodeIterator* nodes);
    // A child writing to another result, where nodes may be written again.
    CExecutionContext(CExecutionContext& parent, CResultTree* result);
    // A context for evaluating a global variable: global frame, outermost node list.
    CExecutionContext(CExecutionContext& outermost, CInstruction* declaration, CVariableFrame* globalFrame);
    ~CExecutionContext() override;
    CExecutionContext(const CExecutionContext&) = delete;
    CExecutionContext& operator=(const CExecutionContext&) = delete;

    // Pops what ran inside off the frame and enters a pending binding in the parent's frame.
    void Leave() {
        m_nFlags &= ~Active;
        if (!HasFlag(BindsVariable | EvaluatesGlobal)) m_pFrame->PopTo(m_nFrameMark);
        if (m_bBindingPending) EnterBinding();
    }

    CRuntime* GetRuntime() const { return m_pRuntime; }
    CResultTree* GetResult() const { return m_pResult; }
    CInstruction* GetInstruction() const { return m_pInstruction; }
    Xpath::CNodeIterator* GetNodes() const { return m_pNodes; }
    Dom::CNode* GetCurrentNode() const { return m_pNodes ? m_pNodes->Current() : nullptr; }
    CVariableFrame* GetFrame() const { return m_pFrame; }
    CTemplate* GetCurrentTemplate() const { return m_pCurrentTemplate; }
    void SetCurrentTemplate(CTemplate* rule) { m_pCurrentTemplate = rule; }
    bool HasFlag(uint32_t flag) const { return (m_nFlags & flag) != 0; }
    void SetFlag(uint32_t flag) { m_nFlags |= flag; }

    // Makes the binding that Leave enters in the parent's frame; `name` belongs to the
    // compiled stylesheet.
    void SetBinding(const SQName* name, Xpath::CValue* value);

    // Evaluation wrappers: code 43 for evaluation, 44 for conversion, 46 for a value that
    // should be a node-set, 42 for attribute value templates.
    void Evaluate(const Xpath::CExpression* expression, TRefPtr<Xpath::CValue>& value);
    bool EvaluateBoolean(const Xpath::CExpression* expression);
    void EvaluateString(const Xpath::CExpression* expression, DomString& text);
    void EvaluateNodeSet(const Xpath::CExpression* expression, TRefPtr<Xpath::CNodeSet>& nodes);
    void EvaluateAvt(const CAvt* avt, DomString& text);
    void ConvertToString(Xpath::CValue* value, DomString& text);
    // Iteration of a selected node-set; a failure of its lazy evaluation is code 43.
    void CreateIterator(Xpath::CNodeSet* nodes, TRefPtr<Xpath::CNodeIterator>& iterator);
    void Advance(Xpath::CNodeIterator* iterator);
    // The number of nodes of a selected node-set, evaluated as iteration is.
    int32_t CountNodes(Xpath::CNodeSet* nodes);
    // The XPath context of this instruction at the current node.
    void MakeXpathContext(TRefPtr<Xpath::CContext>& context);

    // Result wrappers: output failures become fatal code 50.
    void StartDocumentOutput();
    void EndDocumentOutput();
    void StartElement(DomStringView name, DomStringView uri);
    void EndElement();
    void StartAttribute(DomStringView name, DomStringView uri);
    void EndAttribute();
    void StartNamespace(DomStringView prefix);
    void EndNamespace();
    void Characters(const DomChar* text, int length, bool disableEscaping);
    void StartComment();
    void EndComment();
    void ProcessingInstruction(DomStringView target, DomStringView data);
    void Namespace(DomStringView prefix, DomStringView uri);
    void Attribute(DomStringView name, DomStringView uri, DomStringView value);
    // Copies a recorded result tree fragment into the result.
    void ReplayFragment(const CEventBuffer* buffer);

    // Reports with this instruction's location and the current node, then goes on.
    void RaiseRecoverable(int code, const DomString& argument1 = DomString(),
                          const DomString& argument2 = DomString());
    // Reports, then throws.
    [[noreturn]] void RaiseFatal(int code, const DomString& argument1 = DomString(),
                                 const DomString& argument2 = DomString());

private:
    void Enter();
    void EnterBinding();
    void Raise(int severity, int code, const DomString& argument1, const DomString& argument2, bool toThrow);
    [[noreturn]] void WrapFailure(int code, Core::IException* failure);
    [[noreturn]] void WrapOutputFailure(Core::IException* failure);

    uint32_t m_nFlags = 0;
    CRuntime* m_pRuntime;
    CResultTree* m_pResult;
    CInstruction* m_pInstruction = nullptr;
    Xpath::CNodeIterator* m_pNodes = nullptr;
    CVariableFrame* m_pFrame = nullptr;
    TRefPtr<CVariableFrame> m_pOwnFrame;  // held when this context opened the frame
    CTemplate* m_pCurrentTemplate = nullptr;
    CExecutionContext* m_pParent = nullptr;
    int m_nFrameMark = 0;
    bool m_bBindingPending = false;
    const SQName* m_pBindingName = nullptr;
    TRefPtr<Xpath::CValue> m_pBindingValue;
};

}  // namespace XsltPrivate
