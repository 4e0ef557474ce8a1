#include "workspace/component_file.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::ComponentType;

ComponentFile Parsed(const std::string& fileName, std::string_view bytes,
                     const EncodingPtr& codePage = DefaultEncoding()) {
    auto component = ParseComponentFile(fileName, *ComponentTypeOf(fileName), bytes, codePage);
    EXPECT_TRUE(component.has_value()) << component.error().ToString();
    return component ? *std::move(component) : ComponentFile{};
}

Diagnostic Refused(const std::string& fileName, std::string_view bytes,
                   const EncodingPtr& codePage = DefaultEncoding()) {
    auto component = ParseComponentFile(fileName, *ComponentTypeOf(fileName), bytes, codePage);
    EXPECT_FALSE(component.has_value());
    return component ? Diagnostic{} : component.error();
}

std::vector<Text> Names(const ComponentFile& component) {
    std::vector<Text> names;
    for (const DesignerControl& control : component.designer.value()) {
        names.push_back(control.className + u" " + control.name);
    }
    return names;
}

// In these texts "^" marks where the shown code begins.
struct HeadCase {
    const char* fileName;
    std::string text;
    Text name;
    ComponentType type;
};

TEST(ComponentFile, TheHeadEndsWhereTheShownCodeBegins) {
    const std::vector<HeadCase> cases = {
        {"a.bas", "Attribute VB_Name = \"modMain\"\r\n^Option Explicit\r\n", u"modMain",
         ComponentType::Module},
        {"a.BAS", "^Option Explicit\n", u"", ComponentType::Module},
        {"a.bas", "^", u"", ComponentType::Module},
        {"a.bas", "Attribute VB_Name = \"m\"^", u"m", ComponentType::Module},
        {"a.bas", "Attribute VB_Name = \"m\"\n^\nDim a\n", u"m", ComponentType::Module},
        {"a.bas", "Attribute VB_Name = \"m\"\r\nAttribute VB_Description = \"d\"\r\n^'c\r\n", u"m",
         ComponentType::Module},
        {"a.bas", "Attribute VB_Name=\"say \"\"m\"\"\"\n^x\n", u"say \"m\"", ComponentType::Module},
        {"a.bas", "Attribute VB_Name = modMain \n^x\n", u"modMain", ComponentType::Module},
        {"a.bas", "^ Attribute VB_Name = \"m\"\n", u"", ComponentType::Module},
        {"a.bas", "^Attributes = 3\n", u"", ComponentType::Module},
        {"a.bas", "^Attribute = 3\n", u"", ComponentType::Module},
        {"a.bas", "^Begin\n", u"", ComponentType::Module},
        {"a.bas", "^Object = 3\n", u"", ComponentType::Module},
        {"a.bas", "VERSION 1.0 CLASS\nBEGIN\nEND\nAttribute VB_Name = \"C\"\n^x\n", u"C",
         ComponentType::Module},
        {"a.cls",
         "VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1  'True\r\n  Persistable = 0  'NotPersistable\r\n"
         "END\r\nAttribute VB_Name = \"CInvoice\"\r\nAttribute VB_Exposed = False\r\n^Option Explicit\r\n",
         u"CInvoice", ComponentType::Class},
        {"a.cls", "^Option Explicit\n", u"", ComponentType::Class},
        {"a.frm",
         "VERSION 5.00\nObject = \"{F9043C88}#1.2#0\"; \"COMDLG32.OCX\"\nBegin VB.Form frmMain \n"
         "   Caption = \"Begin\"\nEnd\nAttribute VB_Name = \"frmMain\"\n^Private Sub x()\n",
         u"frmMain", ComponentType::Form},
        {"a.frm",
         "VERSION 5.00\nBegin VB.Form f\n  BeginProperty Font\n    BeginProperty Size\nEnd\n"
         "Attribute VB_Name = \"f\"\n^x\n",
         u"f", ComponentType::Form},
        {"a.frm", "VERSION 5.00\nBegin VB.MDIForm m\nEnd\n^", u"", ComponentType::MDIForm},
        {"a.frm",
         "VERSION 5.00\nBegin {C62A69F0-16DC-11CE} UserForm1 \n OleObjectBlob = \"f.frx\":0000\nEnd\n^", u"",
         ComponentType::OfficeForm},
        {"a.ctl", "VERSION 5.00\nBegin VB.UserControl c\nEnd\n^", u"", ComponentType::UserControl},
        {"a.pag", "VERSION 5.00\nBegin VB.PropertyPage c\nEnd\n^", u"", ComponentType::PropertyPage},
        {"a.dob", "VERSION 5.00\nBegin VB.UserDocument c\nEnd\n^", u"", ComponentType::UserDocument},
        {"a.Dsr", "VERSION 5.00\nBegin {C0E45035} de \n  Bytes = 1\nEnd\nAttribute VB_Name = \"de\"\n^",
         u"de", ComponentType::Designer},
    };
    for (HeadCase each : cases) {
        const std::size_t mark = each.text.find('^');
        each.text.erase(mark, 1);
        const ComponentFile component = Parsed(each.fileName, each.text);
        EXPECT_EQ(component.codeBegin, mark) << each.text;
        EXPECT_EQ(component.name, each.name) << each.text;
        EXPECT_EQ(component.type, each.type) << each.text;
    }
}

