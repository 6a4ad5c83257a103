// The global object of an interpreter: the global functions, and the standard constructors and
// prototypes, which every object reaches through its owning global object.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScript {

class CInterpreter;

// The standard constructors, each with its prototype object.
enum EBuiltin {
    BuiltinObject,
    BuiltinFunction,
    BuiltinArray,
    BuiltinString,
    BuiltinBoolean,
    BuiltinNumber,
    BuiltinDate,
    BuiltinRegExp,
    BuiltinCount
};

class CGlobalObject : public CObject {
public:
    explicit CGlobalObject(CInterpreter* interpreter);
    ~CGlobalObject() override;

    TRefPtr<CValue> CallNative(int index, CObject* thisObject, const CValueList& arguments) override;

    // Empties the tables and prototypes of this object and of the standard constructors and
    // prototypes, so that the cycles among them are broken.
    virtual void Clear();
    virtual CInterpreter* GetInterpreter() const { return m_pInterpreter; }
    virtual CObject* GetConstructor(int builtin) const { return m_apConstructors[builtin]; }
    virtual CObject* GetPrototypeObject(int builtin) const { return m_apPrototypes[builtin]; }

    CObject* GetObjectPrototype() const { return m_apPrototypes[BuiltinObject]; }
    CObject* GetFunctionPrototype() const { return m_apPrototypes[BuiltinFunction]; }
    CObject* GetArrayPrototype() const { return m_apPrototypes[BuiltinArray]; }

    // Called by the installers of the built-ins: records the pair, links "prototype" (ReadOnly,
    // DontEnum, DontDelete) and "constructor" (DontEnum), gives the constructor its "length"
    // and defines it on this object under `name` (DontEnum). A null constructor records only
    // the prototype.
    void InstallConstructor(int builtin, const DomChar* name, CObject* constructor, CObject* prototype, int length);

private:
    void AddGlobalFunctions();

    CInterpreter* m_pInterpreter;
    TRefPtr<CObject> m_apConstructors[BuiltinCount];
    TRefPtr<CObject> m_apPrototypes[BuiltinCount];
};

}  // namespace EcmaScript
