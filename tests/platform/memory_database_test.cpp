#include "platform/memory_database.h"

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

using hostmodel::Value;

std::shared_ptr<hostmodel::Recordset> Opened(MemoryDatabase& database) {
    auto table = database.OpenTable(u"CPBuffers");
    EXPECT_TRUE(table);
    EXPECT_TRUE((*table)->SetIndex(u"Key"));
    return *table;
}

void Add(hostmodel::Recordset& rows, std::int32_t key, TextView code) {
    EXPECT_TRUE(rows.AddNew());
    EXPECT_TRUE(rows.SetField(u"Key", key));
    EXPECT_TRUE(rows.SetField(u"Code", Text(code)));
    EXPECT_TRUE(rows.Update());
}

TEST(MemoryDatabase, KeepsRowsBeyondTheRecordset) {
    MemoryDatabase database;
    Add(*Opened(database), 3, u"three");
    const auto rows = Opened(database);
    EXPECT_TRUE(rows->Seek(u"=", 4));
    EXPECT_EQ(rows->NoMatch(), true);
    EXPECT_FALSE(rows->Field(u"Code"));
    EXPECT_FALSE(rows->Edit());
    EXPECT_TRUE(rows->Seek(u"=", 3));
    EXPECT_EQ(rows->NoMatch(), false);
    EXPECT_EQ(rows->Field(u"Code"), Value(Text(u"three")));
    EXPECT_EQ(rows->Field(u"Key"), Value(3));
    EXPECT_FALSE(rows->Field(u"Name"));
}

TEST(MemoryDatabase, ChangesARowWhenItIsUpdated) {
    MemoryDatabase database;
    const auto rows = Opened(database);
    Add(*rows, 0, u"old");
    EXPECT_TRUE(rows->Seek(u"=", 0));
    EXPECT_FALSE(rows->SetField(u"Code", Text(u"new"))) << "no row is being changed";
    EXPECT_TRUE(rows->Edit());
    EXPECT_TRUE(rows->SetField(u"Code", Text(u"new")));
    EXPECT_FALSE(rows->SetField(u"Code", 1)) << "a text is wanted";
    EXPECT_EQ(rows->Field(u"Code"), Value(Text(u"old")));
    EXPECT_TRUE(rows->Update());
    EXPECT_EQ(rows->Field(u"Code"), Value(Text(u"new")));
    EXPECT_FALSE(rows->Update()) << "there is nothing to write";
}

TEST(MemoryDatabase, RefusesWhatItDoesNotHave) {
    MemoryDatabase database;
    EXPECT_FALSE(database.OpenTable(u"Others"));
    const auto rows = *database.OpenTable(u"CPBuffers");
    EXPECT_FALSE(rows->Seek(u"=", 1)) << "no index is set";
    EXPECT_FALSE(rows->SetIndex(u"Code"));
    EXPECT_TRUE(rows->SetIndex(u"Key"));
    EXPECT_FALSE(rows->Seek(u">", 1));
}

TEST(MemoryDatabase, AClosedTableAnswersNothing) {
    MemoryDatabase database;
    const auto rows = Opened(database);
    Add(*rows, 1, u"one");
    EXPECT_TRUE(rows->Seek(u"=", 1));
    EXPECT_TRUE(rows->Close());
    EXPECT_TRUE(rows->Close());
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_FALSE(rows->Field(u"Code"));
    EXPECT_FALSE(rows->Edit());
    EXPECT_FALSE(rows->AddNew());
    EXPECT_FALSE(rows->Seek(u"=", 1));
    EXPECT_FALSE(rows->Update());
}

}  // namespace
}  // namespace lintara::platform