TEST(ComponentFile, BlankLinesBetweenPartsOfTheHeadBelongToIt) {
    const std::string head = "VERSION 5.00\n\nBegin VB.Form f\n\nEnd\n \t\nAttribute VB_Name = \"f\"\n";
    EXPECT_EQ(Parsed("f.frm", head + "\nDim x\n").codeBegin, head.size());
}

TEST(ComponentFile, AllEndingsEndTheLinesOfAHead) {
    for (const std::string ending : {"\r\n", "\n", "\r"}) {
        const std::string head = "VERSION 5.00" + ending + "Begin VB.Form f" + ending + "End" + ending +
                                 "Attribute VB_Name = \"f\"" + ending;
        EXPECT_EQ(Parsed("f.frm", head + "Dim x").codeBegin, head.size());
    }
}

constexpr const char* formWithControls =
    "VERSION 5.00\n"
    "Begin VB.Form frmMain \n"
    "   Caption         =   \"End\"\n"
    "   Icon            =   \"frmMain.frx\":0000\n"
    "   Begin MSComctlLib.ListView lvw \n"
    "      BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851} \n"
    "         Name = \"MS Sans Serif\"\n"
    "      EndProperty\n"
    "      BeginProperty ColumnHeader(1) {BDD1F052-858B-11D1-B16A-00C0F0283628} \n"
    "         Text = \"Begin VB.Label lblNot\"\n"
    "      EndProperty\n"
    "   End\n"
    "\tBegin VB.Frame fra\n"
    "\t\tBegin VB.TextBox txtQty \n"
    "         Index = 0\n"
    "\t\tEnd\t\n"
    "      Begin VB.TextBox txtQty \n"
    "         Index = 1\n"
    "      End\n"
    "      Begin VB.Frame fraInner\n"
    "         begin VB.CommandButton cmdDeep\n"
    "         end\n"
    "      End\n"
    "   End\n"
    "   Begin VB.Menu mnuFile \n"
    "      Begin VB.Menu mnuExit \n"
    "      End\n"
    "   End\n"
    "   Begin = 3\n"
    "   BeginProperty = 4\n"
    "End\n"
    "Attribute VB_Name = \"frmMain\"\n";

TEST(ComponentFile, TheDesignerListsControlsHoweverDeep) {
    const std::string code = "Private Sub a()\nEnd\nEnd Sub\n";
    const ComponentFile component = Parsed("frmMain.frm", formWithControls + code);
    EXPECT_EQ(
        Names(component),
        (std::vector<Text>{u"ListView lvw", u"Frame fra", u"TextBox txtQty", u"TextBox txtQty",
                           u"Frame fraInner", u"CommandButton cmdDeep", u"Menu mnuFile", u"Menu mnuExit"}));
    EXPECT_EQ(component.codeBegin, std::string(formWithControls).size());
    EXPECT_TRUE(component.warnings.empty());
}

TEST(ComponentFile, ModulesAndClassesHaveNoDesigner) {
    EXPECT_FALSE(Parsed("a.bas", "Dim x\n").designer.has_value());
    EXPECT_FALSE(Parsed("a.cls", "VERSION 1.0 CLASS\nBEGIN\nEND\n").designer.has_value());
    EXPECT_TRUE(Parsed("a.frm", "VERSION 5.00\nBegin VB.Form f\nEnd\n").designer.has_value());
}

TEST(ComponentFile, AHeadIsReadInItsOwnEncoding) {
    const Text text =
        u"VERSION 5.00\r\nBegin VB.Form f\r\n Begin VB.Label lblÄ\r\n End\r\nEnd\r\n"
        u"Attribute VB_Name = \"frmÄöü\"\r\nDim Ä\r\n";
    const Text code = u"Dim Ä\r\n";
    for (const std::string codePage : {"1252", "65001", "1200", "1201"}) {
        const EncodingPtr encoding = *FindEncoding(codePage);
        std::string bytes;
        std::string codeBytes;
        ASSERT_TRUE(encoding->Encode(text, bytes) && encoding->Encode(code, codeBytes));
        const ComponentFile component = Parsed("f.frm", bytes, encoding);
        EXPECT_EQ(component.name, u"frmÄöü");
        EXPECT_EQ(Names(component), std::vector<Text>{u"Label lblÄ"});
        EXPECT_EQ(component.codeBegin, bytes.size() - codeBytes.size());
    }
}

