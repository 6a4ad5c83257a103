// File, string and text-file streams.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "core/EncodingTable.h"
#include "core/FileStream.h"
#include "core/StringStream.h"
#include "core/TextFile.h"

namespace {

class TempDir : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/kst-stream-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        m_sDir = pattern;
    }
    void TearDown() override { std::system(("rm -rf '" + m_sDir + "'").c_str()); }

    std::string Path(const std::string& name) const { return m_sDir + "/" + name; }
    DomString Name(const std::string& name) const { return Core::WidenLatin1(Path(name)); }
    void WriteFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }
    std::string ReadFile(const std::string& name) const {
        std::ifstream in(Path(name), std::ios::binary);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }

    std::string m_sDir;
};

TEST(FileStreamMode, FlagsMakeTheModeText) {
    struct SCase {
        int nFlags;
        const char* pMode;
    };
    const SCase cases[] = {{0x44, "rb"}, {0x51, "w+b"}, {0x00, "r"}, {0x08, "r+"}, {0x10, "a+"},
                           {0x01, "w"},  {0x03, "a"},   {0x13, "a+"}, {0x41, "wb"}};
    for (const SCase& c : cases) {
        char mode[5];
        Core::CFileStream::MakeMode(c.nFlags, mode);
        EXPECT_STREQ(mode, c.pMode) << c.nFlags;
    }
}

using FileStreamTest = TempDir;

TEST_F(FileStreamTest, CreatesTruncatesAndReadsBack) {
    WriteFile("out.xml", "old content that must go");
    TRefPtr<Core::CFileStream> out = new Core::CFileStream();
    ASSERT_TRUE(out->Open(Name("out.xml"), Core::CFileStream::CreateBinary));
    out->Write("abc", 3);
    out = nullptr;  // the release closes the file
    EXPECT_EQ(ReadFile("out.xml"), "abc");

    TRefPtr<Core::CFileStream> in = new Core::CFileStream();
    ASSERT_TRUE(in->Open(Name("out.xml"), Core::CFileStream::ReadBinary));
    char buffer[8];
    in->Seek(1, 0);
    EXPECT_EQ(in->Tell(), 1);
    EXPECT_EQ(in->Read(buffer, 8), 2);
    EXPECT_EQ(in->Read(buffer, 8), 0);
}

TEST_F(FileStreamTest, RefusesMissingFilesDirectoriesAndImpossibleNames) {
    Core::CFileStream stream;
    EXPECT_FALSE(stream.Open(Name("missing.xml"), Core::CFileStream::ReadBinary));
    EXPECT_FALSE(stream.Open(Core::WidenLatin1(m_sDir), Core::CFileStream::ReadBinary));
    EXPECT_FALSE(stream.Open(Core::WidenLatin1(m_sDir), Core::CFileStream::CreateBinary));
    EXPECT_FALSE(stream.Open(Name("no/such/dir.xml"), Core::CFileStream::CreateBinary));
    EXPECT_FALSE(stream.Open(DomString(u"a\0b", 3), Core::CFileStream::CreateBinary));
    EXPECT_FALSE(stream.Open(u"", Core::CFileStream::ReadBinary));
    char buffer[4];
    EXPECT_EQ(stream.Read(buffer, 4), 0);
}

TEST_F(FileStreamTest, NonAsciiNamesReachTheFileSystemAsUtf8) {
    Core::CFileStream stream;
    ASSERT_TRUE(stream.Open(Name("") + u"\x00E9t\x00E9.xml", Core::CFileStream::CreateBinary));
    EXPECT_EQ(access(Path("\xC3\xA9t\xC3\xA9.xml").c_str(), F_OK), 0);
}

TEST(StringStream, ReadsUnitsAndSeeksFromEachOrigin) {
    TRefPtr<Core::CStringStream> stream = new Core::CStringStream(u"hello");
    DomChar units[8];
    EXPECT_EQ(stream->Read(units, 2), 2);
    EXPECT_EQ(DomString(units, 2), u"he");
    stream->Seek(1, 1);
    EXPECT_EQ(stream->Read(units, 8), 2);
    EXPECT_EQ(DomString(units, 2), u"lo");
    stream->Seek(-1, 2);
    EXPECT_EQ(stream->Tell(), 4);
    stream->Seek(2, 7);  // an unknown origin counts from the start
    EXPECT_EQ(stream->Tell(), 2);
    stream->Seek(10, 0);
    EXPECT_EQ(stream->Read(units, 8), 0);
    stream->Write(u"x", 1);
    stream->Seek(0, 0);
    EXPECT_EQ(stream->Read(units, 8), 5);
}

