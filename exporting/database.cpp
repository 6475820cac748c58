// SPDX-License-Identifier: MIT
#include "exporting/database.h"

#include "companion/values/columns.h"
#include "exporting/exact_numbers.h"
#include "src/text/utf8.h"

#include <algorithm>
#include <sqlite3.h>

namespace exporting {

namespace {

constexpr std::size_t MostColumns = 2000; // of a table, unless SQLite is built otherwise
constexpr const char* Overview = "downloads";

/// What the numbers of a column can be.
enum class Numbers { Integer, Real, Any };

/// A name in SQL: quoted, without what ends a statement early.
std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char character : name)
        quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
    return quoted + "\"";
}

/// Returns a name as a table or column can have it: UTF-8 without a NUL, and none of those that are taken.
std::string FreeName(std::string_view wanted, std::vector<std::string>& taken) {
    std::string clean;
    for (std::size_t at = 0; at < wanted.size();) {
        const std::size_t length = modStringTools::FirstCharacter(wanted.substr(at)).Length;
        const bool isGood = length > 0 && wanted[at] != '\0';
        clean += isGood ? wanted.substr(at, length) : modStringTools::ReplacementCharacter;
        at += std::max<std::size_t>(length, 1);
    }
    std::string name = clean;
    const auto isTaken = [&] {
        return std::any_of(taken.begin(), taken.end(), [&](const auto& each) { return values::IsName(each, name); });
    };
    for (int count = 2; isTaken(); ++count)
        name = clean + "_" + std::to_string(count);
    taken.push_back(name);
    return name;
}

/// Returns the name of a table: those that begin with "sqlite_" are the library's own.
std::string TableName(const std::string& file, std::vector<std::string>& taken) {
    std::string stem = file.substr(0, file.rfind('.'));
    if (stem.empty() || values::IsName(stem.substr(0, 7), "sqlite_"))
        stem = "table_" + stem;
    return FreeName(stem, taken);
}

void Narrow(Numbers& numbers, const Cell& cell) {
    if (cell.Text.empty())
        return;
    const bool isNumber = cell.Type == CellType::Number;
    const bool isInteger = isNumber && ExactInteger(cell.Text);
    if (numbers == Numbers::Integer && !isInteger)
        numbers = Numbers::Real;
    if (numbers == Numbers::Real && (!isNumber || !ExactDouble(cell.Text)))
        numbers = Numbers::Any;
}

/// Returns what each column's numbers can be.
std::vector<Numbers> NumbersOf(const TableView& view, std::size_t width) {
    std::vector<Numbers> all(width, Numbers::Integer);
    std::vector<bool> isMixed(width, false); // an integer of 17 digits beside a decimal fraction
    view.ForEachRow([&](const std::vector<Cell>& cells) {
        for (std::size_t i = 0; i < width; ++i) {
            Narrow(all[i], cells[i]);
            isMixed[i] = isMixed[i] || (cells[i].Type == CellType::Number && !ExactDouble(cells[i].Text));
        }
    });
    for (std::size_t i = 0; i < width; ++i)
        if (all[i] == Numbers::Real && isMixed[i])
            all[i] = Numbers::Any;
    return all;
}

const char* TypeOf(const OutColumn& column, Numbers numbers) {
    if (column.Type != CellType::Number)
        return " TEXT";
    return numbers == Numbers::Integer ? " INTEGER" : numbers == Numbers::Real ? " REAL" : "";
}

} // namespace

struct Database::File {
    sqlite3* Handle = nullptr;
    std::vector<std::string> Tables = {Overview};
    std::string WhyNot; ///< empty while all went well

    void Check(int result) {
        if (WhyNot.empty() && result != SQLITE_OK && result != SQLITE_DONE && result != SQLITE_ROW)
            WhyNot = Handle == nullptr ? "there is no memory for it" : sqlite3_errmsg(Handle);
    }
    void Run(const std::string& sql) {
        if (WhyNot.empty())
            Check(sqlite3_exec(Handle, sql.c_str(), nullptr, nullptr, nullptr));
    }
};

namespace {

/// A row that is inserted again and again.
class Insertion {
public:
    Insertion(sqlite3* database, const std::string& table, std::size_t columns) {
        std::string places = "?";
        for (std::size_t i = 1; i < columns; ++i)
            places += ",?";
        const std::string sql = "INSERT INTO " + Quoted(table) + " VALUES (" + places + ")";
        sqlite3_prepare_v2(database, sql.c_str(), -1, &Statement_, nullptr);
    }
    Insertion(const Insertion&) = delete;
    Insertion& operator=(const Insertion&) = delete;
    ~Insertion() { sqlite3_finalize(Statement_); }

