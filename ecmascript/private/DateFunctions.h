// The time arithmetic of Date: a time value is milliseconds since 1970 in UTC. Each helper gives
// NaN for NaN. Local time is not an offset: LocalTime and UTC pass the calendar fields of the
// instant through the platform's time zone (Core::CDateTime).
#pragma once
#include "core/DateTime.h"
#include "ecmascript/Number.h"

namespace EcmaScriptPrivate {

using EcmaScript::CNumber;

CNumber Day(const CNumber& t);
CNumber TimeWithinDay(const CNumber& t);
CNumber DaysInYear(const CNumber& y);
CNumber DayFromYear(const CNumber& y);
CNumber TimeFromYear(const CNumber& y);
CNumber YearFromTime(const CNumber& t);
CNumber InLeapYear(const CNumber& t);
CNumber MonthFromTime(const CNumber& t);
CNumber DateFromTime(const CNumber& t);
CNumber WeekDay(const CNumber& t);
CNumber HourFromTime(const CNumber& t);
CNumber MinFromTime(const CNumber& t);
CNumber SecFromTime(const CNumber& t);
CNumber msFromTime(const CNumber& t);
CNumber MakeTime(const CNumber& hour, const CNumber& min, const CNumber& sec, const CNumber& ms);
CNumber MakeDay(const CNumber& year, const CNumber& month, const CNumber& date);
CNumber MakeDate(const CNumber& day, const CNumber& time);
CNumber TimeClip(const CNumber& time);

CNumber LocalTime(const CNumber& t);
CNumber UTC(const CNumber& t);

// The calendar fields of a finite time value, and the time value of calendar fields.
Core::CDateTime FieldsFromTime(const CNumber& t);
CNumber TimeFromFields(const Core::CDateTime& fields);

}  // namespace EcmaScriptPrivate
