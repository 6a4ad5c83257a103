// Result tree fragments: recorded flat, replayed into another tree any number of times, with
// the namespace treatment of the place where they land.
#include <gtest/gtest.h>

#include "RecordingResultHandler.h"
#include "xslt/private/EventBuffer.h"
#include "xslt/private/ResultTree.h"

using XsltPrivate::CEventBuffer;
using XsltPrivate::CResultTree;

namespace {

class EventBufferTest : public ::testing::Test {
public:
    EventBufferTest()
        : m_pBuffer(new CEventBuffer),
          m_pFragment(new CResultTree(m_pBuffer)),
          m_pHandler(new XsltTest::CRecordingResultHandler),
          m_pTree(new CResultTree(m_pHandler)) {}

    static void Text(CResultTree& tree, DomStringView text) {
        tree.Characters(text.data(), static_cast<int>(text.size()), false);
    }
    // <e xmlns:p="urn:u" p:a="v">name text<!--c--><?t d?></e> and a text beside it.
    void RecordSample(DomStringView text, DomStringView name = u"p:e") {
        m_pFragment->StartDocument();
        m_pFragment->StartElement(name, u"urn:u");
        m_pFragment->StartNamespace(u"p");
        Text(*m_pFragment, u"urn:u");
        m_pFragment->EndNamespace();
        m_pFragment->StartAttribute(u"p:a", u"urn:u");
        Text(*m_pFragment, u"v");
        m_pFragment->EndAttribute();
        Text(*m_pFragment, text);
        m_pFragment->StartComment();
        Text(*m_pFragment, u"c");
        m_pFragment->EndComment();
        m_pFragment->ProcessingInstruction(u"t", u"d");
        m_pFragment->EndElement();
        m_pFragment->Characters(u"<", 1, true);
        m_pFragment->EndDocument();
    }

    TRefPtr<CEventBuffer> m_pBuffer;
    TRefPtr<CResultTree> m_pFragment;
    TRefPtr<XsltTest::CRecordingResultHandler> m_pHandler;
    TRefPtr<CResultTree> m_pTree;
};

TEST_F(EventBufferTest, ReplaysFragmentTwiceAsTwoIdenticalCopies) {
    RecordSample(u"text");
    m_pTree->StartDocument();
    m_pTree->StartElement(u"root", u"");
    m_pBuffer->Replay(*m_pTree);
    m_pBuffer->Replay(*m_pTree);
    m_pTree->EndElement();
    m_pTree->EndDocument();
    const std::string copy = "<p:e|xmlns:p=urn:u|p:a=v|text|<!--c-->|<?t d?>|</p:e>|!<";
    EXPECT_EQ(m_pHandler->GetEvents(), "[doc|<root|" + copy + "|" + copy + "|</root>|doc]");
}

TEST_F(EventBufferTest, ReplayedNamesTakeTheBindingsOfTheTarget) {
    m_pFragment->StartDocument();
    m_pFragment->StartElement(u"p:e", u"urn:u");
    m_pFragment->StartAttribute(u"p:a", u"urn:u");
    m_pFragment->EndAttribute();
    m_pFragment->EndElement();
    m_pFragment->EndDocument();
    m_pTree->StartDocument();
    m_pTree->StartElement(u"q:root", u"urn:u");
    m_pTree->StartNamespace(u"q");
    Text(*m_pTree, u"urn:u");
    m_pTree->EndNamespace();
    m_pBuffer->Replay(*m_pTree);
    m_pTree->EndElement();
    m_pTree->StartElement(u"other", u"");
    m_pBuffer->Replay(*m_pTree);
    m_pTree->EndElement();
    EXPECT_EQ(m_pHandler->GetEvents(),
              "[doc|<q:root|xmlns:q=urn:u|<q:e|q:a=|</q:e>|</q:root>"
              "|<other|<__1__:e|xmlns:__1__=urn:u|__1__:a=|</__1__:e>|</other>");
}

// Texts and names much longer than a chunk, and starting at every offset near a border.
TEST_F(EventBufferTest, LongTextsSurviveChunkBorders) {
    DomString longText;
    for (int i = 0; i < 3 * CEventBuffer::ChunkUnits + 17; ++i) longText += static_cast<DomChar>(u'a' + i % 26);
    DomString longName = u"p:" + longText.substr(0, CEventBuffer::ChunkUnits + 5);
    for (int shift = 0; shift < 8; ++shift) {
        DomString text = longText.substr(shift);
        RecordSample(text, longName);
        TRefPtr<XsltTest::CRecordingResultHandler> handler(new XsltTest::CRecordingResultHandler);
        TRefPtr<CResultTree> tree(new CResultTree(handler));
        tree->StartDocument();
        m_pBuffer->Replay(*tree);
        m_pBuffer->Replay(*tree);
        std::string element = Core::ToUtf8(longName);
        std::string copy = "<" + element + "|xmlns:p=urn:u|p:a=v|" + Core::ToUtf8(text) + "|<!--c-->|<?t d?>|</" +
                           element + ">|!<";
        ASSERT_EQ(handler->GetEvents(), "[doc|" + copy + "|" + copy) << "shift " << shift;
    }
    EXPECT_GT(m_pBuffer->GetLength(), 4 * CEventBuffer::ChunkUnits);
}

TEST_F(EventBufferTest, StringValueIsTheTextOutsideAttributesAndComments) {
    RecordSample(u"text");
    DomString value;
    m_pBuffer->GetText(value);
    EXPECT_EQ(value, u"text<");
}

TEST_F(EventBufferTest, FragmentReplayedIntoFragmentRecordsTheSameEvents) {
    RecordSample(u"text");
    TRefPtr<CEventBuffer> outer(new CEventBuffer);
    TRefPtr<CResultTree> outerTree(new CResultTree(outer));
    outerTree->StartDocument();
    m_pBuffer->Replay(*outerTree);
    outerTree->EndDocument();
    EXPECT_EQ(outer->GetLength(), m_pBuffer->GetLength());
    m_pTree->StartDocument();
    outer->Replay(*m_pTree);
    EXPECT_EQ(m_pHandler->GetEvents(), "[doc|<p:e|xmlns:p=urn:u|p:a=v|text|<!--c-->|<?t d?>|</p:e>|!<");
}

}  // namespace
