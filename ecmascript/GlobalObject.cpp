// The global object: its functions ("eval", "parseInt", ... "print") and the installation of
// the standard constructors and prototypes.
#include "ecmascript/GlobalObject.h"

#include <cstdio>

#include "ecmascript/Conversions.h"
#include "ecmascript/Interpreter.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScript {

namespace {

enum { GlobalEval, GlobalParseInt, GlobalParseFloat, GlobalEscape, GlobalUnescape, GlobalIsNaN, GlobalIsFinite, GlobalPrint };

bool IsSkippedSpace(DomChar unit) { return unit == 9 || unit == 11 || unit == 12 || unit == 32; }
bool IsDigit(DomChar unit) { return unit >= u'0' && unit <= u'9'; }

int DigitValue(DomChar unit) {
    if (IsDigit(unit)) return unit - u'0';
    if (unit >= u'a' && unit <= u'z') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'Z') return unit - u'A' + 10;
    return 99;
}

int HexValue(DomChar unit) {
    int value = DigitValue(unit);
    return value < 16 ? value : -1;
}

size_t SkipSpace(const DomString& text) {
    size_t i = 0;
    while (i < text.size() && IsSkippedSpace(text[i])) ++i;
    return i;
}

CNumber ParseInt(const DomString& text, CValue* radixValue) {
    size_t i = SkipSpace(text);
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
    int radix = radixValue->GetType() == TypeUndefined ? 0 : static_cast<int32_t>(ToInt32(radixValue).GetUint32());
    if (radix != 0 && (radix < 2 || radix > 36)) return CNumber::NaN();
    bool hexPrefix = i + 1 < text.size() && text[i] == u'0' && (text[i + 1] == u'x' || text[i + 1] == u'X');
    if ((radix == 16 || radix == 0) && hexPrefix) {
        radix = 16;
        i += 2;
    } else if (radix == 0) {
        radix = i < text.size() && text[i] == u'0' ? 8 : 10;
    }
    size_t end = i;
    while (end < text.size() && DigitValue(text[end]) < radix) ++end;
    CNumber number;
    if (end == i || !CNumber::FromBaseText(DomStringView(text).substr(i, end - i), radix, number)) return CNumber::NaN();
    return negative ? number.Negate() : number;
}

size_t SkipDigits(const DomString& text, size_t i) {
    while (i < text.size() && IsDigit(text[i])) ++i;
    return i;
}

// The longest prefix that is "Infinity", ".digits" or "digits[.digits]", with an exponent.
CNumber ParseFloat(const DomString& text) {
    size_t start = SkipSpace(text);
    DomStringView rest = DomStringView(text).substr(start);
    if (rest.substr(0, 8) == u"Infinity") return CNumber::PositiveInfinity();
    size_t i = start;
    size_t digitsEnd = SkipDigits(text, i);
    bool hasDigits = digitsEnd > i;
    i = digitsEnd;
    if (i < text.size() && text[i] == u'.') {
        size_t fractionEnd = SkipDigits(text, i + 1);
        if (fractionEnd > i + 1 || hasDigits) {
            hasDigits = hasDigits || fractionEnd > i + 1;
            i = fractionEnd;
        }
    }
    if (!hasDigits) return CNumber::NaN();
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        size_t j = i + 1;
        if (j < text.size() && (text[j] == u'+' || text[j] == u'-')) ++j;
        size_t exponentEnd = SkipDigits(text, j);
        if (exponentEnd > j) i = exponentEnd;
    }
    CNumber number;
    if (!CNumber::FromStringText(DomStringView(text).substr(start, i - start), number)) return CNumber::NaN();
    return number;
}

bool IsUnescaped(DomChar unit) {
    if (unit < 128 && (DigitValue(unit) < 36)) return true;
    return unit == u'@' || unit == u'*' || unit == u'_' || unit == u'+' || unit == u'-' || unit == u'.' || unit == u'/';
}

DomString Escape(const DomString& text) {
    static const char kHex[] = "0123456789ABCDEF";
    DomString result;
    result.reserve(text.size());
    for (DomChar unit : text) {
        if (IsUnescaped(unit)) {
            result += unit;
        } else if (unit < 256) {
            result += u'%';
            result += static_cast<DomChar>(kHex[unit >> 4]);
            result += static_cast<DomChar>(kHex[unit & 15]);
        } else {
            result += u"%u";
            for (int shift = 12; shift >= 0; shift -= 4) result += static_cast<DomChar>(kHex[(unit >> shift) & 15]);
        }
    }
    return result;
}

// Reads `count` hexadecimal digits at `i`, or gives -1.
int ReadHex(const DomString& text, size_t i, int count) {
    if (i + count > text.size()) return -1;
    int value = 0;
    for (int k = 0; k < count; ++k) {
        int digit = HexValue(text[i + k]);
        if (digit < 0) return -1;
        value = value * 16 + digit;
    }
    return value;
}

