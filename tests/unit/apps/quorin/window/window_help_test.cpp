// SPDX-License-Identifier: MIT
#include "apps/quorin/window_help.h"

#include "apps/quorin/window_entries.h"
#include "src/app/commands.h"
#include "tests/support/in_a_window.h"

#include <QPlainTextEdit>

#include <array>
#include <cstdio>
#include <set>

namespace quorin {
namespace {

using companion::HelpPage;
using testing::HasSubstr;
using testing::Not;

const KeptPlaces Somewhere{.Root = "/r",
                           .Settings = "/c/settings.ini",
                           .WindowSettings = "/c/window.ini",
                           .Journal = "/s/journal",
                           .Drafts = "/s/drafts"};

/// True if the text has this as a word, or as one after "lib".
bool HasWord(const std::string& text, const std::string& word) {
    const auto isLetter = [](char each) { return std::isalpha(static_cast<unsigned char>(each)) != 0; };
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) {
        const bool begins = at == 0 || !isLetter(text[at - 1]) || (at >= 3 && text.compare(at - 3, 3, "lib") == 0);
        if (begins && (at + word.size() == text.size() || !isLetter(text[at + word.size()])))
            return true;
    }
    return false;
}

class HelpOfTheWindow : public windowtest::InAWindow {
protected:
    HelpOfTheWindow() {
        Settle();
        FillWindowMenu(Device.Platform, Data, Arriving_, Ports, Hints_, Export, HandOver, Help, Zoom);
    }
    std::vector<HelpPage> Pages() { return HelpPages(Somewhere, Data.Path()); }
    std::string PageOf(const std::string& name) {
        for (const HelpPage& page : Pages())
            if (page.Name == name)
                return page.Markdown;
        return "none";
    }
    QWidget* Dialog() {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("help"))
                return window;
        return nullptr;
    }
    std::string Shown() { return Dialog()->findChild<QTextBrowser*>()->toPlainText().toStdString(); }
    void Choose(const char* entry) {
        for (QAction* const action : Form().Menu().List().actions())
            if (action->text() == QString::fromUtf8(entry))
                action->trigger();
        Settle();
    }

    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowPorts Ports{Device.Platform, Remembered, [] { return false; }};
    WindowHints Hints_{Device.Platform, Remembered, [] { return std::string(); }};
    WindowExport Export{Device.Platform, Remembered, {}};
    WindowHandOver HandOver{Device.Platform, Remembered, {}, ""};
    WindowZoom Zoom{Device.Platform, Remembered, 1};
    DataFolder Data{Device.Platform, Device.Folder.Path()};
    Arriving Arriving_{Device.Platform, Data};
    WindowHelp Help{Device.Platform, Data, Somewhere};
};

TEST_F(HelpOfTheWindow, HasEachDocumentThatIsBuiltIn) {
    for (const HelpPage& page : Pages()) {
        EXPECT_GT(page.Markdown.size(), 200u) << page.Name;
        EXPECT_FALSE(page.Title.empty()) << page.Name;
    }
    for (const char* const name : {"window.md", "limits.md", "drivers.md", "formats.md", "instrument.md", "journal.md",
                                   "privacy.md", "addresses.md", "glossary.md", "recovery-card.md", "keys.md"})
        EXPECT_NE(PageOf(name), "none") << name;
}

TEST_F(HelpOfTheWindow, LeadsFromLinksToHeadingsThatAreThere) {
    std::set<std::string> targets;
    for (const HelpPage& page : Pages()) {
        targets.insert(page.Name);
        std::size_t start = 0;
        for (std::size_t end = 0; (end = page.Markdown.find('\n', start)) != std::string::npos; start = end + 1)
            if (page.Markdown[start] == '#') {
                const std::size_t words = page.Markdown.find(' ', start) + 1;
                targets.insert(page.Name + "#" + companion::NameOfHeading(page.Markdown.substr(words, end - words)));
            }
    }
    int links = 0;
    for (const HelpPage& page : Pages())
        for (std::size_t at = 0; (at = page.Markdown.find("](", at)) != std::string::npos; ++links) {
            at += 2;
            std::string target = page.Markdown.substr(at, page.Markdown.find(')', at) - at);
            if (target[0] == '#')
                target.insert(0, page.Name);
            EXPECT_EQ(targets.count(target), 1u) << page.Name << ": " << target;
        }
    EXPECT_GT(links, 20);
}

