// The statement nodes of the syntax tree. Execute gives a completion; every statement of a list
// runs through a guard that wraps errors with the statement's line.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Program.h"
#include "ecmascript/private/Expression.h"

namespace EcmaScriptPrivate {

using EcmaScript::CCompletion;

class CStatement : public CRefObject {
public:
    int m_nLine = -1;

    virtual void WriteSource(DomString& text) const = 0;
    virtual CCompletion Execute(CContext& context) = 0;
    DomString WriteSource() const {
        DomString text;
        WriteSource(text);
        return text;
    }
};

using TStatementPtr = TRefPtr<CStatement>;
using CStatementList = TArray<TStatementPtr>;

// Runs the statements in order through the guard; stops at the first completion that is not
// normal. The value is that of the last statement that gave one.
CCompletion ExecuteList(const CStatementList& statements, CContext& context);
// "s1 s2 ... " with a blank after each statement.
void WriteList(DomString& text, const CStatementList& statements);

class CEmptyStatement : public CStatement {
public:
    void WriteSource(DomString& text) const override { text += u";"; }
    CCompletion Execute(CContext&) override { return CCompletion(); }
};

class CBlockStatement : public CStatement {
public:
    CStatementList m_aStatements;
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override { return ExecuteList(m_aStatements, context); }
};

class CVariableDeclaration : public CRefObject {
public:
    CVariableDeclaration(const CName& name, CExpression* initialiser) : m_name(name), m_pInitialiser(initialiser) {}
    void WriteSource(DomString& text) const;
    // Assigns the initialiser, if any, to the name as an identifier.
    void Initialise(CContext& context) const;
    const CName& GetName() const { return m_name; }

private:
    CName m_name;
    TExpressionPtr m_pInitialiser;
};

using CDeclarationList = TArray<TRefPtr<CVariableDeclaration>>;

class CVariableStatement : public CStatement {
public:
    CDeclarationList m_aDeclarations;
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;
};

class CExpressionStatement : public CStatement {
public:
    explicit CExpressionStatement(CExpression* expression) : m_pExpression(expression) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;

private:
    TExpressionPtr m_pExpression;
};

class CIfStatement : public CStatement {
public:
    CIfStatement(CExpression* condition, CStatement* thenStatement, CStatement* elseStatement)
        : m_pCondition(condition), m_pThen(thenStatement), m_pElse(elseStatement) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;

private:
    TExpressionPtr m_pCondition;
    TStatementPtr m_pThen, m_pElse;
};

class CWhileStatement : public CStatement {
public:
    CWhileStatement(CExpression* condition, CStatement* body) : m_pCondition(condition), m_pBody(body) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;

private:
    TExpressionPtr m_pCondition;
    TStatementPtr m_pBody;
};

class CForStatement : public CStatement {
public:
    CDeclarationList m_aDeclarations;
    bool m_bHasDeclarations = false;
    TExpressionPtr m_pInitial, m_pCondition, m_pUpdate;
    TStatementPtr m_pBody;
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;
};

class CForInStatement : public CStatement {
public:
    TRefPtr<CVariableDeclaration> m_pDeclaration;
    TExpressionPtr m_pTarget, m_pObject;
    TStatementPtr m_pBody;
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;
};

class CContinueStatement : public CStatement {
public:
    void WriteSource(DomString& text) const override { text += u"continue;"; }
    CCompletion Execute(CContext&) override { return CCompletion{CCompletion::Continue, nullptr}; }
};

class CBreakStatement : public CStatement {
public:
    void WriteSource(DomString& text) const override { text += u"break;"; }
    CCompletion Execute(CContext&) override { return CCompletion{CCompletion::Break, nullptr}; }
};

class CReturnStatement : public CStatement {
public:
    explicit CReturnStatement(CExpression* expression) : m_pExpression(expression) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;

private:
    TExpressionPtr m_pExpression;
};

class CWithStatement : public CStatement {
public:
    CWithStatement(CExpression* object, CStatement* body) : m_pObject(object), m_pBody(body) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext& context) override;

private:
    TExpressionPtr m_pObject;
    TStatementPtr m_pBody;
};

// A function declaration's place among the source elements: it does nothing when run.
class CFunctionDeclaration : public CStatement {
public:
    explicit CFunctionDeclaration(EcmaScript::CFunctionBody* body) : m_pBody(body) {}
    void WriteSource(DomString& text) const override;
    CCompletion Execute(CContext&) override { return CCompletion(); }

private:
    TRefPtr<EcmaScript::CFunctionBody> m_pBody;
};

}  // namespace EcmaScriptPrivate
