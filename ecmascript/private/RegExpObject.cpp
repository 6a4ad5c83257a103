// RegExp objects, constructor and prototype.
#include "ecmascript/private/RegExpObject.h"

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/ArrayObject.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum { NativeSource, NativeGlobal, NativeIgnoreCase, NativeMultiline, NativeLastIndex };
enum { RegExpExec, RegExpTest, RegExpToString };

CRegExpObject* RequireRegExp(CObject* object) {
    auto* regexp = dynamic_cast<CRegExpObject*>(object);
    if (!regexp) throw new CRuntimeError(CRuntimeError::RegExpObjectRequired, object ? CValue::Object(object).Get() : nullptr);
    return regexp;
}

// Each of g, i and m may stand once.
bool ReadFlags(const DomString& flags, bool& global, bool& ignoreCase, bool& multiline) {
    global = ignoreCase = multiline = false;
    for (DomChar unit : flags) {
        bool* flag = unit == u'g' ? &global : unit == u'i' ? &ignoreCase : unit == u'm' ? &multiline : nullptr;
        if (!flag || *flag) return false;
        *flag = true;
    }
    return true;
}

}  // namespace

TRefPtr<CObject> MakeMatchArray(CGlobalObject* global, const DomString& text, const CMatchResult& result) {
    TRefPtr<CArrayObject> array = new CArrayObject(global);
    for (int n = 0; n < result.GetCount(); ++n)
        array->Append(result.IsSet(n) ? CValue::String(DomString(result.GetText(text, n))).Get() : CValue::Undefined());
    array->Put(CName(u"index"), CValue::Integer(result.GetStart(0)));
    array->Put(CName(u"input"), CValue::String(text));
    return array.Get();
}

CRegExpObject::CRegExpObject(CGlobalObject* global, CRegExp* regexp)
    : CObject(global, global->GetPrototypeObject(BuiltinRegExp)), m_pRegExp(regexp) {
    const uint32_t fixed = ReadOnly | DontEnum | DontDelete;
    DefineNative(u"source", NativeSource, fixed);
    DefineNative(u"global", NativeGlobal, fixed);
    DefineNative(u"ignoreCase", NativeIgnoreCase, fixed);
    DefineNative(u"multiline", NativeMultiline, fixed);
    DefineNative(u"lastIndex", NativeLastIndex, DontEnum | DontDelete);
}

CRegExpObject* CRegExpObject::From(CValue* value) { return dynamic_cast<CRegExpObject*>(value->GetObject()); }

TRefPtr<CValue> CRegExpObject::Match(const DomString& text, int index) {
    CMatchResult result;
    return CValue::Boolean(m_pRegExp->MatchAt(text, index, result));
}

TRefPtr<CValue> CRegExpObject::GetNative(int index) {
    switch (index) {
        case NativeSource: return CValue::String(m_pRegExp->GetSource());
        case NativeGlobal: return CValue::Boolean(m_pRegExp->GetGlobal());
        case NativeIgnoreCase: return CValue::Boolean(m_pRegExp->GetIgnoreCase());
        case NativeMultiline: return CValue::Boolean(m_pRegExp->GetMultiline());
        case NativeLastIndex: return CValue::Number(m_nLastIndex);
        default: return CValue::Undefined();
    }
}

void CRegExpObject::PutNative(int index, CValue* value) {
    if (index == NativeLastIndex) m_nLastIndex = ToNumber(value);
}

CRegExpPrototype::CRegExpPrototype(CGlobalObject* global) : CObject(global, global->GetObjectPrototype()) {}

TRefPtr<CValue> CRegExpPrototype::CallNative(int index, CObject* thisObject, const CValueList& arguments) {
    CRegExpObject* self = RequireRegExp(thisObject);
    switch (index) {
        case RegExpExec: return Execute(self, arguments[0], true);
        case RegExpTest: return Execute(self, arguments[0], false);
        default: {
            CRegExp* regexp = self->GetRegExp();
            DomString text = u"/" + regexp->GetSource() + u"/";
            if (regexp->GetGlobal()) text += u'g';
            if (regexp->GetIgnoreCase()) text += u'i';
            if (regexp->GetMultiline()) text += u'm';
            return CValue::String(std::move(text));
        }
    }
}

// exec and test: from "lastIndex" if the object is global, else from 0; "lastIndex" is reset to
// 0 on failure, also for a non-global object, and set to the end of the match if global.
TRefPtr<CValue> CRegExpPrototype::Execute(CRegExpObject* self, CValue* argument, bool buildArray) {
    static const CName kLastIndex(u"lastIndex");
    DomString text = ToString(argument);
    bool global = ToBoolean(self->Get(CName(u"global")));
    double start = global ? ToInteger(self->Get(kLastIndex)).GetDouble() : 0;
    CMatchResult result;
    bool found = start >= 0 && start <= static_cast<double>(text.size()) &&
                 self->GetRegExp()->Scan(text, static_cast<int>(start), result);
    if (!found) {
        self->Put(kLastIndex, CValue::Integer(0));
        return buildArray ? CValue::Null() : CValue::Boolean(false);
    }
    if (global) self->Put(kLastIndex, CValue::Integer(result.GetEnd(0)));
    if (!buildArray) return CValue::Boolean(true);
    return CValue::Object(MakeMatchArray(GetGlobal(), text, result));
}

CRegExpConstructor::CRegExpConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CRegExpConstructor::Construct(const CValueList& arguments) {
    CValue* pattern = arguments[0];
    CValue* flags = arguments[1];
    bool flagsGiven = flags->GetType() != TypeUndefined;
    if (CRegExpObject* source = CRegExpObject::From(pattern)) {
        if (flagsGiven) throw new CRuntimeError(CRuntimeError::RegExpObjectRequired, flags);
        return new CRegExpObject(GetGlobal(), source->GetRegExp());
    }
    DomString text = pattern->GetType() == TypeUndefined ? DomString() : ToString(pattern);
    DomString flagText = flagsGiven ? ToString(flags) : DomString();
    bool global, ignoreCase, multiline;
    if (!ReadFlags(flagText, global, ignoreCase, multiline))
        throw new CRuntimeError(CRuntimeError::InvalidRegExpFlags, CValue::String(flagText));
    TRefPtr<CRegExp> regexp = new CRegExp(text, global, ignoreCase, multiline);
    return new CRegExpObject(GetGlobal(), regexp);
}

TRefPtr<CValue> CRegExpConstructor::Call(CObject*, const CValueList& arguments) {
    if (CRegExpObject::From(arguments[0]) && arguments[1]->GetType() == TypeUndefined) return arguments[0];
    return CValue::Object(Construct(arguments));
}

void InstallRegExp(CGlobalObject* global) {
    TRefPtr<CObject> prototype = new CRegExpPrototype(global);
    prototype->AddFunction(u"exec", RegExpExec, 1, DontEnum);
    prototype->AddFunction(u"test", RegExpTest, 1, DontEnum);
    prototype->AddFunction(u"toString", RegExpToString, 0, DontEnum);
    TRefPtr<CObject> constructor = new CRegExpConstructor(global);
    global->InstallConstructor(BuiltinRegExp, u"RegExp", constructor, prototype, 2);
}

}  // namespace EcmaScriptPrivate
