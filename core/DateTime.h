// Calendar fields with the platform's clock and time zone, and text by a pattern of the letters
// dd, MM, yyyy, HH, mm, ss. Local time comes from the C library's time-zone functions, so the
// TZ setting decides the offset and daylight saving of each instant.
#pragma once
#include "core/DomString.h"

#include <cstdint>

namespace Core {

class CDateTime {
public:
    std::int32_t m_nYear = 1970;
    std::int32_t m_nMonth = 1;  // 1 to 12
    std::int32_t m_nDay = 1;
    std::int32_t m_nHour = 0;
    std::int32_t m_nMinute = 0;
    std::int32_t m_nSecond = 0;
    std::int32_t m_nMillisecond = 0;

    // The current time in UTC.
    static CDateTime Now();

    // Reads the fields as UTC and turns them into the local time of that instant. False if the
    // platform refuses the instant; the fields are then unchanged.
    bool ToLocal();
    // Reads the fields as local time and turns them into UTC. False on refusal, fields unchanged.
    bool ToUniversal();

    // Writes the fields by `pattern`; a year has at least four digits and a '-' if negative.
    DomString Format(DomStringView pattern) const;
    // Reads `text`, which must match `pattern` to its end, with each field in its range. False
    // on any mismatch; the fields are then unchanged.
    bool Parse(DomStringView text, DomStringView pattern);
    // The date and the time in the formats of the C library's current locale, joined by " ".
    DomString FormatLocale() const;

    // Seconds since 1970 of the fields read as UTC (the milliseconds aside), and back.
    std::int64_t ToEpochSeconds() const;
    void SetEpochSeconds(std::int64_t seconds);
};

}  // namespace Core