TEST(ComponentFile, AByteOrderMarkTellsTheEncodingAndIsNoCode) {
    const Text text = u"Attribute VB_Name = \"mÄ\"\r\n";
    const std::pair<const char*, std::string> marks[] = {
        {"65001", "\xEF\xBB\xBF"}, {"1200", "\xFF\xFE"}, {"1201", "\xFE\xFF"}};
    for (const auto& [codePage, mark] : marks) {
        std::string bytes = mark;
        ASSERT_TRUE((*FindEncoding(codePage))->Encode(text, bytes));
        const ComponentFile component = Parsed("m.bas", bytes);
        EXPECT_EQ(component.encoding->name(), (*FindEncoding(codePage))->name());
        EXPECT_EQ(component.name, u"mÄ");
        EXPECT_EQ(component.codeBegin, bytes.size());
        EXPECT_EQ(Parsed("m.bas", mark).codeBegin, mark.size());
    }
}

TEST(ComponentFile, AnUnclosedHeadIsRefusedWithTheLineOfItsBegin) {
    const std::vector<std::pair<std::string, std::int64_t>> cases = {
        {"VERSION 5.00\nBegin VB.Form f\n  Caption = \"End\"\nAttribute VB_Name = \"f\"\nSub a()\nEnd\n", 2},
        {"VERSION 5.00\nBegin VB.Form f\n  Begin VB.Label l\n", 3},
        {"VERSION 5.00\nBegin VB.Form f\n  Begin VB.Label l\n  End\n", 2},
        {"VERSION 5.00\nBegin VB.Form f\n  BeginProperty Font\n", 3},
        {"Begin VB.Form f", 1},
    };
    for (const auto& [bytes, line] : cases) {
        const Diagnostic error = Refused("f.frm", bytes);
        EXPECT_EQ(error.line, line) << bytes;
        EXPECT_TRUE(error.message.contains("has no End")) << error.message;
        EXPECT_EQ(error.path, "f.frm");
    }
}

TEST(ComponentFile, DeepNestingIsNoMatter) {
    std::string bytes = "VERSION 5.00\n";
    constexpr int depth = 200'000;
    for (int i = 0; i < depth; ++i) {
        bytes += "Begin VB.Frame f\n";
    }
    for (int i = 0; i < depth; ++i) {
        bytes += "End\n";
    }
    EXPECT_EQ(Parsed("f.frm", bytes).designer->size(), depth - 1U);
}

TEST(ComponentFile, ANulByteIsRefusedWithItsLine) {
    const std::string bytes("Dim a\r\nDim b\rDim c\nDim \0\n", 26);
    const Diagnostic error = Refused("m.bas", bytes);
    EXPECT_EQ(error.line, 4);
    EXPECT_TRUE(error.message.contains("NUL byte")) << error.message;
}

TEST(ComponentFile, Utf16WithoutAMarkIsRecognisedForTheMessage) {
    for (const std::string codePage : {"utf-16le", "utf-16be"}) {
        std::string bytes;
        ASSERT_TRUE((*FindEncoding(codePage))->Encode(u"Option Explicit\r\nDim a As Long\r\n", bytes));
        const Diagnostic error = Refused("m.bas", bytes);
        EXPECT_EQ(error.line, 1);
        EXPECT_TRUE(error.message.contains("pass --code-page " + codePage)) << error.message;
    }
}

TEST(ComponentFile, HalfACharacterAtTheEndIsRefused) {
    const std::string bytes(
        "\xFF\xFE"
        "a\0b",
        5);
    EXPECT_TRUE(Refused("m.bas", bytes).message.contains("odd number of bytes"));
    EXPECT_TRUE(Refused("m.bas", std::string("\xFF\xFE\0\0", 4)).message.contains("UTF-32"));
}

TEST(ComponentFile, BinaryGarbageWithoutNulOpens) {
    std::string bytes;
    for (int i = 0; i < 10'000; ++i) {
        bytes += static_cast<char>(1 + i * 7919 % 255);
    }
    EXPECT_LE(Parsed("m.bas", bytes).codeBegin, bytes.size());
    EXPECT_LE(Parsed("m.frm", bytes, *FindEncoding("932")).codeBegin, bytes.size());
}

