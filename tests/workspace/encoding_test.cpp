#include "workspace/encoding.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

EncodingPtr Named(std::string_view codePage) {
    auto encoding = FindEncoding(codePage);
    EXPECT_TRUE(encoding.has_value()) << codePage << ": " << encoding.error();
    return *encoding;
}

Text Decoded(const Encoding& encoding, std::string_view bytes) {
    Text text = u"left from before";
    encoding.Decode(bytes, text);
    return text;
}

std::optional<std::string> Encoded(const Encoding& encoding, TextView text) {
    std::string bytes = "before:";
    if (!encoding.Encode(text, bytes)) {
        EXPECT_EQ(bytes, "before:");
        return std::nullopt;
    }
    EXPECT_TRUE(bytes.starts_with("before:"));
    return bytes.substr(7);
}

class CodePageTest : public testing::TestWithParam<const char*> {};

TEST_P(CodePageTest, EveryByteComesBack) {
    const EncodingPtr encoding = Named(GetParam());
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(Encoded(*encoding, Decoded(*encoding, bytes)), bytes) << byte;
    }
}

TEST_P(CodePageTest, EveryPairOfBytesComesBack) {
    const EncodingPtr encoding = Named(GetParam());
    for (int pair = 0; pair < 0x10000; ++pair) {
        const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        ASSERT_EQ(Encoded(*encoding, Decoded(*encoding, bytes)), bytes) << std::hex << pair;
    }
}

TEST_P(CodePageTest, AsciiIsItself) {
    const EncodingPtr encoding = Named(GetParam());
    std::string bytes;
    Text text;
    for (char c = 0; c < 0x7F; ++c) {
        bytes += c;
        text += static_cast<char16_t>(c);
    }
    bytes += '\x7F';
    text += u'\x7F';
    EXPECT_EQ(Decoded(*encoding, bytes), text);
    EXPECT_EQ(Encoded(*encoding, text), bytes);
    EXPECT_EQ(encoding->unitSize(), 1U);
}

