// SPDX-License-Identifier: MIT
#include "apps/quorin/help_texts.h"

#include "apps/options/command_line.h"
#include "backends/files/left_files.h"
#include "backends/qt/keyboard_map.h"

#include <QDateTime>
#include <QFile>

/// The linker leaves out resources of a library that nothing names.
static void UseBuiltInDocuments() {
    Q_INIT_RESOURCE(documents);
}

namespace quorin {

using companion::HelpPage;

namespace {

struct Document {
    const char* Name;
    const char* Title;
};

/// In the order of the list of pages.
constexpr Document Documents[] = {
    {RecoveryCard, "Recovery card"},
    {"limits.md", "What to know before a shift"},
    {"window.md", "The window"},
    {"instrument.md", "How to connect an instrument"},
    {"addresses.md", "Addresses of ports"},
    {"drivers.md", "How to write a driver"},
    {"formats.md", "File formats"},
    {"journal.md", "The journal"},
    {"privacy.md", "What is kept about people"},
    {"console.md", "The program on a terminal"},
    {"glossary.md", "Words of this program"},
};

companion::ScratchFile Told(const std::string& folder, const backends::LeftTable& left) {
    const QDateTime changed = QDateTime::fromSecsSinceEpoch(left.Changed);
    return {.Path = folder + "/" + left.Name,
            .Time = changed.toString(QStringLiteral("yyyy-MM-dd HH:mm")).toStdString(),
            .Size = static_cast<std::size_t>(left.Size)};
}

std::vector<companion::PlaceRow> Rows(const KeptPlaces& places, const std::string& folder) {
    return {{"Data", folder},
            {"Root folder", places.Root},
            {"Settings", places.Settings},
            {"The window's own settings", places.WindowSettings},
            {"Journal", places.Journal},
            {"Drafts of records", places.Drafts}};
}

bool IsNamed(const std::vector<HelpPage>& pages, const std::string& name) {
    for (const HelpPage& page : pages)
        if (page.Name == name)
            return true;
    return false;
}

} // namespace

std::string BuiltInDocument(const std::string& name) {
    UseBuiltInDocuments();
    QFile file(QStringLiteral(":/documents/") + QString::fromStdString(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

std::vector<HelpPage> HelpPages(const KeptPlaces& places, const std::string& folder) {
    const std::string keys = backends::qt::KeyboardHelp();
    std::vector<HelpPage> pages = {
        {PageOfScreen, "This screen",
         companion::ScreenPage(modQuorin::Screens.CurrentScreen, BuiltInDocument("limits.md"), keys)}};
    for (const Document& document : Documents)
        pages.push_back({document.Name, document.Title, BuiltInDocument(document.Name)});
    pages.push_back({PageOfKeys, "Keys", companion::KeysPage(keys)});
    std::vector<companion::ScratchFile> left;
    for (const backends::LeftTable& table : backends::LeftTables(folder))
        left.push_back(Told(folder, table));
    if (!left.empty())
        pages.push_back({PageOfLeftFiles, "Left-over files", companion::ScratchPage(left)});
    pages.push_back({PageOfProgram, "About",
                     companion::AboutPage(apps::VersionText("quorin"), Rows(places, folder), PartsOfOthers())});
    for (HelpPage& page : pages)
        page.Markdown =
            companion::WithLinksTo([&pages](const std::string& name) { return IsNamed(pages, name); }, page.Markdown);
    return pages;
}

std::vector<companion::PartRow> PartsOfOthers() {
    return {{std::string("Qt ") + qVersion() + " (Core, Gui, Widgets)", "LGPL 3"},
            {"SQLite", "public domain"},
            {"Nettle (nettle)", "LGPL 3 or later, or GPL 2 or later"},
            {"libxlsxwriter (xlsxwriter)", "BSD, 2 clauses"},
            {"minizip (minizip)", "zlib"},
            {"zlib (z)", "zlib"},
            {"ALSA library (asound)", "LGPL 2.1 or later"},
            {"libudev", "LGPL 2.1 or later"},
            {"GNU C++ library (stdc++, gcc_s)", "GPL 3 or later, with its exception for programs"},
            {"GNU C library (c, m)", "LGPL 2.1 or later"},
            {"JSON for Modern C++, compiled in", "MIT"},
            {"CLI11, compiled in", "BSD, 3 clauses"}};
}

} // namespace quorin
