// The copy-and-paste buffers and their code database.

#include "assistant/buffer_rows.h"
#include "assistant/lintara.h"
#include "tests/support/code_fixture.h"
#include "tests/support/memory_database.h"

#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using support::BufferRows;
using support::CodeFixture;

TEST(BuffersTest, TheMainBufferIsReadAsWritten) {
    Lintara assistant;
    assistant.SetTarnwickCPBuffer(u"x = 1\r\ny = 2");
    EXPECT_EQ(assistant.TarnwickCPBuffer(), u"x = 1\r\ny = 2");
    assistant.SetTarnwickCPBuffer(u"");
    EXPECT_EQ(assistant.TarnwickCPBuffer(), u"");
}

TEST(BuffersTest, BuffersAreCopies) {
    Lintara assistant;
    Text code = u"first";
    assistant.SetTarnwickCPBuffer(code);
    code = u"second";
    Text read = assistant.TarnwickCPBuffer();
    read += u"!";
    EXPECT_EQ(assistant.TarnwickCPBuffer(), u"first");
}

TEST(BuffersTest, ElevenNumberedBuffersKeepTheirOwnTexts) {
    Lintara assistant;
    for (std::int32_t index = 0; index <= 10; ++index) {
        assistant.SetAdditionalCPBuffer(index, Text(static_cast<std::size_t>(index), u'x'));
    }
    for (std::int32_t index = 0; index <= 10; ++index) {
        EXPECT_EQ(assistant.AdditionalCPBuffer(index), Text(static_cast<std::size_t>(index), u'x'));
    }
    EXPECT_EQ(assistant.TarnwickCPBuffer(), u"");
}

