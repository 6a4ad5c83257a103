// Date objects. Getters read LocalTime of the value (or the value itself for the UTC names),
// setters rebuild the value from fields and go back through UTC and TimeClip.
#include "ecmascript/private/DateObject.h"

#include <iterator>

#include "core/DateTime.h"
#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/Builtins.h"
#include "ecmascript/private/DateFunctions.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

const DomChar kPattern[] = u"dd/MM/yyyy HH:mm:ss";

enum {
    DateToString = 0, DateValueOf = 1, DateGetTime = 2, DateGetYear = 3, DateFirstGetter = 4,
    DateGetTimezoneOffset = 20, DateSetTime = 21, DateFirstSetter = 22, DateSetYear = 36, DateToLocaleString = 37,
    DateToUTCString = 38, DateToGMTString = 39
};
enum { DateParse, DateUTC };

const struct {
    const DomChar* pName;
    int nLength;
} kMethods[] = {
    {u"toString", 0},         {u"valueOf", 0},           {u"getTime", 0},         {u"getYear", 0},
    {u"getFullYear", 0},      {u"getUTCFullYear", 0},    {u"getMonth", 0},        {u"getUTCMonth", 0},
    {u"getDate", 0},          {u"getUTCDate", 0},        {u"getDay", 0},          {u"getUTCDay", 0},
    {u"getHours", 0},         {u"getUTCHours", 0},       {u"getMinutes", 0},      {u"getUTCMinutes", 0},
    {u"getSeconds", 0},       {u"getUTCSeconds", 0},     {u"getMilliseconds", 0}, {u"getUTCMilliseconds", 0},
    {u"getTimezoneOffset", 0}, {u"setTime", 1},          {u"setMilliseconds", 1}, {u"setUTCMilliseconds", 1},
    {u"setSeconds", 2},       {u"setUTCSeconds", 2},     {u"setMinutes", 3},      {u"setUTCMinutes", 3},
    {u"setHours", 4},         {u"setUTCHours", 4},       {u"setDate", 1},         {u"setUTCDate", 1},
    {u"setMonth", 2},         {u"setUTCMonth", 2},       {u"setFullYear", 3},     {u"setUTCFullYear", 3},
    {u"setYear", 1},          {u"toLocaleString", 0},    {u"toUTCString", 0},     {u"toGMTString", 0},
};

// The fields of a time in the order year, month, date, hours, minutes, seconds, milliseconds.
enum { FieldYear, FieldMonth, FieldDate, FieldHour, FieldMinute, FieldSecond, FieldMs, FieldCount };

using FHelper = CNumber (*)(const CNumber&);
const FHelper kGetterHelpers[] = {YearFromTime, MonthFromTime, DateFromTime, WeekDay,
                                  HourFromTime, MinFromTime,   SecFromTime,  msFromTime};

// Each pair of setters, from setMilliseconds to setFullYear: the first field it sets and how many.
const struct {
    int nFirst;
    int nCount;
} kSetterFields[] = {{FieldMs, 1}, {FieldSecond, 2}, {FieldMinute, 3}, {FieldHour, 4},
                     {FieldDate, 1}, {FieldMonth, 2}, {FieldYear, 3}};

CNumber Compose(const CNumber* fields) {
    return MakeDate(MakeDay(fields[FieldYear], fields[FieldMonth], fields[FieldDate]),
                    MakeTime(fields[FieldHour], fields[FieldMinute], fields[FieldSecond], fields[FieldMs]));
}

// The constructor's and UTC's list of fields: missing ones are 1 for the date and 0 for the rest.
CNumber ComposeArguments(const CValueList& arguments) {
    CNumber fields[FieldCount];
    for (int i = 0; i < FieldCount; ++i) {
        if (i < arguments.GetSize())
            fields[i] = ToNumber(arguments[i]);
        else
            fields[i] = CNumber::FromInteger(i == FieldDate ? 1 : 0);
    }
    return Compose(fields);
}

CNumber Now() { return TimeFromFields(Core::CDateTime::Now()); }

CNumber ParseText(const DomString& text) {
    Core::CDateTime fields;
    if (!fields.Parse(text, kPattern)) return CNumber::NaN();
    fields.m_nMillisecond = 0;
    return TimeClip(UTC(TimeFromFields(fields)));
}

DomString Text(const CNumber& t, bool local, bool locale) {
    if (!t.IsFinite()) return u"NaN";
    Core::CDateTime fields = FieldsFromTime(local ? LocalTime(t) : t);
    return locale ? fields.FormatLocale() : fields.Format(kPattern);
}

CNumber TimeOf(CObject* self) {
    CValue* value = self->GetValue();
    return value ? value->GetNumber() : CNumber::NaN();
}

}  // namespace

CDateObject::CDateObject(CGlobalObject* global, CObject* prototype, const CNumber& value)
    : CObject(global, prototype), m_pValue(CValue::Number(value)) {}

