// SPDX-License-Identifier: MIT
// Line databases whose folder another program exchanges with a link that leads outside.
#include "backends/files/line_database.h"

#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/exchanger.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace platform;
using backends::LineDatabase;
using backends::PathMap;

namespace {

bool Append(LineDatabase& databases, DatabaseId id, const Text& line) {
    return databases.DeclareTable(id, u"TEXT", u"LineNumber long, LineData String") == NoError &&
           databases.AddRecord(id) == NoError &&
           databases.WriteRecord(id, {databases.RecordCount(id) + 1, line}) == NoError &&
           databases.Commit(id) == NoError;
}

void MakeWithOneLine(LineDatabase& databases, const Text& name) {
    const DatabaseId id = databases.Create(name, 1, 2).Id;
    ASSERT_TRUE(Append(databases, id, u"one"));
    databases.Close(id);
}

/// Two roots with one database each; a link in the first leads to the folder of the second.
class ExchangedDatabases : public testing::Test {
protected:
    ExchangedDatabases() {
        MakeWithOneLine(Databases, u"drivers");
        MakeWithOneLine(Others, u"drivers");
        Root.Link(Elsewhere.Path("Databases"), "trap");
        OthersBytes = Elsewhere.Bytes("Databases/drivers.sqlite");
    }

    TemporaryRoot Root;
    TemporaryRoot Elsewhere;
    LineDatabase Databases{PathMap(Root.Path())};
    LineDatabase Others{PathMap(Elsewhere.Path())};
    std::string OthersBytes;
};

/// On a busy machine the folder may be the link for very many tries in a row.
constexpr int MostTries = 100000;

TEST_F(ExchangedDatabases, WriteNothingOutside) {
    int written = 0;
    {
        const Exchanger exchanger(Root.Path("Databases"), Root.Path("trap"));
        for (int i = 0; i < 1000 || (written == 0 && i < MostTries); ++i) {
            const DatabaseId id = Databases.Open(u"drivers", DatabaseMode::ReadWrite).Id;
            written += id != 0 && Append(Databases, id, u"more") ? 1 : 0;
            Databases.Close(id);
        }
    }
    EXPECT_GT(written, 0);
    EXPECT_EQ(Elsewhere.Bytes("Databases/drivers.sqlite"), OthersBytes);
    EXPECT_EQ(Elsewhere.Entries("Databases"), 1) << "nor a journal";
}

TEST_F(ExchangedDatabases, MakeAndDeleteNothingOutside) {
    int made = 0;
    {
        const Exchanger exchanger(Root.Path("Databases"), Root.Path("trap"));
        for (int i = 0; i < 300 || (made == 0 && i < MostTries); ++i) {
            const DatabaseId id = Databases.Create(u"new", 1, 2).Id;
            made += id != 0 && Append(Databases, id, u"more") ? 1 : 0;
            Databases.Close(id);
            Databases.Delete(u"new");
            Databases.Delete(u"new");
        }
    }
    EXPECT_GT(made, 0);
    EXPECT_EQ(Elsewhere.Bytes("Databases/drivers.sqlite"), OthersBytes);
    EXPECT_EQ(Elsewhere.Entries("Databases"), 1);
}

TEST_F(ExchangedDatabases, TakeNoLineWhereTheirNameLeadsElsewhere) {
    const DatabaseId id = Databases.Open(u"drivers", DatabaseMode::ReadWrite).Id;
    std::filesystem::rename(Root.Path("Databases"), Root.Path("away"));
    std::filesystem::rename(Root.Path("trap"), Root.Path("Databases"));
    EXPECT_EQ(Databases.AddRecord(id), PathNotFound);
    EXPECT_EQ(Databases.BeginEdit(id), PathNotFound);
    EXPECT_EQ(Databases.BeginBatch(id), PathNotFound);
    Databases.Close(id);
    EXPECT_EQ(Elsewhere.Bytes("Databases/drivers.sqlite"), OthersBytes);
    EXPECT_EQ(Root.Entries("away"), 1) << "the journal is gone";
    EXPECT_EQ(Databases.Open(u"drivers", DatabaseMode::Read).Id, 0);
}

} // namespace
