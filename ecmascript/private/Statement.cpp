// Execution and source text of the statement nodes.
#include "ecmascript/private/Statement.h"

#include <new>
#include <stdexcept>

#include "ecmascript/Conversions.h"
#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

// Wraps what a statement throws with its line, so that the innermost statement with a line
// decides the reported line. Statements without a line (made by new Function) let the error
// pass to the statement that called them.
CCompletion ExecuteGuarded(CStatement& statement, CContext& context) {
    try {
        return statement.Execute(context);
    } catch (CEcmaScriptException*) {
        throw;
    } catch (CRuntimeError* error) {
        if (statement.m_nLine < 0) throw;
        throw new CEcmaScriptException(error, statement.m_nLine, error->GetValue(), error->GetObject());
    } catch (Core::IException* error) {
        if (statement.m_nLine < 0) throw;
        throw new CEcmaScriptException(error, statement.m_nLine);
    } catch (std::bad_alloc&) {
        throw new CEcmaScriptException(new CRuntimeError(CRuntimeError::OutOfMemory), statement.m_nLine);
    } catch (std::length_error&) {
        throw new CEcmaScriptException(new CRuntimeError(CRuntimeError::OutOfMemory), statement.m_nLine);
    }
}

// One round of a loop body. Returns true when the loop must stop; `result` then holds the
// completion the loop gives.
bool RunBody(CStatement* body, CContext& context, CCompletion& result) {
    CCompletion completion = ExecuteGuarded(*body, context);
    if (completion.pValue) result.pValue = completion.pValue;
    if (completion.nKind == CCompletion::Break) return true;
    if (completion.nKind == CCompletion::Return) {
        result = completion;
        return true;
    }
    return false;
}

bool Test(CExpression* condition, CContext& context) { return condition->EvaluateCondition(context); }

void WriteDeclarations(DomString& text, const CDeclarationList& declarations) {
    for (int i = 0; i < declarations.GetSize(); ++i) {
        if (i) text += u", ";
        declarations[i]->WriteSource(text);
    }
}

}  // namespace

CCompletion ExecuteList(const CStatementList& statements, CContext& context) {
    CCompletion result;
    for (const TStatementPtr& statement : statements) {
        CCompletion completion = ExecuteGuarded(*statement, context);
        if (completion.pValue) result.pValue = std::move(completion.pValue);
        if (completion.nKind != CCompletion::Normal) {
            result.nKind = completion.nKind;
            return result;
        }
    }
    return result;
}

void WriteList(DomString& text, const CStatementList& statements) {
    for (const TStatementPtr& statement : statements) {
        statement->WriteSource(text);
        text += u" ";
    }
}

void CBlockStatement::WriteSource(DomString& text) const {
    text += u"{ ";
    WriteList(text, m_aStatements);
    text += u"}";
}

void CVariableDeclaration::WriteSource(DomString& text) const {
    text += m_name.GetText();
    if (m_pInitialiser) {
        text += u" = ";
        m_pInitialiser->WriteSource(text);
    }
}

void CVariableDeclaration::Initialise(CContext& context) const {
    if (!m_pInitialiser) return;
    TRefPtr<CValue> value = m_pInitialiser->EvaluateValue(context);
    context.Assign(m_name, value);
}

void CVariableStatement::WriteSource(DomString& text) const {
    text += u"var ";
    WriteDeclarations(text, m_aDeclarations);
    text += u";";
}

CCompletion CVariableStatement::Execute(CContext& context) {
    for (const TRefPtr<CVariableDeclaration>& declaration : m_aDeclarations) declaration->Initialise(context);
    return CCompletion();
}

void CExpressionStatement::WriteSource(DomString& text) const {
    m_pExpression->WriteSource(text);
    text += u";";
}

CCompletion CExpressionStatement::Execute(CContext& context) {
    return CCompletion{CCompletion::Normal, m_pExpression->EvaluateValue(context)};
}

void CIfStatement::WriteSource(DomString& text) const {
    text += u"if (";
    m_pCondition->WriteSource(text);
    text += u") ";
    m_pThen->WriteSource(text);
    if (m_pElse) {
        text += u" else ";
        m_pElse->WriteSource(text);
    }
}

CCompletion CIfStatement::Execute(CContext& context) {
    if (Test(m_pCondition, context)) return ExecuteGuarded(*m_pThen, context);
    if (m_pElse) return ExecuteGuarded(*m_pElse, context);
    return CCompletion();
}

