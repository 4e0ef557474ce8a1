#include "history/entry_format.h"

#include "base/utf8.h"

#include <gtest/gtest.h>

namespace lintara::history {
namespace {

TEST(EntryFormatTest, AnEntryIsAPlaceAndALine) {
    struct Case {
        TextView entry;
        TextView separator;
        TextView component;
        TextView caption;
    };
    for (const Case& c : {
             Case{u"Form1.cmdOk_Click|    x = 1", u"|", u"Form1", u"cmdOk_Click: x = 1"},
             Case{u"Module1|Option Explicit", u"|", u"Module1", u"(Declarations): Option Explicit"},
             Case{u"Module1.A", u"|", u"Module1", u"A"},
             Case{u"Module1.A|", u"|", u"Module1", u"A"},
             Case{u"Module1.A|x = \"|\" | y.z", u"|", u"Module1", u"A: x = \"|\" | y.z"},
             Case{u"Module1.A ## x.y = 1", u" ## ", u"Module1", u"A: x.y = 1"},
             Case{u"Module1.A|x", u"", u"Module1", u"A|x"},
             Case{u"|x = 1", u"|", u"", u"(Declarations): x = 1"},
         }) {
        const Entry entry = ReadEntry(c.entry, c.separator);
        EXPECT_EQ(ToUtf8(entry.component), ToUtf8(c.component)) << ToUtf8(c.entry);
        EXPECT_EQ(ToUtf8(entry.caption), ToUtf8(c.caption)) << ToUtf8(c.entry);
    }
}

TEST(EntryFormatTest, AKeyIsTheGroupAndTheIndex) {
    EXPECT_EQ(KeyOf(0, u"|"), u"Back|0");
    EXPECT_EQ(KeyOf(9, u"|"), u"Back|9");
    EXPECT_EQ(KeyOf(10, u"|"), u"Next|0");
    EXPECT_EQ(KeyOf(19, u"::"), u"Next::9");
}

}  // namespace
}  // namespace lintara::history
