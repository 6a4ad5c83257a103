// Scope chains and identifier resolution.
#include "ecmascript/Context.h"

#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"

namespace EcmaScript {

CContext::CContext(CGlobalObject* global) : m_pGlobal(global), m_pVariableObject(global), m_pThis(global) {
    PushScope(global);
}

CContext::CContext(CGlobalObject* global, CObject* activation, CObject* thisObject, const CFunctionBody* body)
    : m_apInline{global, activation, nullptr},
      m_nDepth(2),
      m_pGlobal(global),
      m_pVariableObject(activation),
      m_pThis(thisObject ? thisObject : global),
      m_pActivation(activation),
      m_pPlainOwner(body),
      m_nPlainDepth(2) {}

CContext::CContext(const CContext& caller)
    : m_pGlobal(caller.m_pGlobal),
      m_pVariableObject(caller.m_pVariableObject),
      m_pThis(caller.m_pThis),
      m_pActivation(caller.m_pActivation),
      m_pPlainOwner(caller.m_pPlainOwner),
      m_nPlainDepth(caller.m_nPlainDepth) {
    for (int i = 0; i < caller.m_nDepth; ++i) PushScope(caller.GetScope(i));
}

void CContext::PushScope(CObject* object) {
    if (m_nDepth < kInline) {
        m_apInline[m_nDepth] = object;
    } else {
        m_aMore.Add(object);
    }
    ++m_nDepth;
}

void CContext::PopScope() {
    --m_nDepth;
    if (m_nDepth < kInline) {
        m_apInline[m_nDepth] = nullptr;
    } else {
        m_aMore.RemoveLast();
    }
}

// Variable scopes (the global and activation objects) are searched in their own table
// directly; any other object of the chain through HasProperty.
CObject* CContext::FindScope(const CName& name, SPropertyEntry** entry) const {
    for (int i = m_nDepth - 1; i >= 0; --i) {
        CObject* scope = GetScope(i);
        if (!scope->IsVariableScope()) {
            if (scope->HasProperty(name)) return scope;
        } else if (SPropertyEntry* found = scope->FindOwn(name)) {
            if (entry) *entry = found;
            return scope;
        }
    }
    return nullptr;
}

void CContext::Resolve(const CName& name, CReference& reference) const { reference.pBase = FindScope(name); }

TRefPtr<CValue> CContext::Lookup(const CName& name) const {
    for (int i = m_nDepth - 1; i >= 0; --i) {
        CObject* scope = GetScope(i);
        if (scope->IsVariableScope()) {
            SPropertyEntry* entry = scope->FindOwn(name);
            if (!entry) continue;
            if (entry->nNativeIndex >= 0) return scope->GetNative(entry->nNativeIndex);
            return entry->pValue;
        }
        if (scope->HasProperty(name)) return scope->Get(name);
    }
    throw new CRuntimeError(CRuntimeError::InvalidReference, new CReferenceValue(nullptr, name));
}

void CContext::Assign(const CName& name, CValue* value) const { AssignTo(FindScope(name), name, value); }

void CContext::AssignTo(CObject* base, const CName& name, CValue* value) const {
    if (!base) base = m_pGlobal;
    if (!base->IsVariableScope()) {
        base->Put(name, value);
        return;
    }
    SPropertyEntry* entry = base->FindOwn(name);
    if (!entry) {
        base->GetOwnTable().Add(name, value, 0);
    } else if (entry->nAttributes & ReadOnly) {
        return;
    } else if (entry->nNativeIndex >= 0) {
        base->PutNative(entry->nNativeIndex, value);
    } else {
        entry->pValue = value;
    }
}

}  // namespace EcmaScript
