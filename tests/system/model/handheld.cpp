// SPDX-License-Identifier: MIT
#include "tests/system/model/handheld.h"

#include "src/app/start_up.h"
#include "src/text/text.h"
#include "tests/support/places.h"

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>

namespace shift {

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t TextType = 0x54455854; // "TEXT"
constexpr std::int32_t Creator = 0x5156524E;  // "QVRN"
constexpr const char* MailboxFolder = "Application Data/Volatile/RFCOMM";

std::string BytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Put(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

bool IsScratch(const std::string& name) {
    return name.size() >= 8 && std::all_of(name.begin(), name.begin() + 8,
                                           [](unsigned char character) { return std::isdigit(character) != 0; });
}

/// A connection to a line database. The destructor closes it.
struct Database {
    Database(const fs::path& path, int flags) { sqlite3_open_v2(path.c_str(), &Handle, flags, nullptr); }
    ~Database() { sqlite3_close(Handle); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Execute(const std::string& sql) { sqlite3_exec(Handle, sql.c_str(), nullptr, nullptr, nullptr); }
    sqlite3* Handle = nullptr;
};

std::string LinesOf(const fs::path& path) {
    const Database database(path, SQLITE_OPEN_READWRITE);
    sqlite3_stmt* rows = nullptr;
    sqlite3_prepare_v2(database.Handle, R"(SELECT LineNumber, LineData FROM "TEXT" ORDER BY Position)", -1, &rows,
                       nullptr);
    std::string lines;
    for (int number = 1; sqlite3_step(rows) == SQLITE_ROW; ++number) {
        if (sqlite3_column_int(rows, 0) != number)
            lines += "(numbered " + std::to_string(sqlite3_column_int(rows, 0)) + ")";
        lines.append(reinterpret_cast<const char*>(sqlite3_column_text(rows, 1)),
                     static_cast<std::size_t>(sqlite3_column_bytes(rows, 1)));
        lines += '\n';
    }
    sqlite3_finalize(rows);
    return lines;
}

/// Reads a copy of the database and its journal, because reading repairs what a killed program has left, and the
/// program itself must do that.
std::string LinesAfterAKill(const fs::path& path, const fs::path& copy) {
    fs::copy_file(path, copy, fs::copy_options::overwrite_existing);
    fs::copy_file(path.string() + "-journal", copy.string() + "-journal", fs::copy_options::overwrite_existing);
    const std::string lines = LinesOf(copy);
    fs::remove(copy);
    fs::remove(copy.string() + "-journal");
    return lines;
}

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text)
        quoted += character == '\'' ? "''" : std::string(1, character);
    return quoted + "'";
}

} // namespace

DeviceFolder::DeviceFolder(const Kind& kind) : Databases_(kind.DataFolder == nullptr) {
    std::string name = (support::PlaceInMemory() / "quorin-shift-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    Root_ = name;
    Data_ = Root_ / (Databases_ ? "Databases" : kind.DataFolder);
    fs::create_directories(Data_);
}

DeviceFolder::~DeviceFolder() {
    std::error_code ignored;
    fs::remove_all(Root_, ignored);
}

fs::path DeviceFolder::PathOf(const std::string& name) const {
    return Data_ / (Databases_ ? fs::path(name).stem().string() + ".sqlite" : name);
}

std::optional<std::string> DeviceFolder::Read(const std::string& name) const {
    const fs::path path = PathOf(name);
    if (!fs::exists(path))
        return std::nullopt;
    if (!Databases_)
        return BytesOf(path);
    return fs::exists(path.string() + "-journal") ? LinesAfterAKill(path, Root_ / "copy") : LinesOf(path);
}

std::set<std::string> DeviceFolder::Names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(Data_)) {
        const std::string name = entry.path().filename().string();
        const std::string stem = entry.path().stem().string();
        if (Databases_ && entry.path().extension() == ".sqlite" && !stem.ends_with("qvd"))
            names.insert(stem + ".txt");
        else if (!Databases_ && entry.path().extension() != ".qvd" && !IsScratch(name))
            names.insert(name);
    }
    return names;
}

/// Puts a driver package on the device. A Palm receives it by beam as a database, whose name has no ending.
void DeviceFolder::PutPackage(const std::string& name, const std::string& lines) const {
    if (!Databases_) {
        Put(Data_ / (name + ".qvd"), lines);
        return;
    }
    Database database(Data_ / (name + "qvd.sqlite"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    database.Execute(R"(CREATE TABLE "DATABASE"(TypeCode, CreatorCode); INSERT INTO "DATABASE" VALUES()" +
                     std::to_string(TextType) + "," + std::to_string(Creator) + ")");
    database.Execute(R"(CREATE TABLE "TEXT"(Position INTEGER PRIMARY KEY, LineNumber, LineData))");
    std::size_t start = 0;
    for (int line = 0; start < lines.size(); ++line) {
        const std::size_t end = lines.find('\n', start);
        database.Execute(R"(INSERT INTO "TEXT" VALUES()" + std::to_string(line) + "," + std::to_string(line + 1) + "," +
                         Quoted(lines.substr(start, end - start)) + ")");
        start = end + 1;
    }
}

void DeviceFolder::PutMailbox(const std::string& name, const std::string& bytes) const {
    Put(Root_ / MailboxFolder / name, bytes);
}

void DeviceFolder::RemoveMailbox(const std::string& name) const {
    fs::remove(Root_ / MailboxFolder / name);
}

bool DeviceFolder::HasMailbox(const std::string& name) const {
    return fs::exists(Root_ / MailboxFolder / name);
}

Handheld::Handheld(const Kind& kind, const DeviceFolder& folder, Moment now, std::function<void()> step)
    : Step_(std::move(step)) {
    backends::DeviceOptions options;
    options.DeviceType = kind.DeviceType;
    options.Root = folder.Root().string();
    options.StartMoment = now / Second;
    Host_ = std::make_unique<backends::HostDevice>(options);
    Platform_.reset(new backends::headless::HeadlessPlatform(*Host_, *this, *this));
    User_ = std::make_unique<backends::headless::HeadlessHand>(*Platform_);
    Platform_->runTime.Rest = [](std::int32_t) {}; // there is nothing to wait for
    platform::Install(&Platform_->record);
    modQuorin::ResetModules();
}

Handheld::~Handheld() {
    modQuorin::ResetModules();
}

backends::ProgramOver Handheld::Run() {
    try {
        Platform_->StartProgram();
        for (;;)
            Platform_->loop.WaitOnce();
    } catch (const backends::ProgramOver& over) {
        return over;
    }
}

void Handheld::RunCommand() {
    Step_();
    Platform_->loop.HandleDue();
}

void Handheld::BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon, const Text&) {
    Events_.push_back((buttons == platform::BoxButtons::Ok ? "box ok " : "box yesno ") + modStringTools::ToBytes(text));
}

void Handheld::TonePlayed(std::int32_t hertz, std::int32_t milliseconds) {
    Events_.push_back("tone " + std::to_string(hertz) + " " + std::to_string(milliseconds));
}

void Handheld::NotSaved(const Text& file, const Text& why) {
    Events_.push_back("not saved: " + modStringTools::ToBytes(file) + ", " + modStringTools::ToBytes(why));
}

std::vector<std::string> Handheld::TakeEvents() {
    std::vector<std::string> events;
    events.swap(Events_);
    return events;
}

} // namespace shift