std::string OnlyWarning(const ComponentFile& component) {
    EXPECT_EQ(component.warnings.size(), 1U);
    return component.warnings.empty() ? "" : component.warnings.front().ToString();
}

TEST(ComponentFile, AnEmptyFileOpensWithAWarning) {
    EXPECT_EQ(OnlyWarning(Parsed("m.bas", "")), "m.bas: the file is empty");
}

TEST(ComponentFile, BytesThatLookLikeUtf8AreAWarning) {
    EXPECT_EQ(OnlyWarning(Parsed("m.bas",
                                 "Dim a\n' Stra\xC3\x9F"
                                 "e\n")),
              "m.bas: is read as windows-1252 but looks like UTF-8; if it is, pass --code-page 65001");
    EXPECT_TRUE(Parsed("m.bas", "' \xC3\x9F \xDF\n").warnings.empty());
    EXPECT_TRUE(Parsed("m.bas",
                       "' Stra\xDF"
                       "e\n")
                    .warnings.empty());
    EXPECT_TRUE(Parsed("m.bas", "' \xC3\x9F\n", *FindEncoding("65001")).warnings.empty());
    EXPECT_EQ(OnlyWarning(Parsed("m.bas",
                                 "Dim a\n' Stra\xDF"
                                 "e\n",
                                 *FindEncoding("65001"))),
              "m.bas:2: holds bytes that are no UTF-8; they are kept as they are");
}

TEST(ComponentFile, ALineLongerThanTheIdeAcceptsIsOneWarning) {
    const std::string fits = "'" + std::string(1022, 'x') + "\r\n";
    const std::string tooLong = "'" + std::string(1023, 'x') + "\r\n";
    for (std::size_t before = 0; before <= 1023; before += 7) {
        const std::string lines = std::string(before, 'y') + "\n";
        EXPECT_TRUE(Parsed("m.bas", lines + fits + fits + lines).warnings.empty()) << before;
        EXPECT_EQ(OnlyWarning(Parsed("m.bas", lines + fits + tooLong + tooLong)),
                  "m.bas:3: this line is longer than the IDE's 1023 characters; it is kept as it is");
    }
}

TEST(ComponentFile, LongLinesAreCountedInCharactersAndOnlyWhenShown) {
    std::string utf8;
    ASSERT_TRUE((*FindEncoding("65001"))->Encode(Text(1000, u'\u20AC'), utf8));
    EXPECT_TRUE(Parsed("m.bas", utf8 + "\n", *FindEncoding("65001")).warnings.empty());
    std::string utf16;
    ASSERT_TRUE(MemoryEncoding()->Encode(Text(1000, u'x') + u"\n" + Text(1024, u'x'), utf16));
    EXPECT_TRUE(OnlyWarning(Parsed("m.bas", utf16, MemoryEncoding())).starts_with("m.bas:2:"));
    const std::string hidden = "Attribute a.VB_Description = \"" + std::string(2000, 'x') + "\"\n";
    EXPECT_TRUE(Parsed("m.bas", "Dim a\n" + hidden + "Dim b\n").warnings.empty());
    EXPECT_TRUE(Parsed("m.bas", "Attribute VB_Name = \"m\"\nAttribute VB_Description = \"" +
                                    std::string(2000, 'x') + "\"\nDim b\n")
                    .warnings.empty());
}

TEST(ComponentFile, OneLineOfFiveMegabytesOpens) {
    const std::string line(5 * 1024 * 1024, 'x');
    EXPECT_TRUE(OnlyWarning(Parsed("m.bas", line)).starts_with("m.bas:1: this line is longer"));
    EXPECT_TRUE(OnlyWarning(Parsed("m.frm", "Begin VB.Form f\n" + line + "\nEnd\n" + line))
                    .starts_with("m.frm:4: this line is longer"));
}

TEST(ComponentFile, TheKindIsToldByTheExtension) {
    EXPECT_EQ(ComponentTypeOf("a.b/X.Bas"), ComponentType::Module);
    EXPECT_EQ(ComponentTypeOf("x.DSR"), ComponentType::Designer);
    EXPECT_EQ(ComponentTypeOf("x.vbp"), std::nullopt);
    EXPECT_EQ(ComponentTypeOf("x.frx"), std::nullopt);
    EXPECT_EQ(ComponentTypeOf("bas"), std::nullopt);
    EXPECT_EQ(ComponentTypeOf(".bas"), std::nullopt);
}

}  // namespace
}  // namespace lintara::workspace