TEST_F(HelpOfTheWindow, IsAboutTheScreenThatIsShown) {
    Press(Qt::Key_F1, Qt::ControlModifier);
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_THAT(Shown(), HasSubstr("The start"));
    EXPECT_THAT(Shown(), HasSubstr("Ctrl+Shift+O"));
    modQuorin::MenuEvent(u"Preferences...");
    Help.Open(PageOfScreen);
    EXPECT_THAT(Shown(), HasSubstr("Toggle Colour"));
}

TEST_F(HelpOfTheWindow, IsInTheMenuOfTheWindow) {
    Choose("Recovery &card");
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_THAT(Shown(), HasSubstr("It beeped low"));
    Choose("&About");
    EXPECT_THAT(Shown(), HasSubstr("MIT"));
    EXPECT_THAT(Form().Menu().List().actions(), testing::Contains(&Form().HelpAction()));
}

TEST_F(HelpOfTheWindow, HasALetterOfItsOwnInTheMenu) {
    std::set<QChar> letters;
    for (const QAction* const action : Form().Menu().List().actions()) {
        const QString name = action->text();
        EXPECT_TRUE(letters.insert(name[name.indexOf(u'&') + 1].toLower()).second) << name.toStdString();
    }
}

TEST_F(HelpOfTheWindow, HasTheReportInTheMenuToo) {
    Choose("Report a pro&blem…");
    bool isOpen = false;
    for (QWidget* const window : QApplication::topLevelWidgets())
        isOpen = isOpen || (window->objectName() == QLatin1String("report") && window->isVisible() &&
                            window->findChild<QPlainTextEdit*>()->toPlainText().contains(QLatin1String("kernel")));
    EXPECT_TRUE(isOpen);
}

TEST_F(HelpOfTheWindow, ListsLeftOverFilesWhereThereAreSome) {
    EXPECT_EQ(PageOf(PageOfLeftFiles), "none");
    Put("00000815.txt", "a|b\n");
    EXPECT_THAT(PageOf(PageOfLeftFiles), HasSubstr(Data.Path() + "/00000815.txt"));
    EXPECT_THAT(PageOf(PageOfLeftFiles), HasSubstr("4 bytes"));
    EXPECT_THAT(PageOf(PageOfLeftFiles), HasSubstr("| 20")); // the year
}

TEST_F(HelpOfTheWindow, SaysWhereEverythingIs) {
    const std::string about = PageOf(PageOfProgram);
    for (const std::string& path : {Data.Path(), Somewhere.Root, Somewhere.Settings, Somewhere.WindowSettings,
                                    Somewhere.Journal, Somewhere.Drafts})
        EXPECT_THAT(about, HasSubstr("`" + path + "`"));
    EXPECT_THAT(about, HasSubstr("quorin V "));
}

/// "libQt6Gui.so.6" is named by "Qt" and "Gui", the others by their name without "lib".
TEST_F(HelpOfTheWindow, NamesEveryLibraryOfTheProgram) {
    const std::string about = PageOf(PageOfProgram);
    FILE* const output = ::popen("readelf -d " QUORIN_PROGRAM, "r");
    ASSERT_NE(output, nullptr);
    std::array<char, 1000> line;
    int libraries = 0;
    while (std::fgets(line.data(), line.size(), output) != nullptr) {
        const std::string text = line.data();
        const std::size_t at = text.find("[lib");
        if (text.find("NEEDED") == std::string::npos || at == std::string::npos)
            continue;
        std::string name = text.substr(at + 4, text.find_first_of(".", at) - at - 4);
        if (name.rfind("Qt6", 0) == 0)
            name.erase(0, 3);
        if (name == "sqlite3")
            name = "SQLite";
        // Of a build with sanitizers alone, which also keeps what Qt names for others.
        if (name == "asan" || name == "ubsan" || name == "GLX" || name == "OpenGL")
            continue;
        EXPECT_TRUE(HasWord(about, name)) << name;
        ++libraries;
    }
    ::pclose(output);
    EXPECT_GT(libraries, 5);
}

} // namespace
} // namespace quorin