TEST_P(CodePageTest, ACharacterThatIsNotInItIsRefusedAtItsPlace) {
    const EncodingPtr encoding = Named(GetParam());
    const bool unicode = encoding->name() == "UTF-8" || encoding->name() == "GB18030";
    const Text text = unicode ? u"abc\xD83Dx" : u"abc\xD83D\xDE00x";
    EXPECT_EQ(Encoded(*encoding, text), std::nullopt);
    EXPECT_EQ(encoding->FirstUnencodable(text), 3U);
    EXPECT_EQ(encoding->FirstUnencodable(u"abc"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, CodePageTest,
                         testing::Values("1250", "1251", "1252", "1253", "1254", "1255", "1256", "1257",
                                         "1258", "874", "437", "850", "866", "20127", "28591", "28605",
                                         "koi8-r", "932", "936", "949", "950", "euc-jp", "gb18030", "65001"),
                         [](const auto& each) {
                             std::string name = each.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(Encoding, Windows1252FollowsItsTable) {
    const EncodingPtr encoding = DefaultEncoding();
    EXPECT_EQ(encoding->name(), "windows-1252");
    EXPECT_EQ(Decoded(*encoding,
                      "Stra\xDF"
                      "e \x80\x8A\x9F\xFF"),
              u"Stra\u00DFe \u20AC\u0160\u0178\u00FF");
    EXPECT_EQ(Encoded(*encoding, u"Stra\u00DFe \u20AC\u0160\u0178\u00FF"),
              "Stra\xDF"
              "e \x80\x8A\x9F\xFF");
}

TEST(Encoding, BytesThatWindows1252LeavesUndefinedAreControlsOfTheSameValue) {
    for (const int byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(Decoded(*DefaultEncoding(), bytes), Text(1, static_cast<char16_t>(byte)));
    }
}

TEST(Encoding, TheBuiltInWindows1252IsTheOneOfTheCommonTables) {
    const EncodingPtr common = Named("ibm-5348");
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(Decoded(*DefaultEncoding(), bytes), Decoded(*common, bytes)) << byte;
    }
}

TEST(Encoding, NothingIsWrittenThatOnlyResembles) {
    // Each has a best fit in the code page that other converters would take.
    EXPECT_EQ(Encoded(*DefaultEncoding(), u"\u0100"), std::nullopt);  // A with macron
    EXPECT_EQ(Encoded(*DefaultEncoding(), u"\u2032"), std::nullopt);  // prime
    EXPECT_EQ(Encoded(*DefaultEncoding(), u"\uFF21"), std::nullopt);  // fullwidth A
    EXPECT_EQ(Encoded(*DefaultEncoding(), u"\u0080"), std::nullopt);  // 0x80 is the euro sign
    EXPECT_EQ(Encoded(*Named("1251"), u"\u00E9"), std::nullopt);
    EXPECT_EQ(Encoded(*Named("932"), u"\u00E9"), std::nullopt);
    EXPECT_EQ(Encoded(*Named("936"), u"\u00E5"), std::nullopt);
}

struct Sample {
    const char* codePage;
    std::string bytes;
    Text text;
};

TEST(Encoding, CodePagesDecodeAsTheirTablesSay) {
    const std::vector<Sample> samples = {
        {"1251", "\xCF\xF0\xE8\xE2\xE5\xF2", u"Привет"},
        {"1250", "\x8A\xE8", u"Šč"},
        {"1253", "\xC1", u"Α"},
        {"20127", "\x81\xAA", u"\x81\xDCAA"},
        {"932", "\x93\xFA\x96{\x8C\xEA", u"日本語"},
        {"932", "\x83\\", u"ソ"},
        {"936", "\xD6\xD0\xCE\xC4", u"中文"},
        {"949", "\xC7\xD1\xB1\xDB", u"한글"},
        {"950", "\xA4\xA4\xA4\xE5", u"中文"},
        {"gb18030", "\x94\x39\xDA\x33", u"\U0001F4A9"},
        {"437", "\x9C\x1A\x1C\x7F", u"£\x1A\x1C\x7F"},
        {"utf-8", "\xE2\x82\xAC \xF0\x9F\x98\x80", u"\u20AC \U0001F600"},
    };
    for (const Sample& sample : samples) {
        const EncodingPtr encoding = Named(sample.codePage);
        EXPECT_EQ(Decoded(*encoding, sample.bytes), sample.text) << sample.codePage;
        EXPECT_EQ(Encoded(*encoding, sample.text), sample.bytes) << sample.codePage;
    }
}

TEST(Encoding, BytesWrittenInAnotherFormThanTheUsualOneKeepIt) {
    // Two sequences stand for one character; only one of them is what the character is written as.
    const EncodingPtr encoding = Named("932");
    const std::string usual = "\x81\xBE";
    const std::string other = "\x87\x9B";
    EXPECT_EQ(Decoded(*encoding, usual), u"\u222A");
    EXPECT_EQ(Encoded(*encoding, Decoded(*encoding, "a" + other + "b")), "a" + other + "b");
}

TEST(Encoding, BytesThatAreNoUtf8ComeBack) {
    const EncodingPtr encoding = Named("utf-8");
    const std::vector<std::string> cases = {"a\xFFz",         "\xC3",         "\xC0\x80", "\xE0\x80\x80",
                                            "\xED\xA0\x80",   "\xF5\x80",     "\x80\x80", "\xF4\x90\x80\x80",
                                            "\xF0\x9F\x98 x", "\xE2\x82(\xA1"};
    for (const std::string& bytes : cases) {
        EXPECT_EQ(Encoded(*encoding, Decoded(*encoding, bytes)), bytes);
    }
    EXPECT_EQ(Decoded(*encoding, "a\xFFz"), u"a\xDCFFz");
}

TEST(Encoding, UndefinedBytesAreNotWrittenWhereTheirNeighboursMakeACharacterOfThem) {
    struct Case {
        const char* codePage;
        Text text;
        std::size_t at;
    };
    const std::vector<Case> cases = {
        {"932", u"fL\u008C`", 2},
        {"utf-8", u"a\xDCE2\xDC82\xDCAC", 1},
        {"utf-8", u"\u00E4\xDCC3\xDCA4z", 1},
    };
    for (const Case& c : cases) {
        const EncodingPtr encoding = Named(c.codePage);
        EXPECT_EQ(Encoded(*encoding, c.text), std::nullopt) << c.codePage;
        EXPECT_EQ(encoding->FirstUnencodable(c.text), c.at) << c.codePage;
        Text apart = c.text;
        apart.insert(c.at + 1, u" ");
        EXPECT_EQ(Decoded(*encoding, Encoded(*encoding, apart).value_or("none")), apart) << c.codePage;
        EXPECT_EQ(encoding->FirstUnencodable(apart), std::nullopt) << c.codePage;
    }
}

TEST(Encoding, LongRunsOfAsciiWithOthersBetween) {
    for (const char* const codePage : {"1252", "utf-8", "932", "1251"}) {
        const EncodingPtr encoding = Named(codePage);
        for (std::size_t before = 0; before < 40; ++before) {
            const Text text = Text(before, u'x') + u"\u00A7" + Text(40 - before, u'y');
            const std::string usual = Encoded(*encoding, text).value_or("none");
            EXPECT_EQ(Decoded(*encoding, usual), text) << codePage << before;
        }
    }
}

TEST(Encoding, Utf16KeepsUnpairedSurrogates) {
    const Text text = u"a\xD800 \xDC00\xD83D\xDE00";
    for (const char* const codePage : {"utf-16le", "utf-16be"}) {
        const EncodingPtr encoding = Named(codePage);
        const std::string bytes = Encoded(*encoding, text).value_or("");
        EXPECT_EQ(bytes.size(), text.size() * 2);
        EXPECT_EQ(Decoded(*encoding, bytes), text);
        EXPECT_EQ(encoding->unitSize(), 2U);
        EXPECT_EQ(encoding->FirstUnencodable(text), std::nullopt);
    }
    EXPECT_EQ(Encoded(*Named("1200"), u"\u20AC"), "\xAC\x20");
    EXPECT_EQ(Encoded(*Named("1201"), u"\u20AC"), "\x20\xAC");
    EXPECT_TRUE(Named("1201")->bigEndian());
}

TEST(Encoding, NumbersAndNamesFindTheSameCodePage) {
    const std::vector<std::vector<const char*>> groups = {
        {"1252", "cp1252", "windows-1252", "Windows-1252", "CP1252"},
        {"65001", "utf-8", "UTF8", "cp65001"},
        {"1200", "utf-16le", "UTF-16", "unicode"},
        {"1201", "utf-16be"},
        {"932", "shift_jis", "Shift_JIS", "cp932", "windows-932"},
        {"1251", "cp1251", "windows-1251"},
        {"28591", "iso-8859-1", "latin1"},
    };
    for (const auto& group : groups) {
        for (const char* const name : group) {
            EXPECT_EQ(Named(name)->name(), Named(group.front())->name()) << name;
        }
    }
}

TEST(Encoding, OtherNamesAreRefusedWithASentence) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "no code page"},
        {"klingon", "no code page \"klingon\""},
        {"99999", "no code page \"99999\""},
        {"/etc/passwd", "no code page"},
        {"ibm-37,swaplfnl", "no code page"},
        {std::string(5000, 'x'), "no code page"},
        {"utf-7", "switch"},
        {"65000", "switch"},
        {"iso-2022-jp", "switch"},
        {"ibm-37", "no extension of ASCII"},
        {"utf-32", "cannot be edited line by line"},
    };
    for (const auto& [name, part] : cases) {
        const auto encoding = FindEncoding(name);
        ASSERT_FALSE(encoding.has_value()) << name;
        EXPECT_NE(encoding.error().find(part), std::string::npos) << encoding.error();
        EXPECT_LT(encoding.error().size(), 250U);
    }
}

