// Calendar arithmetic in the proleptic Gregorian calendar; the C library supplies the clock
// (clock_gettime) and the time zone (localtime_r, mktime), which stand in for the system time
// and file time conversions of other platforms.
#include "core/DateTime.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string>

namespace Core {

namespace {

// Days from 1970-01-01 to the given date, for any year.
std::int64_t DaysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
    year -= month <= 2;
    std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    std::int64_t yearOfEra = year - era * 400;
    std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

void CivilFromDays(std::int64_t days, std::int64_t& year, std::int32_t& month, std::int32_t& day) {
    days += 719468;
    std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    std::int64_t dayOfEra = days - era * 146097;
    std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    std::int64_t mp = (5 * dayOfYear + 2) / 153;
    day = static_cast<std::int32_t>(dayOfYear - (153 * mp + 2) / 5 + 1);
    month = static_cast<std::int32_t>(mp < 10 ? mp + 3 : mp - 9);
    year = yearOfEra + era * 400 + (month <= 2);
}

bool FitsInt32(std::int64_t value) { return value >= INT32_MIN && value <= INT32_MAX; }

// The pattern letters, longest first where one is a prefix of another.
struct SField {
    const char16_t* pLetters;
    int nWidth;
    std::int32_t CDateTime::*pMember;
    int nLow;
    int nHigh;
};

const SField kFields[] = {
    {u"yyyy", 4, &CDateTime::m_nYear, 0, 9999},   {u"MM", 2, &CDateTime::m_nMonth, 1, 12},
    {u"dd", 2, &CDateTime::m_nDay, 1, 31},        {u"HH", 2, &CDateTime::m_nHour, 0, 23},
    {u"mm", 2, &CDateTime::m_nMinute, 0, 59},     {u"ss", 2, &CDateTime::m_nSecond, 0, 59},
};

const SField* FieldAt(DomStringView pattern, size_t index) {
    for (const SField& field : kFields)
        if (pattern.substr(index, field.nWidth) == field.pLetters) return &field;
    return nullptr;
}

void AppendNumber(DomString& text, std::int64_t value, int width) {
    char buffer[32];
    if (value < 0)
        std::snprintf(buffer, sizeof buffer, "-%0*lld", width, -static_cast<long long>(value));
    else
        std::snprintf(buffer, sizeof buffer, "%0*lld", width, static_cast<long long>(value));
    text += Ascii(buffer);
}

std::tm ToTm(const CDateTime& fields) {
    std::tm tm{};
    tm.tm_year = fields.m_nYear - 1900;
    tm.tm_mon = fields.m_nMonth - 1;
    tm.tm_mday = fields.m_nDay;
    tm.tm_hour = fields.m_nHour;
    tm.tm_min = fields.m_nMinute;
    tm.tm_sec = fields.m_nSecond;
    return tm;
}

bool FromTm(const std::tm& tm, CDateTime& fields) {
    std::int64_t year = static_cast<std::int64_t>(tm.tm_year) + 1900;
    if (!FitsInt32(year)) return false;
    fields.m_nYear = static_cast<std::int32_t>(year);
    fields.m_nMonth = tm.tm_mon + 1;
    fields.m_nDay = tm.tm_mday;
    fields.m_nHour = tm.tm_hour;
    fields.m_nMinute = tm.tm_min;
    fields.m_nSecond = tm.tm_sec;
    return true;
}

}  // namespace

CDateTime CDateTime::Now() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    CDateTime fields;
    fields.SetEpochSeconds(now.tv_sec);
    fields.m_nMillisecond = static_cast<std::int32_t>(now.tv_nsec / 1000000);
    return fields;
}

std::int64_t CDateTime::ToEpochSeconds() const {
    std::int64_t days = DaysFromCivil(m_nYear, m_nMonth, m_nDay);
    return days * 86400 + static_cast<std::int64_t>(m_nHour) * 3600 + static_cast<std::int64_t>(m_nMinute) * 60 +
           m_nSecond;
}

void CDateTime::SetEpochSeconds(std::int64_t seconds) {
    std::int64_t days = (seconds >= 0 ? seconds : seconds - 86399) / 86400;
    std::int64_t rest = seconds - days * 86400;
    std::int64_t year = 0;
    CivilFromDays(days, year, m_nMonth, m_nDay);
    m_nYear = static_cast<std::int32_t>(year);
    m_nHour = static_cast<std::int32_t>(rest / 3600);
    m_nMinute = static_cast<std::int32_t>(rest / 60 % 60);
    m_nSecond = static_cast<std::int32_t>(rest % 60);
}

bool CDateTime::ToLocal() {
    std::time_t instant = static_cast<std::time_t>(ToEpochSeconds());
    std::tm tm{};
    if (!localtime_r(&instant, &tm)) return false;
    CDateTime local = *this;
    if (!FromTm(tm, local)) return false;
    *this = local;
    return true;
}

bool CDateTime::ToUniversal() {
    std::tm tm = ToTm(*this);
    if (!FitsInt32(static_cast<std::int64_t>(m_nYear) - 1900)) return false;
    tm.tm_isdst = -1;  // the time zone decides whether daylight saving applies
    errno = 0;
    std::time_t instant = std::mktime(&tm);
    if (instant == static_cast<std::time_t>(-1) && errno != 0) return false;
    std::int32_t millisecond = m_nMillisecond;
    SetEpochSeconds(static_cast<std::int64_t>(instant));
    m_nMillisecond = millisecond;
    return true;
}

DomString CDateTime::Format(DomStringView pattern) const {
    DomString text;
    for (size_t i = 0; i < pattern.size();) {
        const SField* field = FieldAt(pattern, i);
        if (!field) {
            text += pattern[i++];
            continue;
        }
        AppendNumber(text, this->*(field->pMember), field->nWidth);
        i += field->nWidth;
    }
    return text;
}

bool CDateTime::Parse(DomStringView text, DomStringView pattern) {
    CDateTime parsed = *this;
    size_t at = 0;
    for (size_t i = 0; i < pattern.size();) {
        const SField* field = FieldAt(pattern, i);
        if (!field) {
            if (at >= text.size() || text[at] != pattern[i]) return false;
            ++at;
            ++i;
            continue;
        }
        int value = 0;
        for (int k = 0; k < field->nWidth; ++k, ++at) {
            if (at >= text.size() || text[at] < u'0' || text[at] > u'9') return false;
            value = value * 10 + (text[at] - u'0');
        }
        if (value < field->nLow || value > field->nHigh) return false;
        parsed.*(field->pMember) = value;
        i += field->nWidth;
    }
    if (at != text.size()) return false;
    *this = parsed;
    return true;
}

DomString CDateTime::FormatLocale() const {
    std::tm tm = ToTm(*this);
    tm.tm_wday = static_cast<int>((DaysFromCivil(m_nYear, m_nMonth, m_nDay) % 7 + 11) % 7);  // 1970-01-01 was a Thursday
    char date[128];
    char time[128];
    if (!std::strftime(date, sizeof date, "%x", &tm)) date[0] = 0;
    if (!std::strftime(time, sizeof time, "%X", &tm)) time[0] = 0;
    return WidenLatin1(std::string(date) + " " + time);
}

}  // namespace Core
