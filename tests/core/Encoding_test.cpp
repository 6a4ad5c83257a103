// The three encodings and the table that finds them by name.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "core/EncodingTable.h"
#include "core/Latin1Encoding.h"
#include "core/Utf16Encoding.h"
#include "core/Utf8Encoding.h"

namespace {

struct SDecoded {
    DomString sUnits;
    int nConsumed;
    bool bIncomplete;
};

SDecoded Decode(const Core::IEncoding& encoding, const std::vector<unsigned char>& bytes, int capacity = 64) {
    std::vector<DomChar> units(static_cast<size_t>(capacity) + 1);
    SDecoded result{};
    int n = encoding.Decode(bytes.data(), static_cast<int>(bytes.size()), result.nConsumed, units.data(), capacity,
                            result.bIncomplete);
    result.sUnits.assign(units.data(), static_cast<size_t>(n));
    return result;
}

struct SEncoded {
    std::vector<unsigned char> aBytes;
    int nUsed;
    bool bFailed;
};

SEncoded Encode(const Core::IEncoding& encoding, DomStringView units, int capacity = 64) {
    std::vector<unsigned char> bytes(static_cast<size_t>(capacity) + 1);
    SEncoded result{};
    int written = 0;
    result.nUsed = encoding.Encode(units.data(), static_cast<int>(units.size()), bytes.data(), capacity, written,
                                   result.bFailed);
    result.aBytes.assign(bytes.begin(), bytes.begin() + written);
    return result;
}

struct SUtf8DecodeCase {
    std::vector<unsigned char> aBytes;
    DomString sExpected;
};

TEST(Utf8Encoding, DecodesWithTheLossyBitMergeKeptAsItIs) {
    const SUtf8DecodeCase cases[] = {
        {{'a', 'b'}, u"ab"},
        {{0xC3, 0xA9}, u"\x0069"},           // bits meet: e-acute reads as "i"
        {{0xC2, 0xA9}, u"\x0029"},
        {{0xE2, 0x82, 0xAC}, u"\x002C"},     // the euro sign reads as ","
        {{0xE4, 0xB8, 0xAD}, u"\x4E2D"},     // no bits meet
        {{0xD0, 0x90}, u"\x0410"},
        {{0x80}, u"\x0080"},                 // a stray continuation byte is a unit of its own
        {{0xF0, 0x90, 0x80, 0x80}, u"\xD800\xDC00"},
        {{0xFD, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}, u"\xFFFD"},
        {{0xFC, 0x80, 0x80, 0x80, 0x81, 0x80}, u"\x0040"},  // wraps below 0x110000
        {{0xF8, 0x88, 0x80, 0x80, 0x80}, u"\xFFFD"},
    };
    Core::CUtf8Encoding utf8;
    for (const SUtf8DecodeCase& c : cases) {
        SDecoded decoded = Decode(utf8, c.aBytes);
        EXPECT_EQ(decoded.sUnits, c.sExpected) << "first byte " << int(c.aBytes[0]);
        EXPECT_EQ(decoded.nConsumed, static_cast<int>(c.aBytes.size()));
        EXPECT_FALSE(decoded.bIncomplete);
    }
}

TEST(Utf8Encoding, StopsAtAnUnfinishedSequenceAndResumesWithItsTail) {
    Core::CUtf8Encoding utf8;
    SDecoded first = Decode(utf8, {'x', 0xE4, 0xB8});
    EXPECT_EQ(first.sUnits, u"x");
    EXPECT_EQ(first.nConsumed, 1);
    EXPECT_TRUE(first.bIncomplete);
    SDecoded second = Decode(utf8, {0xE4, 0xB8, 0xAD, 'y'});
    EXPECT_EQ(second.sUnits, u"\x4E2Dy");
    EXPECT_FALSE(second.bIncomplete);
}

TEST(Utf8Encoding, SurrogatePairNeedsTwoUnitsOfRoom) {
    Core::CUtf8Encoding utf8;
    SDecoded none = Decode(utf8, {0xF0, 0x90, 0x80, 0x80}, 1);
    EXPECT_EQ(none.sUnits, u"");
    EXPECT_EQ(none.nConsumed, 0);
    EXPECT_FALSE(none.bIncomplete);
    SDecoded full = Decode(utf8, {'a', 'b', 'c'}, 2);
    EXPECT_EQ(full.sUnits, u"ab");
    EXPECT_EQ(full.nConsumed, 2);
}

TEST(Utf8Encoding, EncodesCorrectUtf8IncludingLoneSurrogates) {
    struct SCase {
        DomString sUnits;
        std::vector<unsigned char> aBytes;
    };
    const SCase cases[] = {
        {u"A", {0x41}},
        {u"\x00E9", {0xC3, 0xA9}},
        {u"\x20AC", {0xE2, 0x82, 0xAC}},
        {u"\xD800", {0xED, 0xA0, 0x80}},
        {u"\xDC00x", {0xED, 0xB0, 0x80, 'x'}},
        {u"\xD83D\xDE00", {0xF0, 0x9F, 0x98, 0x80}},
    };
    Core::CUtf8Encoding utf8;
    for (const SCase& c : cases) {
        SEncoded encoded = Encode(utf8, c.sUnits);
        EXPECT_EQ(encoded.aBytes, c.aBytes);
        EXPECT_EQ(encoded.nUsed, static_cast<int>(c.sUnits.size()));
        EXPECT_FALSE(encoded.bFailed);
    }
}

TEST(Utf8Encoding, EncodeStopsBeforeACharacterThatDoesNotFit) {
    Core::CUtf8Encoding utf8;
    SEncoded encoded = Encode(utf8, u"a\x20AC", 3);
    EXPECT_EQ(encoded.nUsed, 1);
    EXPECT_EQ(encoded.aBytes, std::vector<unsigned char>{'a'});
    EXPECT_FALSE(encoded.bFailed);
    EXPECT_EQ(utf8.GetUnencodableLength(u"\xD800\xDC00", 2), 2);
    EXPECT_EQ(utf8.GetUnencodableLength(u"ab", 2), 1);
    EXPECT_EQ(utf8.GetUnencodableLength(u"", 0), 0);
}

TEST(Utf8Encoding, RoundTripsTextWhoseBitsDoNotMeetAcrossBufferBoundaries) {
    Core::CUtf8Encoding utf8;
    DomString text;
    for (int i = 0; i < 3000; ++i) text += static_cast<DomChar>(i % 3 == 0 ? u'a' : i % 3 == 1 ? 0x4E2D : 0x0410);
    std::vector<unsigned char> bytes(text.size() * 3);
    int written = 0;
    bool failed = false;
    ASSERT_EQ(utf8.Encode(text.data(), static_cast<int>(text.size()), bytes.data(), static_cast<int>(bytes.size()),
                          written, failed),
              static_cast<int>(text.size()));
    // Feed the decoder 7 bytes at a time, carrying the unfinished tail forward as a caller does.
    DomString decoded;
    std::vector<unsigned char> pending;
    DomChar units[16];
    for (int pos = 0; pos < written; pos += 7) {
        pending.insert(pending.end(), bytes.begin() + pos, bytes.begin() + std::min(pos + 7, written));
        int consumed = 0;
        bool incomplete = false;
        int n = utf8.Decode(pending.data(), static_cast<int>(pending.size()), consumed, units, 16, incomplete);
        decoded.append(units, static_cast<size_t>(n));
        pending.erase(pending.begin(), pending.begin() + consumed);
    }
    EXPECT_TRUE(pending.empty());
    EXPECT_EQ(decoded, text);
}

TEST(Utf8Encoding, AsciiRunsStopAtTheRoomLeftAndAtTheFirstOtherCharacter) {
    Core::CUtf8Encoding utf8;
    std::vector<unsigned char> bytes(21, 'a');
    bytes.insert(bytes.begin() + 17, {0xE4, 0xB8, 0xAD});
    for (int capacity : {1, 8, 13, 17, 18, 64}) {
        SDecoded decoded = Decode(utf8, bytes, capacity);
        int expected = std::min(capacity, 22);
        ASSERT_EQ(static_cast<int>(decoded.sUnits.size()), expected) << capacity;
        // The three-byte character at 17 gives one unit.
        EXPECT_EQ(decoded.nConsumed, capacity <= 17 ? capacity : std::min(capacity + 2, 24));
        EXPECT_EQ(decoded.sUnits.find(u'\x4E2D'), capacity > 17 ? 17 : DomString::npos);
    }
    DomString text = DomString(19, u'x') + u"\x00E9" + DomString(9, u'y');
    for (int capacity : {5, 19, 20, 21, 64}) {
        SEncoded encoded = Encode(utf8, text, capacity);
        int expectedUnits = capacity < 19 ? capacity : capacity < 21 ? 19 : std::min(capacity - 1, 29);
        EXPECT_EQ(encoded.nUsed, expectedUnits) << capacity;
        EXPECT_FALSE(encoded.bFailed);
    }
}

TEST(Latin1Encoding, WidensAndNarrowsAndRefusesWideUnits) {
    Core::CLatin1Encoding latin1;
    EXPECT_EQ(Decode(latin1, {'a', 0xE9, 0xFF}).sUnits, u"a\x00E9\x00FF");
    EXPECT_EQ(Decode(latin1, {'a', 'b', 'c'}, 2).nConsumed, 2);
    SEncoded encoded = Encode(latin1, u"a\x0100");
    EXPECT_EQ(encoded.aBytes, std::vector<unsigned char>{'a'});
    EXPECT_EQ(encoded.nUsed, 1);
    EXPECT_TRUE(encoded.bFailed);
    EXPECT_EQ(latin1.GetUnencodableLength(u"\x0100\x4E2D" u"b", 3), 2);
    EXPECT_EQ(latin1.GetUnencodableLength(u"\x0100" u"b", 2), 1);
    SEncoded cut = Encode(latin1, u"abc", 2);
    EXPECT_EQ(cut.nUsed, 2);
    EXPECT_FALSE(cut.bFailed);
}

TEST(Utf16Encoding, JoinsBytesInEitherOrderAndReportsALoneTrailingByte) {
    Core::CUtf16Encoding big(true);
    Core::CUtf16Encoding little(false);
    SDecoded three = Decode(big, {0x4E, 0x2D, 0x00});
    EXPECT_EQ(three.sUnits, u"\x4E2D");
    EXPECT_EQ(three.nConsumed, 2);
    EXPECT_TRUE(three.bIncomplete);
    EXPECT_EQ(Decode(little, {0x2D, 0x4E, 0x00, 0xD8}).sUnits, u"\x4E2D\xD800");
    EXPECT_FALSE(Decode(big, {0, 'a', 0, 'b', 0}, 1).bIncomplete);
    EXPECT_EQ(Encode(big, u"\xFEFF" u"a").aBytes, (std::vector<unsigned char>{0xFE, 0xFF, 0x00, 'a'}));
    EXPECT_EQ(Encode(little, u"\xFEFF").aBytes, (std::vector<unsigned char>{0xFF, 0xFE}));
    EXPECT_EQ(Encode(big, u"abc", 5).nUsed, 2);
}

TEST(Encodings, OnlyUtf16HasAByteOrderMark) {
    int count = -1;
    EXPECT_EQ(Core::CUtf8Encoding().GetByteOrderMark(count), nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Core::CLatin1Encoding().GetByteOrderMark(count), nullptr);
    EXPECT_EQ(count, 0);
    const DomChar* mark = Core::CUtf16Encoding(false).GetByteOrderMark(count);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(mark[0], 0xFEFF);
}

TEST(EncodingTable, FindsByNameWithoutRegardToAsciiCase) {
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable();
    const char16_t* found[] = {u"utf-8", u"Utf-16", u"iso-8859-1", u"UTF-8"};
    for (const char16_t* name : found) {
        Core::IEncoding* encoding = table->Find(name);
        ASSERT_NE(encoding, nullptr) << Core::ToUtf8(name);
    }
    EXPECT_EQ(table->Find(u"ISO8859-1"), nullptr);
    EXPECT_EQ(table->Find(u"US-ASCII"), nullptr);
    EXPECT_EQ(table->Find(u"utf-8 "), nullptr);
    // The UTF-16 found by name writes the most significant byte first.
    Core::IEncoding* utf16 = table->Find(u"utf-16");
    EXPECT_EQ(Encode(*utf16, u"\xFEFF").aBytes, (std::vector<unsigned char>{0xFE, 0xFF}));
}

// Random bytes fed in random slices never make a decoder read or write outside its buffers, and
// each call either makes progress or reports an unfinished tail.
TEST(Encodings, DecodeRandomBytesInRandomSlices) {
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable();
    std::mt19937 random(11);
    std::vector<unsigned char> bytes(4096);
    for (unsigned char& b : bytes) b = static_cast<unsigned char>(random() % 3 ? random() : 0x80 | random());
    for (const char16_t* name : {u"UTF-8", u"UTF-16", u"ISO-8859-1"}) {
        Core::IEncoding* encoding = table->Find(name);
        size_t pos = 0;
        while (pos < bytes.size()) {
            int slice = static_cast<int>(std::min<size_t>(1 + random() % 9, bytes.size() - pos));
            int capacity = 2 + static_cast<int>(random() % 5);
            std::vector<unsigned char> input(bytes.begin() + pos, bytes.begin() + pos + slice);
            std::vector<DomChar> units(static_cast<size_t>(capacity));
            int consumed = -1;
            bool incomplete = false;
            int n = encoding->Decode(input.data(), slice, consumed, units.data(), capacity, incomplete);
            ASSERT_LE(n, capacity);
            ASSERT_GE(consumed, 0);
            ASSERT_LE(consumed, slice);
            ASSERT_TRUE(consumed > 0 || incomplete) << Core::ToUtf8(name) << " at " << pos;
            // An unfinished tail is dropped here; the next slice starts behind it.
            pos += consumed > 0 ? consumed : slice;
        }
    }
}

}  // namespace