void CWhileStatement::WriteSource(DomString& text) const {
    text += u"while (";
    m_pCondition->WriteSource(text);
    text += u") ";
    m_pBody->WriteSource(text);
}

CCompletion CWhileStatement::Execute(CContext& context) {
    CCompletion result;
    while (Test(m_pCondition, context)) {
        if (RunBody(m_pBody, context, result)) break;
    }
    if (result.nKind != CCompletion::Return) result.nKind = CCompletion::Normal;
    return result;
}

void CForStatement::WriteSource(DomString& text) const {
    text += u"for (";
    if (m_bHasDeclarations) {
        text += u"var ";
        WriteDeclarations(text, m_aDeclarations);
    } else if (m_pInitial) {
        m_pInitial->WriteSource(text);
    }
    text += u"; ";
    if (m_pCondition) m_pCondition->WriteSource(text);
    text += u"; ";
    if (m_pUpdate) m_pUpdate->WriteSource(text);
    text += u") ";
    m_pBody->WriteSource(text);
}

CCompletion CForStatement::Execute(CContext& context) {
    for (const TRefPtr<CVariableDeclaration>& declaration : m_aDeclarations) declaration->Initialise(context);
    if (m_pInitial) m_pInitial->EvaluateValue(context);
    CCompletion result;
    while (!m_pCondition || Test(m_pCondition, context)) {
        if (RunBody(m_pBody, context, result)) break;
        if (m_pUpdate) m_pUpdate->EvaluateValue(context);
    }
    if (result.nKind != CCompletion::Return) result.nKind = CCompletion::Normal;
    return result;
}

void CForInStatement::WriteSource(DomString& text) const {
    text += u"for (";
    if (m_pDeclaration) {
        text += u"var ";
        m_pDeclaration->WriteSource(text);
    } else {
        m_pTarget->WriteSource(text);
    }
    text += u" in ";
    m_pObject->WriteSource(text);
    text += u") ";
    m_pBody->WriteSource(text);
}

CCompletion CForInStatement::Execute(CContext& context) {
    if (m_pDeclaration) m_pDeclaration->Initialise(context);
    TRefPtr<CObject> object = ToObject(context.GetGlobal(), m_pObject->EvaluateValue(context));
    TRefPtr<CPropertyEnumerator> enumerator = object->Enumerate();
    CCompletion result;
    CName name;
    while (enumerator->Next(name)) {
        TRefPtr<CValue> text = CValue::String(name.GetText());
        if (m_pDeclaration) {
            context.Assign(m_pDeclaration->GetName(), text);
        } else {
            CReference reference;
            if (m_pTarget->EvaluateReference(context, reference)) {
                CObject* base = reference.pBase ? reference.pBase.Get() : context.GetGlobal();
                base->Put(reference.name, text);
            } else {
                PutValue(context.GetGlobal(), m_pTarget->Evaluate(context), text);
            }
        }
        if (RunBody(m_pBody, context, result)) break;
    }
    if (result.nKind != CCompletion::Return) result.nKind = CCompletion::Normal;
    return result;
}

void CReturnStatement::WriteSource(DomString& text) const {
    text += u"return";
    if (m_pExpression) {
        text += u" ";
        m_pExpression->WriteSource(text);
    }
    text += u";";
}

CCompletion CReturnStatement::Execute(CContext& context) {
    TRefPtr<CValue> value = m_pExpression ? m_pExpression->EvaluateValue(context) : TRefPtr<CValue>(CValue::Undefined());
    return CCompletion{CCompletion::Return, std::move(value)};
}

void CWithStatement::WriteSource(DomString& text) const {
    text += u"with (";
    m_pObject->WriteSource(text);
    text += u") ";
    m_pBody->WriteSource(text);
}

CCompletion CWithStatement::Execute(CContext& context) {
    TRefPtr<CObject> object = ToObject(context.GetGlobal(), m_pObject->EvaluateValue(context));
    context.PushScope(object);
    struct SPop {
        CContext& context;
        ~SPop() { context.PopScope(); }
    } pop{context};
    return ExecuteGuarded(*m_pBody, context);
}

void CFunctionDeclaration::WriteSource(DomString& text) const { text += m_pBody->WriteSource(); }

}  // namespace EcmaScriptPrivate
