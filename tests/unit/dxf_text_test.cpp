// ASCII DXF at the group level: splitting files into groups, the text of string values
// (code pages, UTF-8, escapes, carets), writing groups and reals, sections and records.

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file.h"
#include "runtime/dxf/dxf_text_codec.h"
#include "runtime/dxf/dxf_tokenizer.h"
#include "runtime/dxf/dxf_writer.h"

namespace {

using namespace kelvo::host::dxf;

const std::string kTestData = KELVO_SOURCE_DIR "/../shared/testdata/dxf/";

std::vector<RawGroup> tokens(std::string_view text) {
    std::vector<RawGroup> out;
    Tokenizer t(text);
    for (RawGroup g; t.next(g);) out.push_back(g);
    return out;
}

std::string replaceAll(std::string s, std::string_view from, std::string_view to) {
    for (size_t i = 0; (i = s.find(from, i)) != std::string::npos; i += to.size())
        s.replace(i, from.size(), to);
    return s;
}

TEST(DxfTokenizer, LfAndCrLfGiveTheSameGroupsAndCodeLinesMayBePadded) {
    std::string lf = "  0\nSECTION\n  2\nENTITIES\n 10\n1.5\n1000\n  text with spaces \n";
    auto a = tokens(lf);
    auto b = tokens(replaceAll(lf, "\n", "\r\n"));
    ASSERT_EQ(a.size(), 4u);
    ASSERT_EQ(b.size(), 4u);
    for (size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].code, b[i].code);
        EXPECT_EQ(a[i].value, b[i].value);
    }
    EXPECT_EQ(a[2].code, 10);
    EXPECT_EQ(a[3].code, 1000);
    EXPECT_EQ(a[3].value, "  text with spaces ");  // string values keep their blanks
    EXPECT_EQ(a[3].line, 7);
}

TEST(DxfTokenizer, StopsAtEofAndIgnoresWhatFollows) {
    auto t = tokens("0\nSECTION\n0\nEOF\ngarbage\nmore\n");
    EXPECT_EQ(t.size(), 1u);
    DxfFile f = DxfFile::load(kTestData + "ezdxf__R12_with_trash_beyond_EOF.dxf");
    EXPECT_TRUE(f.sawEof());
    ASSERT_NE(f.section(L"ENTITIES"), nullptr);
    ASSERT_EQ(f.section(L"ENTITIES")->records.size(), 1u);
    EXPECT_EQ(f.section(L"ENTITIES")->records[0].type(), L"CIRCLE");
}

TEST(DxfTokenizer, MalformedInputNamesTheLine) {
    try {
        tokens("0\nSECTION\nabc\nx\n");
        FAIL() << "no error";
    } catch (const DxfError& e) {
        EXPECT_EQ(e.line(), 3);
        EXPECT_STREQ(e.what(), "line 3: group code expected, found \"abc\"");
    }
    try {
        tokens("0\nSECTION\n2");
        FAIL() << "no error";
    } catch (const DxfError& e) {
        EXPECT_EQ(e.line(), 3);
    }
    std::string binary("AutoCAD Binary DXF\r\n\x1a\0", 22);
    EXPECT_THROW(tokens(binary), DxfError);
}

// A group code outside those of drawing files would be taken, once in memory, for another
// kind of value (65536 wraps to 0, a string): such a file is refused where the code is.
TEST(DxfTokenizer, GroupCodesOutsideTheDxfRangeAreRefused) {
    for (std::string code : {"65536", "-16777216", "5005", "1072", "-1", "32768"}) {
        SCOPED_TRACE(code);
        try {
            tokens("0\nSECTION\n2\nENTITIES\n0\nLINE\n" + code + "\nabc\n0\nENDSEC\n0\nEOF\n");
            FAIL() << "no error";
        } catch (const DxfError& e) {
            EXPECT_EQ(e.line(), 7);
            EXPECT_EQ(std::string(e.what()),
                      "line 7: group code " + code +
                          " is outside the range of DXF group codes (0 to 1071)");
        }
    }
    EXPECT_THROW(
        DxfFile::parse("0\nSECTION\n2\nENTITIES\n0\nLINE\n65536\nabc\n0\nENDSEC\n0\nEOF\n"),
        DxfError);
    EXPECT_EQ(tokens("999\ncomment\n1071\n7\n0\nEOF\n").size(), 2u);
}

TEST(DxfTextCodec, CodePagesUtf8AndEscapes) {
    TextCodec latin = TextCodec::codePage("ANSI_1252");
    EXPECT_EQ(latin.decode("108\xB0"), L"108\u00B0");
    EXPECT_EQ(latin.decode("\x80"), L"\u20AC");  // the euro sign of Windows Latin
    EXPECT_EQ(latin.decode("a\\U+03B1b"), L"a\u03B1b");
    EXPECT_EQ(latin.decode("\\U+D83D\\U+DE00"), L"\U0001F600");
    EXPECT_EQ(latin.decode("\\U+00Zz"), L"\\U+00Zz");  // not an escape: kept
    TextCodec utf8 = TextCodec::utf8();
    EXPECT_EQ(utf8.decode("Tsch\xC3\xBCss \\U+00FC"), L"Tsch\u00FCss \u00FC");
    EXPECT_EQ(utf8.decode("bad \xB0"), L"bad \u00B0");  // not UTF-8: byte for byte
    TextCodec japanese = TextCodec::codePage("dos932");
    EXPECT_EQ(japanese.decode("\x93\xfa"), L"\u65E5");
    EXPECT_EQ(latin.decode("\\M+193FA"), L"\u65E5");
    EXPECT_TRUE(TextCodec::forDrawing("AC1021", "ANSI_1252").isUtf8());
    EXPECT_FALSE(TextCodec::forDrawing("AC1018", "ANSI_1252").isUtf8());
    EXPECT_FALSE(TextCodec::forDrawing("", "").isUtf8());
}

