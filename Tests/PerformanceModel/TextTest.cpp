#include "PerformanceModel/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace tavro {
namespace {

TEST(Text, KnowsEveryWhiteSpaceOfUnicode) {
    const std::u32string known =
        U"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007"
        U"\u2008\u2009\u200A\u2028\u2029\u202F\u205F\u3000";
    for (Character character = 0; character < 0x20000; ++character) {
        EXPECT_EQ(isWhiteSpace(character), known.find(character) != std::u32string::npos)
            << static_cast<std::uint32_t>(character);
    }
}

TEST(Text, IsTrimmedOfWhiteSpaceAroundItOnly) {
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \t\r\n"), "");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \t a b \r\n"), "a b");
    EXPECT_EQ(trimmed("\u3000\u00A0ä\u00A0b\u2028\u0085"), "ä\u00A0b");
    EXPECT_EQ(trimmed("\u200B"), "\u200B");
}

TEST(Text, KeepsWhatIsNotUtf8WhenItIsTrimmed) {
    for (const std::string text :
         {"\x85", "\xA0", "\xC2", "\x80\x80\x80\x80\x80", "\xE3\x80", "a\xA0", "\xFF a"}) {
        EXPECT_EQ(trimmed(text), text);
        EXPECT_EQ(trimmed(" " + text + " "), text);
    }
}

TEST(Text, LosesOneByteOrderMark) {
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBFtext"), "text");
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBF\xEF\xBB\xBF"), "\xEF\xBB\xBF");
    EXPECT_EQ(withoutByteOrderMark("text\xEF\xBB\xBF"), "text\xEF\xBB\xBF");
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
}

} // namespace
} // namespace tavro
