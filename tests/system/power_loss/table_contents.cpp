// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/table_contents.h"

#include <filesystem>
#include <fstream>
#include <sqlite3.h>

namespace disk {

namespace {

const std::string Settings = "settings.ini";

class Database {
public:
    explicit Database(const std::string& path) {
        sqlite3_open_v2(path.c_str(), &Connection_, SQLITE_OPEN_READWRITE, nullptr);
    }
    ~Database() { sqlite3_close(Connection_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Returns each row as its columns with blanks between them, and a failure as a row.
    std::vector<std::string> Rows(const char* sql) {
        std::vector<std::string> rows;
        sqlite3_stmt* statement = nullptr;
        int result = sqlite3_prepare_v2(Connection_, sql, -1, &statement, nullptr);
        while (result == SQLITE_OK && (result = sqlite3_step(statement)) == SQLITE_ROW) {
            rows.emplace_back();
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                rows.back() += (i > 0 ? " " : "") + std::string(text != nullptr ? text : "nothing");
            }
            result = SQLITE_OK;
        }
        if (result != SQLITE_DONE)
            rows.push_back(std::string("failure: ") + sqlite3_errmsg(Connection_));
        sqlite3_finalize(statement);
        return rows;
    }

private:
    sqlite3* Connection_ = nullptr;
};

std::string ContentOfDatabase(const std::string& path) {
    Database database(path);
    const std::vector<std::string> found = database.Rows("PRAGMA integrity_check");
    if (found != std::vector<std::string>{"ok"})
        return "DAMAGED: " + Joined(found);
    if (database.Rows("SELECT COUNT(*) FROM sqlite_master WHERE name = 'TEXT'").front() == "0")
        return {};
    std::string content;
    int number = 0;
    for (const std::string& row : database.Rows(R"(SELECT Position, LineNumber, LineData FROM "TEXT" ORDER BY 1)")) {
        const std::string place = std::to_string(number) + " " + std::to_string(number + 1) + " ";
        if (row.compare(0, place.size(), place) != 0)
            return "OUT OF LINE: " + row + "\n";
        content += row.substr(place.size()) + "\n";
        ++number;
    }
    return content;
}

} // namespace

std::string HostName(const std::string& name, Keeping keeping) {
    if (name == Settings)
        return name;
    if (keeping == Keeping::TextFiles)
        return "Quorin/" + name;
    return "Databases/" + name.substr(0, name.find('.')) + ".sqlite";
}

std::optional<std::string> Content(const std::string& root, const std::string& name, Keeping keeping) {
    const std::string path = root + "/" + HostName(name, keeping);
    if (!std::filesystem::exists(path))
        return std::nullopt;
    if (keeping == Keeping::LineDatabases && name != Settings)
        return ContentOfDatabase(path);
    std::ifstream in(path, std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(in), {}};
}

State Look(const std::string& root, const State& names, Keeping keeping) {
    State state;
    for (const auto& [name, content] : names)
        state[name] = Content(root, name, keeping);
    return state;
}

std::vector<std::string> LinesOf(const std::string& content) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < content.size();) {
        const std::size_t end = std::min(content.find('\n', start), content.size());
        lines.push_back(content.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string content;
    for (const std::string& line : lines)
        content += line + "\n";
    return content;
}

} // namespace disk