TEST(DxfTextCodec, CaretsDecodeControlCharactersOnly) {
    EXPECT_EQ(resolveEscapes(L"a^Jb"), L"a\nb");
    EXPECT_EQ(resolveEscapes(L"a^ b"), L"a^b");
    EXPECT_EQ(resolveEscapes(L"a^ab^?cd^"), L"a^ab^?cd^");
    EXPECT_EQ(resolveEscapes(L"^^"), L"\x1E");
    EXPECT_EQ(resolveEscapes(L"^@x^_"), L"\u2400x\x1F");  // a 0 would end the text
}

TEST(DxfTextCodec, EncodeThenDecodeGivesTheTextBack) {
    const std::wstring samples[] = {
        L"plain",
        L"a\nb\tc",
        L"^J literal",
        L"^",
        L"x^ y",
        L"^^^",
        L"caf\u00E9 \u00B0",
        L"\u03B1\u03B2 \u65E5",
        L"\U0001F600",
        L"back\\slash \\U+ not",
        L"^a^?",
    };
    for (auto* codec : {new TextCodec(TextCodec::utf8()), new TextCodec(TextCodec::codePage(""))}) {
        std::unique_ptr<TextCodec> owned(codec);
        for (auto& s : samples) {
            std::string bytes = codec->encode(s);
            EXPECT_EQ(bytes.find('\n'), std::string::npos);
            EXPECT_EQ(codec->decode(bytes), s) << codec->name() << ": " << bytes;
        }
    }
    EXPECT_EQ(TextCodec::codePage("ANSI_1252").encode(L"\u00B0\u03B1"), "\xB0\\U+03B1");
}

TEST(DxfWriter, GroupsAreAlignedAndRealsReadBackExactly) {
    std::string out;
    TextCodec codec = TextCodec::utf8();
    Writer w(out, codec, false);
    w.string(0, L"SECTION");
    w.integer(70, 5);
    w.integer(90, 123456);
    w.handle(5, 0x2AF);
    w.point2d(10, 1.0, -0.5);
    EXPECT_EQ(out, "  0\nSECTION\n 70\n     5\n 90\n123456\n  5\n2AF\n 10\n1.0\n 20\n-0.5\n");

    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> dist(-1e6, 1e6);
    for (int i = 0; i < 2000; ++i) {
        double v = i % 3 ? dist(rng) : dist(rng) * 1e-12;
        std::string text = formatReal(v);
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), v) << text;
        EXPECT_NE(text.find_first_of(".e"), std::string::npos) << text;
    }
    EXPECT_EQ(formatReal(-0.0), "0.0");
    EXPECT_EQ(formatReal(1.0 / 0.0), "0.0");

    std::string crlf;
    Writer w2(crlf, codec, true);
    w2.string(1, L"a\u00E9");
    EXPECT_EQ(crlf, "  1\r\na\xC3\xA9\r\n");
}

TEST(DxfFile, SectionsRecordsAndHeaderVariables) {
    DxfFile f = DxfFile::load(kTestData + "libredwg__sample_2000.dxf");
    EXPECT_EQ(f.acadVersion(), "AC1015");
    ASSERT_NE(f.headerVariable(L"$HANDSEED"), nullptr);
    EXPECT_EQ(f.headerVariable(L"$HANDSEED")->groups.at(0).code, 5);
    for (auto* name : {L"CLASSES", L"TABLES", L"BLOCKS", L"ENTITIES", L"OBJECTS"})
        EXPECT_NE(f.section(name), nullptr) << name;
    std::map<std::wstring, int> types;
    for (auto& r : f.section(L"ENTITIES")->records) ++types[r.type()];
    EXPECT_EQ(types, (std::map<std::wstring, int>{
                         {L"LINE", 3}, {L"CIRCLE", 1}, {L"TEXT", 1}, {L"LWPOLYLINE", 1}}));
}

TEST(DxfFile, EveryTestDrawingSplitsIntoSections) {
    for (auto& entry : std::filesystem::directory_iterator(kTestData)) {
        auto ext = entry.path().extension().string();
        if (ext != ".dxf" && ext != ".DXF") continue;
        SCOPED_TRACE(entry.path().filename().string());
        DxfFile f = DxfFile::load(entry.path());
        EXPECT_NE(f.section(L"ENTITIES"), nullptr);
        EXPECT_TRUE(f.sawEof());
    }
}

TEST(DxfFile, DecodesByVersionAndCodePage) {
    DxfFile utf = DxfFile::load(kTestData + "ezdxf__dxf_unicode.dxf");
    bool found = false;
    for (auto& r : utf.section(L"TABLES")->records)
        for (auto& g : r.groups)
            if (g.code == 2 && g.text == L"Tsch\u00FCss mit \u00FC") found = true;
    EXPECT_TRUE(found);
    EXPECT_THROW(DxfFile::load("/nonexistent/x.dxf"), DxfError);
    EXPECT_THROW(DxfFile::parse("0\nLINE\n0\nEOF\n"), DxfError);
}

}  // namespace