using TextFileTest = TempDir;

DomString ReadAllLines(Core::CTextFile& file, int* count = nullptr) {
    DomString all;
    int lines = 0;
    for (DomString line = file.ReadLine(); !line.empty(); line = file.ReadLine()) {
        all += u'[' + line + u']';
        ++lines;
    }
    if (count) *count = lines;
    return all;
}

TEST_F(TextFileTest, ReadsLinesWithTheirLineFeedsAndALastLineWithout) {
    WriteFile("a.txt", "one\r\ntwo\n\nlast");
    TRefPtr<Core::CTextFile> file = new Core::CTextFile();
    ASSERT_TRUE(file->Open(Name("a.txt"), "r"));
    EXPECT_EQ(ReadAllLines(*file), u"[one\r\n][two\n][\n][last]");
    EXPECT_EQ(file->ReadLine(), u"");
    EXPECT_TRUE(file->Close());
    EXPECT_FALSE(file->Close());
    EXPECT_EQ(file->GetError(), Core::CTextFile::ErrorNotOpen);
}

TEST_F(TextFileTest, WithoutEncodingEachByteIsOneUnitUnchanged) {
    WriteFile("b.txt", "\xE9\xFF\x80\n");
    Core::CTextFile file;
    ASSERT_TRUE(file.Open(Name("b.txt"), "r"));
    EXPECT_EQ(file.ReadLine(), u"\x00E9\x00FF\x0080\n");
}

TEST_F(TextFileTest, DecodesSequencesSplitAcrossTheByteBuffer) {
    // Lines of three-byte characters whose sequences straddle every block boundary.
    std::string bytes;
    DomString expected;
    for (int i = 0; i < 20000; ++i) {
        bytes += "\xE4\xB8\xAD";
        expected += u'\x4E2D';
        if (i % 997 == 0) {
            bytes += '\n';
            expected += u'\n';
        }
    }
    WriteFile("c.txt", bytes);
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable();
    Core::CTextFile file;
    ASSERT_TRUE(file.Open(Name("c.txt"), "r", table->Find(u"UTF-8")));
    DomString all;
    for (DomString line = file.ReadLine(); !line.empty(); line = file.ReadLine()) all += line;
    EXPECT_EQ(all, expected);
}

TEST_F(TextFileTest, ReadsBlocksAndRefusesBadModesAndReopening) {
    WriteFile("d.txt", std::string(5000, 'x'));
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable();
    Core::CTextFile file;
    EXPECT_FALSE(file.Open(Name("d.txt"), "r+", table->Find(u"UTF-8")));
    EXPECT_EQ(file.GetError(), Core::CTextFile::ErrorBadMode);
    EXPECT_FALSE(file.Open(Name("d.txt"), "rb", table->Find(u"UTF-8")));
    EXPECT_FALSE(file.Open(Name("missing.txt"), "r"));
    EXPECT_FALSE(file.IsOpen());
    ASSERT_TRUE(file.Open(Name("d.txt"), "r", table->Find(u"ISO-8859-1")));
    EXPECT_FALSE(file.Open(Name("d.txt"), "r"));
    EXPECT_EQ(file.GetError(), Core::CTextFile::ErrorAlreadyOpen);
    EXPECT_EQ(file.Read(4500).size(), 4500u);
    EXPECT_EQ(file.Read(4500).size(), 500u);
    EXPECT_EQ(file.Read(10), u"");
}

TEST_F(TextFileTest, WritesThroughAnEncodingAndReadsAttachedStreams) {
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable();
    Core::CTextFile out;
    ASSERT_TRUE(out.Open(Name("e.txt"), "w", table->Find(u"ISO-8859-1")));
    EXPECT_TRUE(out.Write(u"caf\x00E9 \x4E2D!\n"));
    EXPECT_TRUE(out.Close());
    EXPECT_EQ(ReadFile("e.txt"), "caf\xE9 ?!\n");

    Core::CTextFile in;
    ASSERT_TRUE(in.AttachTextStream(new Core::CStringStream(u"x\ny")));
    EXPECT_EQ(in.ReadLine(), u"x\n");
    EXPECT_FALSE(in.Close());
    EXPECT_EQ(in.GetError(), Core::CTextFile::ErrorAttached);
    EXPECT_EQ(in.ReadLine(), u"y");
    in.Detach();
    EXPECT_FALSE(in.IsOpen());
}

}  // namespace