CDatePrototype::CDatePrototype(CGlobalObject* global) : CDateObject(global, global->GetObjectPrototype(), CNumber::NaN()) {}

TRefPtr<CValue> CDatePrototype::CallNative(int index, CObject* thisObject, const CValueList& arguments) {
    CObject* self = thisObject ? thisObject : GetGlobal();
    if (DomStringView(self->GetClass()) != u"Date" || !self->GetValue())
        throw new CRuntimeError(CRuntimeError::DateObjectRequired, CValue::Object(self));
    CNumber t = TimeOf(self);
    switch (index) {
        case DateToString: return CValue::String(Text(t, true, false));
        case DateToLocaleString: return CValue::String(Text(t, true, true));
        case DateToUTCString:
        case DateToGMTString: return CValue::String(Text(t, false, false));
        case DateValueOf:
        case DateGetTime: return CValue::Number(t);
        default: break;
    }
    if (index < DateSetTime) return CValue::Number(GetField(index, t));
    CNumber value = SetFields(index, t, arguments);
    self->SetValue(CValue::Number(value));
    return CValue::Number(value);
}

CNumber CDatePrototype::GetField(int index, const CNumber& t) {
    if (t.IsNaN()) return CNumber::NaN();
    if (index == DateGetYear) return YearFromTime(LocalTime(t)).Subtract(CNumber::FromInteger(1900));
    if (index == DateGetTimezoneOffset) return t.Subtract(LocalTime(t)).Divide(CNumber::FromInteger(60000));
    int offset = index - DateFirstGetter;
    return kGetterHelpers[offset / 2](offset % 2 ? t : LocalTime(t));
}

CNumber CDatePrototype::SetFields(int index, const CNumber& t, const CValueList& arguments) {
    if (index == DateSetTime) return TimeClip(ToNumber(arguments[0]));
    if (index == DateSetYear) {
        CNumber year = ToNumber(arguments[0]);
        if (year.IsNaN()) return year;
        double whole = year.ToInteger().GetDouble();
        if (whole >= 0 && whole <= 99) year = CNumber::FromDouble(1900 + whole);
        CNumber local = t.IsNaN() ? CNumber::FromInteger(0) : LocalTime(t);
        CNumber day = MakeDay(year, MonthFromTime(local), DateFromTime(local));
        return TimeClip(UTC(MakeDate(day, TimeWithinDay(local))));
    }
    int offset = index - DateFirstSetter;
    bool utc = offset % 2 != 0;
    CNumber base = t;
    if (offset / 2 == 6 && base.IsNaN()) base = CNumber::FromInteger(0);  // setFullYear starts from +0
    if (!utc) base = LocalTime(base);
    CNumber fields[FieldCount];
    for (int i = 0; i < FieldCount; ++i) fields[i] = kGetterHelpers[i < FieldDate + 1 ? i : i + 1](base);
    const auto& setter = kSetterFields[offset / 2];
    for (int i = 0; i < setter.nCount; ++i)
        if (i == 0 || i < arguments.GetSize()) fields[setter.nFirst + i] = ToNumber(arguments[i]);
    CNumber composed = Compose(fields);
    return TimeClip(utc ? composed : UTC(composed));
}

CDateConstructor::CDateConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CDateConstructor::Construct(const CValueList& arguments) {
    CNumber value;
    if (arguments.GetSize() == 0) {
        value = Now();
    } else if (arguments.GetSize() == 1) {
        TRefPtr<CValue> primitive = ToPrimitive(arguments[0], HintNone);
        value = primitive->GetType() == TypeString ? ParseText(primitive->GetString()) : TimeClip(ToNumber(primitive));
    } else {
        value = TimeClip(UTC(ComposeArguments(arguments)));
    }
    return new CDateObject(GetGlobal(), GetGlobal()->GetPrototypeObject(BuiltinDate), value);
}

TRefPtr<CValue> CDateConstructor::Call(CObject*, const CValueList&) { return CValue::String(Text(Now(), true, false)); }

TRefPtr<CValue> CDateConstructor::CallNative(int index, CObject*, const CValueList& arguments) {
    if (index == DateParse) return CValue::Number(ParseText(ToString(arguments[0])));
    return CValue::Number(TimeClip(ComposeArguments(arguments)));
}

void InstallDate(CGlobalObject* global) {
    TRefPtr<CObject> prototype = new CDatePrototype(global);
    for (int i = 0; i < static_cast<int>(std::size(kMethods)); ++i)
        prototype->AddFunction(kMethods[i].pName, i, kMethods[i].nLength, DontEnum);
    TRefPtr<CObject> constructor = new CDateConstructor(global);
    constructor->AddFunction(u"parse", DateParse, 1, DontEnum);
    constructor->AddFunction(u"UTC", DateUTC, 7, DontEnum);
    global->InstallConstructor(BuiltinDate, u"Date", constructor, prototype, 7);
}

}  // namespace EcmaScriptPrivate