DomString Unescape(const DomString& text) {
    DomString result;
    result.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        DomChar unit = text[i];
        if (unit == u'%') {
            int value = -1;
            if (i + 1 < text.size() && text[i + 1] == u'u' && (value = ReadHex(text, i + 2, 4)) >= 0) {
                i += 5;
            } else if ((value = ReadHex(text, i + 1, 2)) >= 0) {
                i += 2;
            }
            if (value >= 0) unit = static_cast<DomChar>(value);
        }
        result += unit;
    }
    return result;
}

// Standard output carries the script's print; the text goes out as UTF-8, the console
// encoding of Linux.
void Print(const DomString& text) {
    std::string bytes = Core::ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace

CGlobalObject::CGlobalObject(CInterpreter* interpreter) : CObject(this, nullptr), m_pInterpreter(interpreter) {
    SetVariableScope();
    m_apPrototypes[BuiltinObject] = EcmaScriptPrivate::MakeObjectPrototype(this);
    m_apPrototypes[BuiltinFunction] = EcmaScriptPrivate::MakeFunctionPrototype(this);
    for (EcmaScriptPrivate::FInstallBuiltin install : EcmaScriptPrivate::kBuiltinInstallers) install(this);
    AddGlobalFunctions();
}

CGlobalObject::~CGlobalObject() = default;

void CGlobalObject::AddGlobalFunctions() {
    DefineValue(u"NaN", CValue::Number(CNumber::NaN()), DontEnum);
    DefineValue(u"Infinity", CValue::Number(CNumber::PositiveInfinity()), DontEnum);
    AddFunction(u"eval", GlobalEval, 1, DontEnum);
    AddFunction(u"parseInt", GlobalParseInt, 2, DontEnum);
    AddFunction(u"parseFloat", GlobalParseFloat, 1, DontEnum);
    AddFunction(u"escape", GlobalEscape, 1, DontEnum);
    AddFunction(u"unescape", GlobalUnescape, 1, DontEnum);
    AddFunction(u"isNaN", GlobalIsNaN, 1, DontEnum);
    AddFunction(u"isFinite", GlobalIsFinite, 1, DontEnum);
    AddFunction(u"print", GlobalPrint, 1, DontEnum);
}

void CGlobalObject::InstallConstructor(int builtin, const DomChar* name, CObject* constructor, CObject* prototype,
                                       int length) {
    m_apPrototypes[builtin] = prototype;
    if (!constructor) return;
    m_apConstructors[builtin] = constructor;
    constructor->DefineValue(u"prototype", CValue::Object(prototype), ReadOnly | DontEnum | DontDelete);
    constructor->DefineValue(u"length", CValue::Integer(length), ReadOnly | DontEnum | DontDelete);
    prototype->DefineValue(u"constructor", CValue::Object(constructor), DontEnum);
    DefineValue(name, CValue::Object(constructor), DontEnum);
}

// Besides the constructors and prototypes, the other built-in objects of this object's table
// (DontEnum entries such as Math and the global functions) and the functions that programs
// declared, which each form a cycle with their "prototype" object, are cleared as well.
void CGlobalObject::Clear() {
    TArray<TRefPtr<CObject>> standard;
    for (int i = 0; i < BuiltinCount; ++i) {
        standard.Add(m_apConstructors[i]);
        standard.Add(m_apPrototypes[i]);
        m_apConstructors[i] = nullptr;
        m_apPrototypes[i] = nullptr;
    }
    CPropertyTable& table = GetOwnTable();
    for (int slot = 0; slot < table.GetCapacity(); ++slot) {
        SPropertyEntry* entry = table.GetSlot(slot);
        CObject* object = entry && entry->pValue ? entry->pValue->GetObject() : nullptr;
        if (object && ((entry->nAttributes & DontEnum) || object->IsCallable())) standard.Add(TRefPtr<CObject>(object));
    }
    ClearProperties();
    for (TRefPtr<CObject>& object : standard) {
        if (object) object->ClearProperties();
    }
}

TRefPtr<CValue> CGlobalObject::CallNative(int index, CObject*, const CValueList& arguments) {
    CValue* argument = arguments[0];
    switch (index) {
        case GlobalEval:
            return m_pInterpreter->Eval(argument);
        case GlobalParseInt:
            return CValue::Number(ParseInt(ToString(argument), arguments[1]));
        case GlobalParseFloat:
            return CValue::Number(ParseFloat(ToString(argument)));
        case GlobalEscape:
            return CValue::String(Escape(ToString(argument)));
        case GlobalUnescape:
            return CValue::String(Unescape(ToString(argument)));
        case GlobalIsNaN:
            return CValue::Boolean(ToNumber(argument).IsNaN());
        case GlobalIsFinite:
            return CValue::Boolean(ToNumber(argument).IsFinite());
        case GlobalPrint:
            Print(ToString(argument));
            return CValue::Undefined();
        default:
            return CValue::Undefined();
    }
}

}  // namespace EcmaScript
