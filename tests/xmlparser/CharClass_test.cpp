// The scanner's shortcut for ASCII name characters must say what the class tables say.
#include <gtest/gtest.h>

#include "xmlparser/private/CharClass.h"

namespace {

using namespace XmlParserPrivate;

TEST(CharClass, AsciiNameCharactersAgreeWithTheClassTables) {
    for (int unit = 0; unit < 0x80; ++unit) {
        int charClass = CharClass(static_cast<DomChar>(unit));
        bool byClass = charClass == ClassNameStart || charClass == ClassNameChar || charClass == ClassMinus;
        EXPECT_EQ(IsNameChar(static_cast<DomChar>(unit)), byClass) << "unit " << unit;
    }
}

}  // namespace
