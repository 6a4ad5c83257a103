// new Function(p1, ..., pn, body): the parameter texts joined by "," and the body are parsed
// as a function named "anonymous"; Function.prototype.toString renders functions as source.
#include "ecmascript/private/FunctionConstructor.h"

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/Builtins.h"
#include "ecmascript/private/FunctionObject.h"
#include "ecmascript/private/Parser.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum { FunctionToString = 0 };

// Parses with a handler that stops at the first error; any error gives the runtime error
// `code` with the text as its value.
template <class FParse>
void ParseOrFail(const DomString& text, int code, FParse parse) {
    CParser parser;
    parser.SetErrorHandler(new CFirstErrorHandler);
    try {
        parse(parser);
    } catch (Core::IException* error) {
        delete error;
        throw new CRuntimeError(code, CValue::String(text));
    }
    if (parser.HasErrors()) throw new CRuntimeError(code, CValue::String(text));
}

}  // namespace

CFunctionPrototype::CFunctionPrototype(CGlobalObject* global) : CObject(global, global->GetObjectPrototype()) {
    DefineValue(u"length", CValue::Integer(0), ReadOnly | DontEnum | DontDelete);
}

TRefPtr<CValue> CFunctionPrototype::CallNative(int index, CObject* thisObject, const CValueList&) {
    if (index != FunctionToString) return CValue::Undefined();
    if (auto* function = dynamic_cast<CFunctionObject*>(thisObject)) return CValue::String(function->GetBody()->WriteSource());
    if (thisObject && thisObject->IsCallable()) return CValue::String(u"function anonymous() { }");
    throw new CRuntimeError(CRuntimeError::ToStringOperandNotFunction, thisObject ? CValue::Object(thisObject) : nullptr);
}

CFunctionConstructor::CFunctionConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CFunctionConstructor::Construct(const CValueList& arguments) {
    DomString parameters, body;
    int count = arguments.GetSize();
    for (int i = 0; i + 1 < count; ++i) {
        if (i) parameters += u",";
        parameters += ToString(arguments[i]);
    }
    if (count > 0) body = ToString(arguments[count - 1]);
    TRefPtr<CFunctionBody> function = new CFunctionBody;
    function->m_name = CName(u"anonymous");
    ParseOrFail(parameters, CRuntimeError::InvalidParameterList,
                [&](CParser& parser) { parser.ParseFormalParameters(parameters, function); });
    ParseOrFail(body, CRuntimeError::InvalidFunctionBody,
                [&](CParser& parser) { parser.ParseFunctionBody(body, function); });
    return new CFunctionObject(GetGlobal(), function);
}

TRefPtr<CValue> CFunctionConstructor::Call(CObject*, const CValueList& arguments) {
    return CValue::Object(Construct(arguments));
}

TRefPtr<CObject> MakeFunctionPrototype(CGlobalObject* global) { return new CFunctionPrototype(global); }

void InstallFunction(CGlobalObject* global) {
    CObject* prototype = global->GetFunctionPrototype();
    prototype->AddFunction(u"toString", FunctionToString, 0, DontEnum);
    TRefPtr<CObject> constructor = new CFunctionConstructor(global);
    global->InstallConstructor(BuiltinFunction, u"Function", constructor, prototype, 1);
}

}  // namespace EcmaScriptPrivate
