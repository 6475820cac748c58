// SPDX-License-Identifier: MIT
#include "bench/storage_bench.h"

#include "bench/bench_device.h"
#include "bench/inputs.h"
#include "bench/syncs.h"
#include "src/storage/keyed_tables.h"

#include <filesystem>
#include <memory>
#include <sqlite3.h>

namespace bench {

namespace {

using namespace modFileSystem;
namespace files = std::filesystem;

constexpr std::int32_t Lines = 100000;

/// SQLite without anything around it.
class Database {
public:
    explicit Database(const std::string& path) {
        if (::sqlite3_open(path.c_str(), &Connection_) != SQLITE_OK)
            Fail("can't open " + path);
        // As the product's line databases are: a committed line survives the loss of power.
        Do("PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA");
    }
    ~Database() { ::sqlite3_close(Connection_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Do(const char* sql) {
        if (::sqlite3_exec(Connection_, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            Fail(std::string("SQLite: ") + ::sqlite3_errmsg(Connection_));
    }
    ::sqlite3_stmt* Prepare(const char* sql) {
        ::sqlite3_stmt* statement = nullptr;
        if (::sqlite3_prepare_v2(Connection_, sql, -1, &statement, nullptr) != SQLITE_OK)
            Fail(std::string("SQLite: ") + ::sqlite3_errmsg(Connection_));
        return statement;
    }
    std::int64_t Number(const char* sql) {
        ::sqlite3_stmt* statement = Prepare(sql);
        ::sqlite3_step(statement);
        const std::int64_t number = ::sqlite3_column_int64(statement, 0);
        ::sqlite3_finalize(statement);
        return number;
    }

private:
    ::sqlite3* Connection_ = nullptr;
};

void BindText(::sqlite3_stmt* statement, int parameter, const std::string& text) {
    ::sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

/// Writes the lines after the header in one transaction: one at a time, each would wait for the medium.
void FillLines(Database& database, std::int32_t count) {
    Generator generator(Seed);
    database.Do("BEGIN");
    ::sqlite3_stmt* insert =
        database.Prepare(R"(INSERT INTO "TEXT"(Position, LineNumber, LineData) VALUES(?1, ?2, ?3))");
    for (std::int32_t line = 2; line <= count; ++line) {
        ::sqlite3_bind_int64(insert, 1, line - 1);
        ::sqlite3_bind_int64(insert, 2, line);
        BindText(insert, 3, OneRow(generator, line - 1));
        if (::sqlite3_step(insert) != SQLITE_DONE)
            Fail("can't fill a line database");
        ::sqlite3_reset(insert);
    }
    ::sqlite3_finalize(insert);
    database.Do("COMMIT");
}

struct LineDatabases {
    std::string Root;
    std::int32_t Turn = 0;
    long Syncs = 0; ///< of the product's last change
    std::unique_ptr<BenchDevice> Device;

    std::string File(std::int32_t lines) const { return Root + "/Databases/lines" + std::to_string(lines) + ".sqlite"; }
};

Text NameOf(std::int32_t lines) {
    return modStringTools::FromBytes(".\\lines" + std::to_string(lines) + ".pdb");
}

void MakeDatabase(const LineDatabases& databases, std::int32_t lines) {
    CreateTable(NameOf(lines), modStringTools::FromBytes(RowHeader()), u"a", u"TEXT", u"QVRN");
    CloseTable();
    Database database(databases.File(lines));
    FillLines(database, lines);
}

/// A line database of `Lines` lines with the header, and one of a tenth of them.
std::shared_ptr<LineDatabases> DatabasesOver(const std::string& folder) {
    auto databases = std::make_shared<LineDatabases>();
    databases->Root = folder + "/databases";
    files::remove_all(databases->Root);
    files::create_directories(databases->Root);
    databases->Device = std::make_unique<BenchDevice>(databases->Root);
    MakeDatabase(*databases, Lines);
    MakeDatabase(*databases, Lines / 10);
    return databases;
}

/// A separate database for the floor, with the same lines in the same tables.
std::shared_ptr<Database> OwnDatabase(const LineDatabases& databases) {
    const std::string file = databases.Root + "/own.sqlite";
    files::copy_file(databases.File(Lines), file);
    return std::make_shared<Database>(file);
}

/// Runs a change of the open table, and counts its syncs.
double TimedChange(LineDatabases& databases, void (*change)()) {
    const long before = SyncsSoFar();
    const double taken = Seconds(change);
    databases.Syncs = SyncsSoFar() - before;
    return taken;
}

double SaveMiddleRow(LineDatabases& databases, std::int32_t lines) {
    const Text value = modStringTools::FromBytes("saved " + std::to_string(++databases.Turn));
    OpenTable(NameOf(lines), u"r", u"TEXT", u"QVRN");
    GotoRow(lines / 2);
    SetField(u"C2", value);
    const double taken = TimedChange(databases, SaveRow);
    const bool saved = GetField(u"C2") == value;
    CloseTable();
    if (!saved)
        Fail("SaveRow has not saved the row");
    return taken;
}

double UpdateOne(Database& database, std::int32_t& turn, long& syncs) {
    const std::string text = "50000|saved " + std::to_string(++turn);
    const long before = SyncsSoFar();
    const double taken = Seconds([&] {
        ::sqlite3_stmt* update = database.Prepare(R"(UPDATE "TEXT" SET LineData = ?2 WHERE LineNumber = ?1)");
        ::sqlite3_bind_int64(update, 1, Lines / 2);
        BindText(update, 2, text);
        ::sqlite3_step(update);
        ::sqlite3_finalize(update);
    });
    syncs = SyncsSoFar() - before;
    return taken;
}

std::string SyncNote(long product, long floor) {
    return "product " + std::to_string(product) + " syncs, SQLite " + std::to_string(floor);
}

Sides SavingALine(const std::string& folder) {
    const auto databases = DatabasesOver(folder);
    const auto own = OwnDatabase(*databases);
    const auto turn = std::make_shared<std::int32_t>(0);
    const auto syncs = std::make_shared<long>(0);
    return {[databases] { return SaveMiddleRow(*databases, Lines); },
            [own, turn, syncs] { return UpdateOne(*own, *turn, *syncs); },
            [databases] { return SaveMiddleRow(*databases, Lines / 10); },
            {},
            [databases, syncs] { return SyncNote(databases->Syncs, *syncs); }};
}

/// Inserts a row before all others and deletes it again, so that each turn has the same lines.
double AddFirstRow(LineDatabases& databases, std::int32_t lines) {
    OpenTable(NameOf(lines), u"r", u"TEXT", u"QVRN");
    FirstRow();
    bool added = false;
    const long before = SyncsSoFar();
    const double taken = Seconds([&added] { added = AddRow(1); });
    databases.Syncs = SyncsSoFar() - before;
    if (!added || TableRowCount() != lines)
        Fail("AddRow has not added a row");
    DeleteRow();
    CloseTable();
    return taken;
}

double UpdateAll(Database& database, long& syncs) {
    const std::int64_t before = database.Number(R"(SELECT SUM(LineNumber) FROM "TEXT")");
    const long syncsBefore = SyncsSoFar();
    const double taken = Seconds([&database] { database.Do(R"(UPDATE "TEXT" SET LineNumber = LineNumber + 1)"); });
    syncs = SyncsSoFar() - syncsBefore;
    MustAgree("numbers", database.Number(R"(SELECT SUM(LineNumber) FROM "TEXT")"), before + Lines);
    return taken;
}

Sides AddingALine(const std::string& folder) {
    const auto databases = DatabasesOver(folder);
    const auto own = OwnDatabase(*databases);
    const auto syncs = std::make_shared<long>(0);
    return {[databases] { return AddFirstRow(*databases, Lines); },
            [own, syncs] { return UpdateAll(*own, *syncs); },
            [databases] { return AddFirstRow(*databases, Lines / 10); },
            {},
            [databases, syncs] { return SyncNote(databases->Syncs, *syncs); }};
}

} // namespace

std::vector<Row> DatabaseRows() {
    return {
        {"SaveRow on a line database of 10^5 lines", "one SQLite UPDATE by key, same journal mode", {2}, SavingALine},
        {"AddRow(1) on a line database of 10^5 lines",
         "one SQLite UPDATE of all keys in one transaction",
         {2},
         AddingALine},
    };
}

} // namespace bench
