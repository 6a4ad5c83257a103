// An execution context: the scope chain (innermost last), the variable object that receives
// declarations, and `this`. Contexts live on the stack of whoever runs code; the objects of
// the chain are kept alive by those who put them there (the interpreter, the call, the `with`
// statement, the caller of eval), so the chain does not count them.
#pragma once
#include "core/Array.h"
#include "ecmascript/Object.h"

namespace EcmaScript {

class CFunctionBody;
class CGlobalObject;

class CContext {
public:
    // Global code: the global object is chain, variable object and `this`.
    explicit CContext(CGlobalObject* global);
    // Function code of `body`: the global object and the activation object; `this` defaults to
    // global.
    CContext(CGlobalObject* global, CObject* activation, CObject* thisObject, const CFunctionBody* body);
    // Eval code: a copy of the caller's chain, variable object and `this`.
    CContext(const CContext& caller);
    CContext& operator=(const CContext&) = delete;

    CGlobalObject* GetGlobal() const { return m_pGlobal; }
    CObject* GetVariableObject() const { return m_pVariableObject; }
    CObject* GetThis() const { return m_pThis; }
    // The activation object of function code, none in global code.
    CObject* GetActivation() const { return m_pActivation; }

    int GetScopeDepth() const { return m_nDepth; }
    // True while the chain is the one the context began with and the code is that of `owner`
    // (none for global code): its identifiers then live in the activation or global object.
    bool IsPlainFor(const CFunctionBody* owner) const { return m_nDepth == m_nPlainDepth && m_pPlainOwner == owner; }
    CObject* GetScope(int index) const { return index < kInline ? m_apInline[index] : m_aMore[index - kInline]; }
    void PushScope(CObject* object);
    void PopScope();

    // Finds the innermost object of the chain that has the name; none gives a reference
    // without base.
    void Resolve(const CName& name, CReference& reference) const;
    // The base alone, also giving the entry when the base is a variable scope (else `entry`
    // stays as it was).
    CObject* FindScope(const CName& name, SPropertyEntry** entry = nullptr) const;
    // GetValue of the identifier: fails with "GetValue: invalid reference" when unresolved.
    TRefPtr<CValue> Lookup(const CName& name) const;
    // PutValue of the identifier: an unresolved name lands on the global object.
    void Assign(const CName& name, CValue* value) const;
    // [[Put]] on a resolved base, none meaning the global object.
    void AssignTo(CObject* base, const CName& name, CValue* value) const;

private:
    static const int kInline = 3;
    CObject* m_apInline[kInline] = {};
    TArray<CObject*> m_aMore;
    int m_nDepth = 0;
    CGlobalObject* m_pGlobal;
    CObject* m_pVariableObject;
    TRefPtr<CObject> m_pThis;
    CObject* m_pActivation = nullptr;
    const CFunctionBody* m_pPlainOwner = nullptr;
    int m_nPlainDepth = 1;
};

}  // namespace EcmaScript
