// The one place where the standard constructors and prototypes are installed into a new global
// object. The global object first makes the Object and Function prototypes (every built-in
// function needs the latter), then runs the installers below in order. An installer makes its
// constructor and prototype, fills them (AddFunction, DefineValue) and hands them to
// CGlobalObject::InstallConstructor; an installer of a plain object such as Math defines it on
// the global object with DontEnum.
//
// To add a built-in: declare its installer here and append it to kBuiltinInstallers.
#pragma once
#include "ecmascript/GlobalObject.h"

namespace EcmaScriptPrivate {

using FInstallBuiltin = void (*)(EcmaScript::CGlobalObject* global);

// Object and Function prototypes, made before any installer runs.
TRefPtr<EcmaScript::CObject> MakeObjectPrototype(EcmaScript::CGlobalObject* global);
TRefPtr<EcmaScript::CObject> MakeFunctionPrototype(EcmaScript::CGlobalObject* global);

void InstallObject(EcmaScript::CGlobalObject* global);
void InstallFunction(EcmaScript::CGlobalObject* global);
void InstallArray(EcmaScript::CGlobalObject* global);
void InstallString(EcmaScript::CGlobalObject* global);
void InstallBoolean(EcmaScript::CGlobalObject* global);
void InstallNumber(EcmaScript::CGlobalObject* global);
void InstallDate(EcmaScript::CGlobalObject* global);
void InstallRegExp(EcmaScript::CGlobalObject* global);
void InstallMath(EcmaScript::CGlobalObject* global);

inline constexpr FInstallBuiltin kBuiltinInstallers[] = {
    InstallObject,
    InstallFunction,
    InstallArray,
    InstallString,
    InstallBoolean,
    InstallNumber,
    InstallDate,
    InstallRegExp,
    InstallMath,
};

}  // namespace EcmaScriptPrivate
