// Activation and arguments objects of function calls.
#include "ecmascript/private/ActivationObject.h"

#include "ecmascript/GlobalObject.h"
#include "ecmascript/private/BlockCache.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

const CName& ArgumentsName() {
    static const CName name(u"arguments");
    return name;
}

constexpr int32_t HashOf(const char16_t* text) {
    uint32_t h = 0;
    for (; *text; ++text) h = h * 9 + *text;
    return static_cast<int32_t>(h & 0x7FFFFFFF);
}

// Lookups of other names pass the test by the hash alone.
constexpr int32_t kArgumentsHash = HashOf(u"arguments");

// "0", or 1 to 4 digits without a leading zero; -1 for any other name.
int SlotIndex(const CName& name) {
    if (name.GetIndex() >= 0) return name.GetIndex() < 10000 ? name.GetIndex() : -1;
    const DomString& text = name.GetText();
    if (text.empty() || text.size() > 4 || (text[0] == u'0' && text.size() > 1)) return -1;
    int index = 0;
    for (DomChar unit : text) {
        if (unit < u'0' || unit > u'9') return -1;
        index = index * 10 + (unit - u'0');
    }
    return index;
}

}  // namespace

CActivationObject::CActivationObject(CGlobalObject* global, CObject* callee, CFunctionBody* body,
                                     const CValueList& arguments)
    : CObject(global, nullptr), m_pCallee(callee), m_pBody(body), m_pArguments(&arguments) {
    SetVariableScope();
}

void* CActivationObject::operator new(size_t size) { return TBlockCache<sizeof(CActivationObject)>::Allocate(size); }

void CActivationObject::operator delete(void* block, size_t size) {
    TBlockCache<sizeof(CActivationObject)>::Free(block, size);
}

// The table goes first: some of its entries are members of this object.
CActivationObject::~CActivationObject() { GetOwnTable().Clear(); }

TRefPtr<CActivationObject> CActivationObject::Make(CGlobalObject* global, CObject* callee, CFunctionBody* body,
                                                   const CValueList& arguments) {
    TArray<TRefPtr<CActivationObject>>& spares = body->m_aSpareActivations;
    if (spares.GetSize() > 0 && spares.Last()->GetGlobal() == global) {
        TRefPtr<CActivationObject> activation = std::move(spares.Last());
        spares.RemoveLast();
        activation->m_pCallee = callee;
        activation->m_pArguments = &arguments;
        const TArray<CFunctionBody::SFrameSlot>& frame = body->GetFrame();
        for (int i = 0; i < frame.GetSize(); ++i) {
            int argument = frame[i].nArgument;
            activation->m_aEntries[i].pValue = argument >= 0 ? arguments[argument] : CValue::Undefined();
        }
        return activation;
    }
    TRefPtr<CActivationObject> activation = new CActivationObject(global, callee, body, arguments);
    activation->DefineVariables(arguments);
    return activation;
}

void CActivationObject::Recycle(TRefPtr<CActivationObject>& activation) {
    static const int kMaxSpares = 64;
    TArray<TRefPtr<CActivationObject>>& spares = activation->m_pBody->m_aSpareActivations;
    if (activation->GetRefCount() != 1 || !activation->IsReusable() || spares.GetSize() >= kMaxSpares) {
        activation = nullptr;
        return;
    }
    for (int i = 0; i < activation->m_nInlineEntries; ++i) activation->m_aEntries[i].pValue = nullptr;
    spares.Add(std::move(activation));
}

// Holds just the frame, all in the entries inside the object, and nothing else.
bool CActivationObject::IsReusable() {
    return !m_pArgumentsObject && m_nInlineEntries == m_nDefinedCount && HoldsOnlyFrame();
}

void CActivationObject::DefineVariables(const CValueList& arguments) {
    const TArray<CFunctionBody::SFrameSlot>& frame = m_pBody->GetFrame();
    CPropertyTable& table = GetOwnTable();
    for (int i = 0; i < frame.GetSize(); ++i) {
        const CFunctionBody::SFrameSlot& slot = frame[i];
        CValue* value = slot.nArgument >= 0 ? arguments[slot.nArgument] : CValue::Undefined();
        if (i < kInlineEntries) {
            table.AddExternal(&m_aEntries[i], slot.name, value, 0);
            m_nInlineEntries = i + 1;
        } else {
            table.Add(slot.name, value, 0);
        }
    }
    if (m_pBody->DeclaresArguments()) Define(ArgumentsName(), CValue::Undefined(), 0, false);
    m_nDefinedCount = table.GetCount();
}

SPropertyEntry* CActivationObject::FindOwn(const CName& name) {
    MakeArgumentsIfNamed(name);
    return CObject::FindOwn(name);
}

