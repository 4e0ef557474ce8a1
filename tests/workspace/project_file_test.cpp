#include "workspace/project_file.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::ComponentType;

ProjectFile Parsed(std::string_view bytes, const EncodingPtr& codePage = DefaultEncoding()) {
    auto file = ParseProjectFile("p.vbp", bytes, codePage);
    EXPECT_TRUE(file.has_value());
    return file ? *std::move(file) : ProjectFile{};
}

// "line name|path" of each entry.
std::vector<std::string> Lines(const std::vector<FileEntry>& entries) {
    std::vector<std::string> lines;
    for (const FileEntry& entry : entries) {
        lines.push_back(std::to_string(entry.line) + " " + ToUtf8(entry.name) + "|" + entry.path);
    }
    return lines;
}

using Expected = std::vector<std::string>;

TEST(ProjectFile, NamesItsComponentsInOrder) {
    const ProjectFile file = Parsed(
        "Type=Exe\r\n"
        "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation\r\n"
        "Object={F9043C88-F6F2-101A-A3C9-08002B2F49FB}#1.2#0; COMDLG32.OCX\r\n"
        "Module=modMain; src\\modMain.bas\r\n"
        "Class=CInvoice; CInvoice.cls\r\n"
        "Form=frmMain.frm\r\n"
        "UserControl=ctl.ctl\r\n"
        "PropertyPage=page.pag\r\n"
        "UserDocument=doc.dob\r\n"
        "Designer=de.Dsr\r\n"
        "ResFile32=\"res\\app.res\"\r\n"
        "RelatedDoc=..\\read me.txt\r\n"
        "HelpFile=\"\"\r\n"
        "Startup=\"Sub Main\"\r\n"
        "Name=\"Invoice\"\r\n"
        "[MS Transaction Server]\r\n"
        "Module=No; no.bas\r\n");
    EXPECT_EQ(file.name, u"Invoice");
    EXPECT_EQ(Lines(file.components),
              (Expected{"4 modMain|src\\modMain.bas", "5 CInvoice|CInvoice.cls", "6 |frmMain.frm",
                        "7 |ctl.ctl", "8 |page.pag", "9 |doc.dob", "10 |de.Dsr"}));
    EXPECT_EQ(Lines(file.others), (Expected{"2 |stdole2.tlb", "11 |res\\app.res", "12 |..\\read me.txt"}));
    EXPECT_EQ(file.components[0].type, ComponentType::Module);
    EXPECT_EQ(file.components[1].type, ComponentType::Class);
    EXPECT_EQ(file.components[6].type, ComponentType::Designer);
}

TEST(ProjectFile, OnlyTypeLibrariesOfItsOwnFolderBelongToIt) {
    const ProjectFile file = Parsed(
        "Reference=*\\G{0}#2.0#0#lib\\own.tlb#Own\n"
        "Reference=*\\G{0}#2.0#0#..\\other.tlb#Other\n"
        "Reference=*\\G{0}#2.0#0#C:\\WINDOWS\\system.dll#System\n"
        "Reference=*\\G{0}#2.0#0#\\\\server\\share.tlb#Share\n"
        "Reference=*\\A..\\Parent.vbp\n"
        "Reference=\n");
    EXPECT_EQ(Lines(file.others), Expected{"1 |lib\\own.tlb"});
}

TEST(ProjectFile, BlanksQuotesCaseAndEndingsDoNotMatter) {
    const ProjectFile file = Parsed(
        "  module = modMain ;  modMain.bas  \nCLASS=C;\"my class.cls\"\rForm=\"f;1.frm\"\nname= Invoice \n"
        "Module=only.bas\nUserControl=\n\n=x\nnoise\n");
    EXPECT_EQ(file.name, u"Invoice");
    EXPECT_EQ(Lines(file.components),
              (Expected{"1 modMain|modMain.bas", "2 C|my class.cls", "3 |f;1.frm", "5 |only.bas", "6 |"}));
}

TEST(ProjectFile, NamesAndPathsAreInItsCodePage) {
    EXPECT_EQ(Lines(Parsed("Module=Stra\xDF"
                           "e; Stra\xDF"
                           "e.bas\n")
                        .components),
              Expected{"1 Straße|Straße.bas"});
    EXPECT_EQ(Lines(Parsed("Form=\x93\xFA.frm\n", *FindEncoding("932")).components), Expected{"1 |日.frm"});
    EXPECT_EQ(Lines(Parsed("\xEF\xBB\xBF"
                           "Form=\xC3\xA4.frm\n")
                        .components),
              Expected{"1 |ä.frm"});
}

TEST(ProjectFile, MayBeInAnotherEncodingThanUtf16Components) {
    const EncodingPtr utf16 = *FindEncoding("utf-16le");
    EXPECT_EQ(Lines(Parsed("Form=a.frm\n", utf16).components), Expected{"1 |a.frm"});
    std::string bytes;
    ASSERT_TRUE(utf16->Encode(u"Form=a.frm\n", bytes));
    EXPECT_EQ(Lines(Parsed(bytes, utf16).components), Expected{"1 |a.frm"});
}

TEST(ProjectFile, IsRefusedWhenItIsNoText) {
    const auto file = ParseProjectFile("p.vbp", std::string_view("Type=Exe\n\0\n", 11), DefaultEncoding());
    ASSERT_FALSE(file.has_value());
    EXPECT_EQ(file.error().line, 2);
    EXPECT_TRUE(file.error().message.contains("NUL byte"));
}

TEST(GroupFile, TellsItsProjectsAndTheStartupProject) {
    const auto group = ParseGroupFile(
        "g.vbg", "VBGROUP 5.0\r\nProject=lib\\Lib.vbp\r\nStartupProject=App.vbp\r\nProject=\"Test.vbp\"\r\n",
        DefaultEncoding());
    ASSERT_TRUE(group.has_value());
    EXPECT_EQ(Lines(group->projects), (Expected{"2 |lib\\Lib.vbp", "3 |App.vbp", "4 |Test.vbp"}));
    EXPECT_EQ(group->startup, 1U);
}

}  // namespace
}  // namespace lintara::workspace
