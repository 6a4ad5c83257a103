// Calendar fields: text by pattern, epoch arithmetic and local time through the time zone.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "core/DateTime.h"

namespace {

using Core::CDateTime;

CDateTime Fields(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    CDateTime fields;
    fields.m_nYear = year;
    fields.m_nMonth = month;
    fields.m_nDay = day;
    fields.m_nHour = hour;
    fields.m_nMinute = minute;
    fields.m_nSecond = second;
    return fields;
}

std::string Text(const CDateTime& fields, const char* pattern = "dd/MM/yyyy HH:mm:ss") {
    return Core::ToUtf8(fields.Format(Core::Ascii(pattern)));
}

// Sets the process's time zone for one test and restores the previous one afterwards.
class CTimeZone {
public:
    explicit CTimeZone(const char* zone) {
        const char* previous = std::getenv("TZ");
        m_bHadZone = previous != nullptr;
        if (previous) m_sPrevious = previous;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~CTimeZone() {
        if (m_bHadZone)
            setenv("TZ", m_sPrevious.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    bool m_bHadZone;
    std::string m_sPrevious;
};

TEST(DateTime, FormatsFieldsByPatternWithPaddedYears) {
    EXPECT_EQ(Text(Fields(1970, 1, 1)), "01/01/1970 00:00:00");
    EXPECT_EQ(Text(Fields(2024, 2, 29, 23, 5, 9)), "29/02/2024 23:05:09");
    EXPECT_EQ(Text(Fields(99, 12, 31)), "31/12/0099 00:00:00");
    EXPECT_EQ(Text(Fields(-44, 3, 15)), "15/03/-0044 00:00:00");
    EXPECT_EQ(Text(Fields(275760, 9, 13)), "13/09/275760 00:00:00");
    EXPECT_EQ(Text(Fields(2000, 1, 2, 3, 4, 5), "yyyy-MM-dd'T'HH.mm.ss y M"), "2000-01-02'T'03.04.05 y M");
}

TEST(DateTime, ParsesOnlyTheWholePatternWithFieldsInRange) {
    struct SCase {
        const char* pText;
        const char* pExpected;  // the fields written back, or "refused"
    } cases[] = {
        {"01/02/2000 03:04:05", "01/02/2000 03:04:05"},
        {"31/12/9999 23:59:59", "31/12/9999 23:59:59"},
        {"31/02/2001 00:00:00", "31/02/2001 00:00:00"},  // days roll over later, in the arithmetic
        {"32/01/2000 00:00:00", "refused"},
        {"01/13/2000 00:00:00", "refused"},
        {"00/01/2000 00:00:00", "refused"},
        {"01/01/2000 24:00:00", "refused"},
        {"01/01/2000 00:60:00", "refused"},
        {"1/01/2000 00:00:00", "refused"},
        {"01/01/2000 00:00:00 ", "refused"},
        {"01/01/2000 00:00", "refused"},
        {"01-01-2000 00:00:00", "refused"},
        {"2000-01-01", "refused"},
        {"", "refused"},
    };
    for (const SCase& c : cases) {
        CDateTime fields;
        bool parsed = fields.Parse(Core::Ascii(c.pText), u"dd/MM/yyyy HH:mm:ss");
        EXPECT_EQ(parsed ? Text(fields) : "refused", c.pExpected) << c.pText;
    }
}

TEST(DateTime, EpochSecondsRoundTripAcrossCenturiesAndBefore1970) {
    const long long samples[] = {0, -1, 86399, 86400, 951782400, -62135596800LL, 253402300799LL, -8640000000000LL};
    for (long long seconds : samples) {
        CDateTime fields;
        fields.SetEpochSeconds(seconds);
        EXPECT_EQ(fields.ToEpochSeconds(), seconds);
    }
    CDateTime leap;
    leap.SetEpochSeconds(951782400);  // 2000-02-29
    EXPECT_EQ(Text(leap), "29/02/2000 00:00:00");
    CDateTime before;
    before.SetEpochSeconds(-1);
    EXPECT_EQ(Text(before), "31/12/1969 23:59:59");
}

TEST(DateTime, LocalTimeFollowsTheZoneAndDaylightSavingOfEachInstant) {
    CTimeZone zone("Europe/Paris");
    CDateTime winter = Fields(2021, 1, 15, 12);
    ASSERT_TRUE(winter.ToLocal());
    EXPECT_EQ(Text(winter), "15/01/2021 13:00:00");
    CDateTime summer = Fields(2021, 7, 15, 12);
    summer.m_nMillisecond = 250;
    ASSERT_TRUE(summer.ToLocal());
    EXPECT_EQ(Text(summer), "15/07/2021 14:00:00");
    EXPECT_EQ(summer.m_nMillisecond, 250);
    ASSERT_TRUE(summer.ToUniversal());
    EXPECT_EQ(Text(summer), "15/07/2021 12:00:00");
    EXPECT_EQ(summer.m_nMillisecond, 250);
}

TEST(DateTime, LocalTimeWestOfGreenwichCrossesTheDateLine) {
    CTimeZone zone("America/New_York");
    CDateTime fields = Fields(2000, 1, 1, 2);
    ASSERT_TRUE(fields.ToLocal());
    EXPECT_EQ(Text(fields), "31/12/1999 21:00:00");
    ASSERT_TRUE(fields.ToUniversal());
    EXPECT_EQ(Text(fields), "01/01/2000 02:00:00");
}

TEST(DateTime, NowAndLocaleTextAreWellFormed) {
    CDateTime now = CDateTime::Now();
    EXPECT_GE(now.m_nYear, 2020);
    EXPECT_GE(now.m_nMillisecond, 0);
    EXPECT_LT(now.m_nMillisecond, 1000);
    EXPECT_EQ(Core::ToUtf8(Fields(2000, 2, 1, 3, 4, 5).FormatLocale()), "02/01/00 03:04:05");
}

}  // namespace
