// String objects and the text methods of the String prototype.
#include "ecmascript/private/StringObject.h"

#include <iterator>
#include <utility>
#include <locale.h>
#include <wctype.h>

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/ArrayObject.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum {
    StringToString, StringValueOf, StringCharAt, StringCharCodeAt, StringIndexOf, StringLastIndexOf, StringMatchIndex,
    StringReplaceIndex, StringSearchIndex, StringSplit, StringSubstring, StringToLowerCase, StringToUpperCase
};
enum { StringFromCharCode };

// The simple one-to-one case mapping of the Basic Multilingual Plane comes from the C library's
// Unicode locale, made once; without it only ASCII letters are mapped.
locale_t CaseLocale() {
    static locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    return locale;
}

DomString MapCase(DomString text, bool upper) {
    locale_t locale = CaseLocale();
    for (DomChar& unit : text) {
        if (unit >= 0xD800 && unit <= 0xDFFF) continue;
        wint_t mapped;
        if (locale)
            mapped = upper ? towupper_l(unit, locale) : towlower_l(unit, locale);
        else
            mapped = upper ? (unit >= u'a' && unit <= u'z' ? unit - 32 : unit)
                           : (unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
        if (mapped <= 0xFFFF) unit = static_cast<DomChar>(mapped);
    }
    return text;
}

// ToInteger of the argument (NaN giving 0) clamped to 0..length.
double ClampedPosition(CValue* value, double length) {
    double position = ToInteger(value).GetDouble();
    return position < 0 ? 0 : position > length ? length : position;
}

TRefPtr<CValue> IndexResult(size_t index) {
    return CValue::Integer(index == DomString::npos ? -1 : static_cast<int32_t>(index));
}

TRefPtr<CValue> LastIndexOf(const DomString& text, CValue* search, CValue* start) {
    DomString pattern = ToString(search);
    CNumber number = ToNumber(start);
    double length = static_cast<double>(text.size());
    double position = number.IsNaN() ? length : number.ToInteger().GetDouble();
    position = position < 0 ? 0 : position > length ? length : position;
    return IndexResult(text.rfind(pattern, static_cast<size_t>(position)));
}

TRefPtr<CValue> Split(CGlobalObject* global, const DomString& text, CValue* separatorValue) {
    TRefPtr<CArrayObject> array = new CArrayObject(global);
    if (separatorValue->GetType() == TypeUndefined) {
        array->Append(CValue::String(text));
        return CValue::Object(array.Get());
    }
    DomString separator = ToString(separatorValue);
    if (separator.empty()) {
        for (DomChar unit : text) array->Append(CValue::String(DomString(1, unit)));
        return CValue::Object(array.Get());
    }
    size_t start = 0;
    for (size_t found; (found = text.find(separator, start)) != DomString::npos; start = found + separator.size())
        array->Append(CValue::String(text.substr(start, found - start)));
    array->Append(CValue::String(text.substr(start)));
    return CValue::Object(array.Get());
}

}  // namespace

CStringObject::CStringObject(CGlobalObject* global, CObject* prototype, DomString value) : CObject(global, prototype) {
    SetValue(CValue::String(std::move(value)));
}

void CStringObject::SetValue(CValue* value) {
    m_pValue = value;
    DefineValue(u"length", CValue::Integer(static_cast<int32_t>(value->GetString().size())),
                ReadOnly | DontEnum | DontDelete);
}

CStringPrototype::CStringPrototype(CGlobalObject* global) : CStringObject(global, global->GetObjectPrototype(), u"") {}

TRefPtr<CValue> CStringPrototype::CallNative(int index, CObject* thisObject, const CValueList& arguments) {
    CObject* self = thisObject ? thisObject : GetGlobal();
    if (index == StringToString || index == StringValueOf) {
        if (DomStringView(self->GetClass()) != u"String" || !self->GetValue())
            throw new CRuntimeError(CRuntimeError::StringObjectRequired, CValue::Object(self));
        return self->GetValue();
    }
    DomString text = ToString(CValue::Object(self));
    double length = static_cast<double>(text.size());
    switch (index) {
        case StringCharAt:
        case StringCharCodeAt: {
            double position = ToInteger(arguments[0]).GetDouble();
            bool inside = position >= 0 && position < length;
            if (index == StringCharAt)
                return CValue::String(inside ? DomString(1, text[static_cast<size_t>(position)]) : DomString());
            return inside ? CValue::Integer(text[static_cast<size_t>(position)]) : CValue::Number(CNumber::NaN());
        }
        case StringIndexOf:
            return IndexResult(text.find(ToString(arguments[0]),
                                         static_cast<size_t>(ClampedPosition(arguments[1], length))));
        case StringLastIndexOf:
            return LastIndexOf(text, arguments[0], arguments[1]);
        case StringMatchIndex:
            return StringMatch(GetGlobal(), text, arguments[0]);
        case StringReplaceIndex:
            return StringReplace(text, arguments[0], arguments[1]);
        case StringSearchIndex:
            return StringSearch(text, arguments[0]);
        case StringSplit:
            return Split(GetGlobal(), text, arguments[0]);
        case StringSubstring: {
            double start = ClampedPosition(arguments[0], length);
            double end = arguments.GetSize() < 2 ? length : ClampedPosition(arguments[1], length);
            if (start > end) std::swap(start, end);
            return CValue::String(text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start)));
        }
        case StringToLowerCase:
            return CValue::String(MapCase(std::move(text), false));
        default:
            return CValue::String(MapCase(std::move(text), true));
    }
}

CStringConstructor::CStringConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CStringConstructor::Construct(const CValueList& arguments) {
    DomString value = arguments.GetSize() ? ToString(arguments[0]) : DomString();
    return new CStringObject(GetGlobal(), GetGlobal()->GetPrototypeObject(BuiltinString), std::move(value));
}

TRefPtr<CValue> CStringConstructor::Call(CObject*, const CValueList& arguments) {
    return CValue::String(arguments.GetSize() ? ToString(arguments[0]) : DomString());
}

TRefPtr<CValue> CStringConstructor::CallNative(int, CObject*, const CValueList& arguments) {
    DomString text;
    text.reserve(static_cast<size_t>(arguments.GetSize()));
    for (int i = 0; i < arguments.GetSize(); ++i) text += static_cast<DomChar>(ToUint16(arguments[i]).GetUint32());
    return CValue::String(std::move(text));
}

void InstallString(CGlobalObject* global) {
    TRefPtr<CStringPrototype> prototype = new CStringPrototype(global);
    static const struct {
        const DomChar* pName;
        int nLength;
    } kMethods[] = {{u"toString", 0}, {u"valueOf", 0},   {u"charAt", 1},    {u"charCodeAt", 1}, {u"indexOf", 2},
                    {u"lastIndexOf", 2}, {u"match", 1},   {u"replace", 2},   {u"search", 1},     {u"split", 1},
                    {u"substring", 2}, {u"toLowerCase", 0}, {u"toUpperCase", 0}};
    for (int i = 0; i < static_cast<int>(std::size(kMethods)); ++i)
        prototype->AddFunction(kMethods[i].pName, i, kMethods[i].nLength, DontEnum);
    TRefPtr<CObject> constructor = new CStringConstructor(global);
    constructor->AddFunction(u"fromCharCode", StringFromCharCode, 1, DontEnum);
    global->InstallConstructor(BuiltinString, u"String", constructor, prototype.Get(), 1);
}

}  // namespace EcmaScriptPrivate