TEST(BuffersTest, OtherIndicesReadEmptyAndIgnoreWrites) {
    Lintara assistant;
    for (const std::int32_t index :
         {11, -1, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        assistant.SetAdditionalCPBuffer(index, u"lost");
        EXPECT_EQ(assistant.AdditionalCPBuffer(index), u"");
    }
    for (std::int32_t index = 0; index <= 10; ++index) {
        EXPECT_EQ(assistant.AdditionalCPBuffer(index), u"");
    }
}

class CodeDatabaseTest : public testing::Test {
  protected:
    CodeDatabaseTest() {
        EXPECT_TRUE(fixture_.globals()->SetCodeDb(std::make_shared<support::MemoryDatabase>(rows_)));
        assistant_.oG = fixture_.globals();
        for (std::int32_t index = 0; index <= 10; ++index) {
            assistant_.SetAdditionalCPBuffer(index, Was(index));
        }
    }
    ~CodeDatabaseTest() override { EXPECT_EQ(rows_->openRecordsets, 0U); }

    // What buffer `index` holds in memory at first.
    static Text Was(std::int32_t index) { return u"was " + Text(static_cast<std::size_t>(index), u'i'); }

    Text Stored(std::int32_t key) { return std::get<Text>(rows_->codeByKey.at(key)); }

    CodeFixture fixture_{""};
    std::shared_ptr<BufferRows> rows_ = std::make_shared<BufferRows>();
    Lintara assistant_;
};

TEST_F(CodeDatabaseTest, InitLoadsTheRowsThereAreAndLeavesTheOtherBuffers) {
    rows_->codeByKey = {{2, Text(u"two\r\nlines")}, {5, Text()}};
    assistant_.InitCodeAutomation();
    for (std::int32_t index = 0; index <= 10; ++index) {
        EXPECT_EQ(assistant_.AdditionalCPBuffer(index), index == 2   ? u"two\r\nlines"
                                                        : index == 5 ? u""
                                                                     : Was(index));
    }
}

TEST_F(CodeDatabaseTest, CloseAddsTheMissingRowsAndEditsTheOthers) {
    rows_->codeByKey = {{2, Text(u"old")}, {5, Text(u"old")}};
    assistant_.SetAdditionalCPBuffer(3, u"");
    assistant_.CloseCodeAutomation();
    ASSERT_EQ(rows_->codeByKey.size(), 10U);
    for (std::int32_t key = 0; key <= 9; ++key) {
        EXPECT_EQ(Stored(key), key == 3 ? Text() : Was(key));
    }
}

TEST_F(CodeDatabaseTest, BufferTenIsNeitherSavedNorLoaded) {
    assistant_.CloseCodeAutomation();
    EXPECT_FALSE(rows_->codeByKey.contains(10));
    rows_->codeByKey[10] = Text(u"from elsewhere");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(assistant_.AdditionalCPBuffer(10), Was(10));
}

TEST_F(CodeDatabaseTest, TheMainBufferIsNeverStored) {
    assistant_.SetTarnwickCPBuffer(u"main");
    assistant_.CloseCodeAutomation();
    for (const auto& [key, code] : rows_->codeByKey) {
        EXPECT_NE(std::get<Text>(code), u"main");
    }
}

TEST_F(CodeDatabaseTest, ASecondInitOverwritesWhatHasRows) {
    rows_->codeByKey = {{4, Text(u"stored")}};
    assistant_.InitCodeAutomation();
    assistant_.SetAdditionalCPBuffer(4, u"changed");
    assistant_.SetAdditionalCPBuffer(6, u"changed");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(assistant_.AdditionalCPBuffer(4), u"stored");
    EXPECT_EQ(assistant_.AdditionalCPBuffer(6), u"changed");
}

TEST_F(CodeDatabaseTest, TheDatabaseStaysOpen) {
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_NE(fixture_.globals()->CodeDb().value(), nullptr);
}

TEST_F(CodeDatabaseTest, WithoutAnOpenDatabaseNothingIsLoadedOrWritten) {
    rows_->codeByKey = {{0, Text(u"stored")}};
    ASSERT_TRUE(fixture_.globals()->SetCodeDb(nullptr));
    assistant_.CloseCodeAutomation();
    assistant_.InitCodeAutomation();
    EXPECT_EQ(rows_->codeByKey.size(), 1U);
    EXPECT_EQ(assistant_.AdditionalCPBuffer(0), Was(0));
}

TEST_F(CodeDatabaseTest, WithoutTheTableTheBuffersKeepTheirValues) {
    rows_->hasTable = false;
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_EQ(assistant_.AdditionalCPBuffer(0), Was(0));
}

TEST_F(CodeDatabaseTest, AFieldThatHoldsNoTextLeavesItsBuffer) {
    rows_->codeByKey = {{0, std::int32_t{7}}, {1, std::monostate()}};
    assistant_.InitCodeAutomation();
    EXPECT_EQ(assistant_.AdditionalCPBuffer(0), Was(0));
    EXPECT_EQ(assistant_.AdditionalCPBuffer(1), u"");
}

TEST_F(CodeDatabaseTest, ARowThatCannotBeReadIsSkippedAndTheOthersAreLoaded) {
    for (const std::string_view broken : {"Seek", "NoMatch", "Field"}) {
        SCOPED_TRACE(broken);
        rows_->codeByKey = {{1, Text(u"one")}, {2, Text(u"two")}};
        rows_->fails = [&](std::string_view call, std::int32_t key) { return call == broken && key == 1; };
        assistant_.SetAdditionalCPBuffer(1, Was(1));
        assistant_.InitCodeAutomation();
        EXPECT_EQ(assistant_.AdditionalCPBuffer(1), Was(1));
        EXPECT_EQ(assistant_.AdditionalCPBuffer(2), u"two");
    }
}

// Above all no second row is made for a key that could not be sought.
TEST_F(CodeDatabaseTest, ARowThatCannotBeWrittenIsSkippedAndTheOthersAreStored) {
    for (const std::string_view broken : {"Seek", "NoMatch", "Edit", "SetField", "Update"}) {
        SCOPED_TRACE(broken);
        rows_->codeByKey = {{1, Text(u"one")}, {2, Text(u"two")}};
        rows_->fails = [&](std::string_view call, std::int32_t key) { return call == broken && key == 1; };
        assistant_.CloseCodeAutomation();
        EXPECT_EQ(Stored(1), u"one");
        EXPECT_EQ(Stored(2), Was(2));
        EXPECT_EQ(rows_->codeByKey.size(), 10U);
    }
}

TEST_F(CodeDatabaseTest, WithoutItsIndexTheTableIsLeftAlone) {
    rows_->codeByKey = {{1, Text(u"one")}};
    rows_->fails = [](std::string_view call, std::int32_t) { return call == "SetIndex"; };
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_EQ(assistant_.AdditionalCPBuffer(1), Was(1));
    EXPECT_EQ(Stored(1), u"one");
    EXPECT_EQ(rows_->codeByKey.size(), 1U);
}

// A host's database, which yields no object where it has no table.
class DatabaseWithoutTables : public hostmodel::Database {
  public:
    Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView) override { return nullptr; }
};

TEST(BufferRowsTest, NoTableIsAnError) {
    DatabaseWithoutTables database;
    const auto rows = assistant::OpenBufferRows(database);
    ASSERT_FALSE(rows);
    EXPECT_EQ(rows.error().number, ErrorNumber::ObjectNotSet);
}

}  // namespace
}  // namespace lintara
