// The helpers of the time arithmetic, computed on doubles; whole results come back in integer
// form where they fit.
#include "ecmascript/private/DateFunctions.h"

#include <cmath>

namespace EcmaScriptPrivate {

namespace {

constexpr double msPerSecond = 1000;
constexpr double msPerMinute = 60000;
constexpr double msPerHour = 3600000;
constexpr double msPerDay = 86400000;

double Modulo(double a, double b) {
    double r = std::fmod(a, b);
    return r < 0 ? r + b : r;
}

double DayOf(double t) { return std::floor(t / msPerDay); }
double DaysInYearOf(double y) {
    if (Modulo(y, 4) != 0) return 365;
    if (Modulo(y, 100) != 0) return 366;
    return Modulo(y, 400) != 0 ? 365 : 366;
}
double DayFromYearOf(double y) {
    return 365 * (y - 1970) + std::floor((y - 1969) / 4) - std::floor((y - 1901) / 100) + std::floor((y - 1601) / 400);
}
double TimeFromYearOf(double y) { return msPerDay * DayFromYearOf(y); }

double YearOf(double t) {
    double y = std::floor(t / (msPerDay * 365.2425)) + 1970;
    while (TimeFromYearOf(y) > t) --y;
    while (TimeFromYearOf(y + 1) <= t) ++y;
    return y;
}

bool LeapOf(double t) { return DaysInYearOf(YearOf(t)) == 366; }

// The first day of each month within the year, for common and leap years.
const int kMonthStarts[2][13] = {{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365},
                                 {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366}};

double DayWithinYear(double t) { return DayOf(t) - DayFromYearOf(YearOf(t)); }

double MonthOf(double t) {
    double day = DayWithinYear(t);
    const int* starts = kMonthStarts[LeapOf(t) ? 1 : 0];
    int month = 0;
    while (month < 11 && day >= starts[month + 1]) ++month;
    return month;
}

double DateOf(double t) {
    return DayWithinYear(t) - kMonthStarts[LeapOf(t) ? 1 : 0][static_cast<int>(MonthOf(t))] + 1;
}

double Integer(double value) { return value < 0 ? -std::floor(-value) : std::floor(value); }

CNumber Whole(double value) { return CNumber::FromDoubleNormalised(value); }

template <class F>
CNumber Unary(const CNumber& t, F f) {
    return t.IsNaN() ? CNumber::NaN() : Whole(f(t.GetDouble()));
}

}  // namespace

CNumber Day(const CNumber& t) { return Unary(t, DayOf); }
CNumber TimeWithinDay(const CNumber& t) { return Unary(t, [](double v) { return Modulo(v, msPerDay); }); }
CNumber DaysInYear(const CNumber& y) { return Unary(y, DaysInYearOf); }
CNumber DayFromYear(const CNumber& y) { return Unary(y, DayFromYearOf); }
CNumber TimeFromYear(const CNumber& y) { return Unary(y, TimeFromYearOf); }
CNumber YearFromTime(const CNumber& t) { return Unary(t, YearOf); }
CNumber InLeapYear(const CNumber& t) { return Unary(t, [](double v) { return LeapOf(v) ? 1.0 : 0.0; }); }
CNumber MonthFromTime(const CNumber& t) { return Unary(t, MonthOf); }
CNumber DateFromTime(const CNumber& t) { return Unary(t, DateOf); }
CNumber WeekDay(const CNumber& t) { return Unary(t, [](double v) { return Modulo(DayOf(v) + 4, 7); }); }
CNumber HourFromTime(const CNumber& t) {
    return Unary(t, [](double v) { return Modulo(std::floor(v / msPerHour), 24); });
}
CNumber MinFromTime(const CNumber& t) {
    return Unary(t, [](double v) { return Modulo(std::floor(v / msPerMinute), 60); });
}
CNumber SecFromTime(const CNumber& t) {
    return Unary(t, [](double v) { return Modulo(std::floor(v / msPerSecond), 60); });
}
CNumber msFromTime(const CNumber& t) { return Unary(t, [](double v) { return Modulo(v, msPerSecond); }); }

CNumber MakeTime(const CNumber& hour, const CNumber& min, const CNumber& sec, const CNumber& ms) {
    if (!hour.IsFinite() || !min.IsFinite() || !sec.IsFinite() || !ms.IsFinite()) return CNumber::NaN();
    return Whole(Integer(hour.GetDouble()) * msPerHour + Integer(min.GetDouble()) * msPerMinute +
                 Integer(sec.GetDouble()) * msPerSecond + Integer(ms.GetDouble()));
}

CNumber MakeDay(const CNumber& year, const CNumber& month, const CNumber& date) {
    if (!year.IsFinite() || !month.IsFinite() || !date.IsFinite()) return CNumber::NaN();
    double m = Integer(month.GetDouble());
    double y = Integer(year.GetDouble()) + std::floor(m / 12);
    double mn = Modulo(m, 12);
    if (std::fabs(y) > 400000) return CNumber::NaN();  // far beyond any time value that TimeClip keeps
    double day = DayFromYearOf(y) + kMonthStarts[DaysInYearOf(y) == 366 ? 1 : 0][static_cast<int>(mn)];
    return Whole(day + Integer(date.GetDouble()) - 1);
}

CNumber MakeDate(const CNumber& day, const CNumber& time) {
    if (!day.IsFinite() || !time.IsFinite()) return CNumber::NaN();
    return Whole(day.GetDouble() * msPerDay + time.GetDouble());
}

CNumber TimeClip(const CNumber& time) {
    if (!time.IsFinite() || std::fabs(time.GetDouble()) > 8.64e15) return CNumber::NaN();
    return time.ToInteger();
}

Core::CDateTime FieldsFromTime(const CNumber& t) {
    double value = t.GetDouble();
    Core::CDateTime fields;
    fields.m_nYear = static_cast<int32_t>(YearOf(value));
    fields.m_nMonth = static_cast<int32_t>(MonthOf(value)) + 1;
    fields.m_nDay = static_cast<int32_t>(DateOf(value));
    fields.m_nHour = static_cast<int32_t>(Modulo(std::floor(value / msPerHour), 24));
    fields.m_nMinute = static_cast<int32_t>(Modulo(std::floor(value / msPerMinute), 60));
    fields.m_nSecond = static_cast<int32_t>(Modulo(std::floor(value / msPerSecond), 60));
    fields.m_nMillisecond = static_cast<int32_t>(Modulo(value, msPerSecond));
    return fields;
}

CNumber TimeFromFields(const Core::CDateTime& fields) {
    auto n = [](int32_t v) { return CNumber::FromInteger(v); };
    return MakeDate(MakeDay(n(fields.m_nYear), n(fields.m_nMonth - 1), n(fields.m_nDay)),
                    MakeTime(n(fields.m_nHour), n(fields.m_nMinute), n(fields.m_nSecond), n(fields.m_nMillisecond)));
}

// If the platform refuses the instant, the value stays as it is.
CNumber LocalTime(const CNumber& t) {
    if (!t.IsFinite() || std::fabs(t.GetDouble()) > 1e16) return t;
    Core::CDateTime fields = FieldsFromTime(t);
    return fields.ToLocal() ? TimeFromFields(fields) : t;
}

CNumber UTC(const CNumber& t) {
    if (!t.IsFinite() || std::fabs(t.GetDouble()) > 1e16) return t;
    Core::CDateTime fields = FieldsFromTime(t);
    return fields.ToUniversal() ? TimeFromFields(fields) : t;
}

}  // namespace EcmaScriptPrivate