void CActivationObject::MakeArgumentsIfNamed(const CName& name) {
    if (m_pArgumentsObject || name.GetHash() != kArgumentsHash || !m_pArguments || !(name == ArgumentsName())) return;
    m_pArgumentsObject = new CArgumentsObject(GetGlobal(), this, m_pCallee, m_pBody, *m_pArguments);
    if (!GetOwnTable().Find(name)) CObject::Define(name, CValue::Object(m_pArgumentsObject), DontDelete, false);
}

TRefPtr<CValue> CActivationObject::Get(const CName& name) {
    MakeArgumentsIfNamed(name);
    return CObject::Get(name);
}

void CActivationObject::Put(const CName& name, CValue* value) {
    MakeArgumentsIfNamed(name);
    CObject::Put(name, value);
}

bool CActivationObject::CanPut(const CName& name) {
    MakeArgumentsIfNamed(name);
    return CObject::CanPut(name);
}

bool CActivationObject::HasProperty(const CName& name) {
    MakeArgumentsIfNamed(name);
    return CObject::HasProperty(name);
}

bool CActivationObject::Delete(const CName& name) {
    MakeArgumentsIfNamed(name);
    return CObject::Delete(name);
}

void CActivationObject::Define(const CName& name, CValue* value, uint32_t attributes, bool replace) {
    if (!replace) MakeArgumentsIfNamed(name);
    CObject::Define(name, value, attributes, replace);
}

void CActivationObject::Detach() {
    m_pArguments = nullptr;
    if (m_pArgumentsObject) m_pArgumentsObject->Detach();
}

CArgumentsObject::CArgumentsObject(CGlobalObject* global, CObject* activation, CObject* callee, CFunctionBody* body,
                                   const CValueList& arguments)
    : CObject(global, global->GetObjectPrototype()), m_pActivation(activation), m_pBody(body) {
    DefineValue(u"callee", CValue::Object(callee), DontEnum);
    DefineValue(u"length", CValue::Integer(arguments.GetSize()), DontEnum);
    m_aSlots.SetSize(arguments.GetSize());
    for (int i = 0; i < arguments.GetSize(); ++i) {
        SSlot& slot = m_aSlots[i];
        if (i < body->m_aParameters.GetSize()) {
            slot.pParameter = &body->m_aParameters[i];
        } else {
            slot.pParameter = nullptr;
            slot.pValue = arguments[i];
        }
    }
}

CArgumentsObject::SSlot* CArgumentsObject::FindSlot(const CName& name) {
    int index = SlotIndex(name);
    return index >= 0 && index < m_aSlots.GetSize() ? &m_aSlots[index] : nullptr;
}

TRefPtr<CValue> CArgumentsObject::Get(const CName& name) {
    SSlot* slot = FindSlot(name);
    if (!slot) return CObject::Get(name);
    if (slot->bDeleted) return GetPrototype()->Get(name);
    if (slot->pParameter && m_pActivation) return m_pActivation->Get(*slot->pParameter);
    return slot->pValue ? slot->pValue : TRefPtr<CValue>(CValue::Undefined());
}

// Writing a deleted slot revives it, tied to its parameter again.
void CArgumentsObject::Put(const CName& name, CValue* value) {
    SSlot* slot = FindSlot(name);
    if (!slot) {
        CObject::Put(name, value);
        return;
    }
    slot->bDeleted = false;
    if (slot->pParameter && m_pActivation) {
        m_pActivation->Put(*slot->pParameter, value);
    } else {
        slot->pValue = value;
    }
}

bool CArgumentsObject::CanPut(const CName& name) {
    SSlot* slot = FindSlot(name);
    if (!slot) return CObject::CanPut(name);
    return !slot->bDeleted || GetPrototype()->CanPut(name);
}

bool CArgumentsObject::HasProperty(const CName& name) {
    SSlot* slot = FindSlot(name);
    if (!slot) return CObject::HasProperty(name);
    return !slot->bDeleted || GetPrototype()->HasProperty(name);
}

bool CArgumentsObject::Delete(const CName& name) {
    SSlot* slot = FindSlot(name);
    if (!slot) return CObject::Delete(name);
    slot->bDeleted = true;
    slot->pValue = nullptr;
    return true;
}

void CArgumentsObject::Detach() {
    if (!m_pActivation) return;
    for (SSlot& slot : m_aSlots) {
        if (slot.pParameter && !slot.bDeleted) slot.pValue = m_pActivation->Get(*slot.pParameter);
        slot.pParameter = nullptr;
    }
    m_pActivation = nullptr;
}

}  // namespace EcmaScriptPrivate