TEST(Encoding, SeveralThreadsMayUseOneEncoding) {
    const EncodingPtr encoding = Named("932");
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&encoding, &count = wrong[i]] {
            for (int round = 0; round < 2000; ++round) {
                Text text;
                encoding->Decode("' \x93\xFA\x96{\x8C\xEA", text);
                std::string bytes;
                count += text != u"' 日本語" || !encoding->Encode(text, bytes) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

TEST(ByteOrderMark, TellsTheEncoding) {
    EXPECT_EQ(DetectByteOrderMark("\xEF\xBB\xBFx")->encoding->name(), "UTF-8");
    EXPECT_EQ(DetectByteOrderMark("\xEF\xBB\xBFx")->length, 3U);
    EXPECT_EQ(DetectByteOrderMark("\xFF\xFEx")->encoding->name(), "UTF-16LE");
    EXPECT_EQ(DetectByteOrderMark("\xFE\xFFx")->encoding->name(), "UTF-16BE");
    EXPECT_EQ(DetectByteOrderMark("\xFE\xFFx")->length, 2U);
    EXPECT_FALSE(DetectByteOrderMark("\xEF\xBB").has_value());
    EXPECT_FALSE(DetectByteOrderMark("").has_value());
}

TEST(Utf8AtTheEdges, ReplacesWhatIsInvalid) {
    EXPECT_EQ(FromUtf8("a\xFF\xC3z"), u"a\uFFFD\uFFFDz");
    EXPECT_EQ(ToUtf8(u"a\xD800z\xDCFF"), "a\xEF\xBF\xBDz\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(FromUtf8("\xE2\x82\xAC\xF0\x9F\x98\x80")), "\xE2\x82\xAC\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace lintara::workspace