    void Number(std::size_t column, std::string_view number) {
        if (const auto integer = ExactInteger(number))
            sqlite3_bind_int64(Statement_, Place(column), *integer);
        else if (const auto real = ExactDouble(number))
            sqlite3_bind_double(Statement_, Place(column), *real);
        else
            Text(column, number);
    }
    /// The text must exist until Insert. Returns false if it is a BLOB.
    bool Text(std::size_t column, std::string_view text) {
        const bool isText = modStringTools::IsUtf8(text) && text.find('\0') == text.npos;
        const char* const bytes = text.data() == nullptr ? "" : text.data();
        if (isText)
            sqlite3_bind_text64(Statement_, Place(column), bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8);
        else
            sqlite3_bind_blob64(Statement_, Place(column), bytes, text.size(), SQLITE_STATIC);
        return isText;
    }
    void Null(std::size_t column) { sqlite3_bind_null(Statement_, Place(column)); }

    int Insert() {
        const int result = sqlite3_step(Statement_);
        sqlite3_reset(Statement_);
        return result;
    }

private:
    static int Place(std::size_t column) { return static_cast<int>(column) + 1; }
    sqlite3_stmt* Statement_ = nullptr;
};

/// Binds a cell. Returns false if it is a BLOB.
bool Bind(Insertion& row, std::size_t place, const OutColumn& column, const Cell& cell) {
    if (cell.Type == CellType::Missing || (cell.Text.empty() && column.Type != CellType::Text)) {
        row.Null(place);
        return true;
    }
    if (cell.Type != CellType::Number)
        return row.Text(place, cell.Text);
    row.Number(place, cell.Text);
    return true;
}

} // namespace

Database::Database(const std::string& path) : File_(std::make_unique<File>()) {
    File_->Check(sqlite3_open_v2(path.c_str(), &File_->Handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
    // The file is thrown away after a failure, so nothing has to be undone.
    File_->Run("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN;"
               "CREATE TABLE downloads (\"table\" TEXT PRIMARY KEY, file TEXT, alias TEXT, driver TEXT, device TEXT,"
               " sha256 TEXT, records INTEGER)");
}

Database::~Database() {
    sqlite3_close(File_->Handle);
}

void Database::Add(const TableView& view, const DownloadFacts& facts, std::vector<std::string>& odd) {
    if (!File_->WhyNot.empty())
        return;
    const std::vector<OutColumn>& columns = view.Columns();
    const std::size_t width = std::min(columns.size(), MostColumns);
    if (width < columns.size())
        odd.push_back(std::to_string(columns.size()) + " columns, of which a table of a database holds " +
                      std::to_string(width) + ": the others are left out");
    const std::vector<Numbers> numbers = NumbersOf(view, width);
    const std::string name = TableName(facts.File, File_->Tables);
    std::string sql;
    std::vector<std::string> taken;
    for (std::size_t i = 0; i < width; ++i)
        sql += (i == 0 ? "" : ", ") + Quoted(FreeName(columns[i].Name, taken)) + TypeOf(columns[i], numbers[i]);
    File_->Run("CREATE TABLE " + Quoted(name) + " (" + sql + ")");

    Insertion row(File_->Handle, name, width);
    std::size_t blobs = 0;
    view.ForEachRow([&](const std::vector<Cell>& cells) {
        for (std::size_t i = 0; i < width; ++i)
            blobs += Bind(row, i, columns[i], cells[i]) ? 0 : 1;
        File_->Check(row.Insert());
    });
    if (blobs > 0)
        odd.push_back(std::to_string(blobs) + (blobs == 1 ? " value has" : " values have") +
                      " a NUL or bytes that are no UTF-8: a BLOB of the bytes");

    Insertion overview(File_->Handle, Overview, 7);
    std::size_t place = 0;
    for (const std::string* const fact :
         {&name, &facts.File, &facts.Alias, &facts.Driver, &facts.Device, &facts.Sha256})
        overview.Text(place++, *fact);
    const std::string records = std::to_string(view.Rows());
    overview.Number(place, records);
    File_->Check(overview.Insert());
}

std::string Database::Close() {
    File_->Run("COMMIT");
    File_->Check(sqlite3_close(File_->Handle));
    File_->Handle = nullptr;
    return File_->WhyNot;
}

} // namespace exporting
