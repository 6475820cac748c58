// SPDX-License-Identifier: MIT
#include "companion/help_rows.h"

#include <algorithm>

namespace companion {

using namespace modQuorin;

namespace {

constexpr HelpAct Back = {"Back", "goes back to the screen before"};
constexpr const char* UpAndDown = "the arrow keys, or a tap, move the highlight";

HelpRow MainRow() {
    return {&ScrMain,
            "The start",
            "From here everything begins. With \"Start...\" you take readings; with \"inf editor...\" you install and "
            "change drivers, which tell the program what an instrument sends.",
            {{"Start...", "lists the drivers; choose one, then a download, and take readings"},
             {"Preferences...", "the port, the size of the letters, where the data is"},
             {"inf editor...", "lists the installed drivers: install, change or delete one"},
             {"Bluetooth Debug...", "shows what an instrument sends, and stores nothing"},
             {"Exit", "ends the program"}},
            {"When `drivers.txt` is missing", "A port that is not a number", "A card that is absent when the program",
             "The disk of the data is nearly full"}};
}

HelpRow DriversRow() {
    return {&ScrDrivers,
            "Drivers",
            "The installed drivers. Choose the one for your instrument: its downloads are listed next.",
            {{"Ok", "opens the list of downloads of the highlighted driver; so does a tap on it"},
             Back,
             {"Up, Down", UpAndDown}},
            {"Two drivers of one name", "A download whose driver's inf file is missing"}};
}

HelpRow InstalledDriversRow() {
    return {&ScrInstalledDrivers,
            "Installed Drivers",
            "The list from which drivers are installed, changed and deleted.",
            {{"Edit", "changes the name of the highlighted driver and the name of its file of columns"},
             {"Delete", "deletes the driver and its columns, after a question; its downloads stay as files"},
             {"Show/Hide Columns...", "chooses which fields its records show"},
             {"New", "makes a driver by hand"},
             {"Add Driver...", "lists the driver packages that can be installed"},
             Back},
            {"Of two drivers with one inf file", "A driver whose name was cleared", "The screen of a driver's name",
             "Two drivers of one name", "A change of a driver's inf table"}};
}

HelpRow AddDriverRow() {
    return {&ScrAddDriver,
            "Add Driver",
            "The driver packages in the data folder. A package that you drop on the window, or choose with Ctrl+O, is "
            "put there and installed.",
            {{"Install...", "installs the highlighted package"}, Back, {"Up, Down", UpAndDown}},
            {"A driver package installs the inf file", "A package that ends with the line",
             "A folder or a line database that can't be read"}};
}

HelpRow DriverPropertiesRow() {
    return {&ScrDriverProperties,
            "The name of a driver",
            "A driver's name, as \"Start...\" lists it, and the name of its file of columns.",
            {{"Save", "writes both"},
             {"Back", "writes both too, and goes back to the list"},
             {"a tap on a value", "opens it for typing; Enter closes it"}},
            {"The screen of a driver's name", "A driver whose name was cleared", "Of two drivers with one inf file",
             "Two drivers of one name"}};
}

HelpRow ColumnsRow() {
    return {&ScrColumns,
            "Show/Hide Columns",
            "The columns of a driver. Those that are hidden are not on its records; they are in the file all the same.",
            {{"a tap on a column", "shows or hides it"}, {"Back", "stores the choice"}},
            {"The screen of a driver's name", "An inf table without rows"}};
}

HelpRow DownloadsRow() {
    return {
        &ScrDownloads,
        "Downloads",
        "The downloads of the driver that you chose. Each is one table of readings, a text file that any other tool "
        "opens.",
        {{"Open", "opens the highlighted download at its first record; so does a tap on it"},
         {"New", "makes an empty download, with the next free number"},
         {"Rename", "gives the download a name of your own"},
         {"Delete", "deletes the download and its file, after a question"},
         Back},
        {"\"New\" in the list of downloads leaves the mark", "\"New\" does nothing when", "\"Open\" on an empty list",
         "The number of a deleted last download", "The download after number 10000",
         "A download whose driver's inf file is missing", "An alias of a download can't be cleared"}};
}

HelpRow RecordRow() {
    return {
        &ScrInfRecord,
        "A record",
        "One row of a download, a field a line. While it is open, readings are written into the fields that ask for "
        "them: a high tone for one that was taken, a low one for one that was not. The smiley in the title says that "
        "the link is open. What you see is saved when you go to another record, or back. The columns of a driver "
        "are changed on the same screen.",
        {{"a tap on a value", "opens it for typing, or a calendar for a date; Enter closes it, Tab opens the next"},
         {"Next Record", "saves, and shows the next one; so does the right arrow"},
         {"Previous Record", "saves, and shows the one before; so does the left arrow"},
         {"First Record", "saves, and shows the first one"},
         {"Last Record", "saves, and shows the last one"},
         {"New Record", "adds one at the end, with the values that the driver copies"},
         {"Insert Record", "puts an empty one before this one"},
         {"Delete Record", "deletes this one, after two questions"},
         {"Close", "saves, closes the link and goes back"}},
        {"A reading that no row of the record asks for", "A reading that arrives while a \"Replace\" question",
         "\"No\" to a \"Replace\" question", "With a field open for typing, each reading replaces",
         "A reading whose origin is not the connected instrument", "Typing over a value on the record",
         "A download whose file can't be created", "A loss of power leaves the record",
         "Back out of a calendar stops the link", "A bar typed into a value", "A text in a row for dates",
         "A save that finds the disk full"}};
}

HelpRow PreferencesRow() {
    return {
        &ScrPreferences,
        "Preferences",
        "A tap on a line does what it says. The choice is stored at once.",
        {{"Zoom", "makes the letters larger; after the largest come the smallest"},
         {"Select Storage Volume...", "chooses where the data is: the machine or a card"},
         {"Bluetooth Serial Setup...", "chooses the port by its name; \"Ports…\" at the foot of the window is easier"},
         {"Toggle Colour", "shows records in the colours of their driver, or without; the line says how it is now"},
         {"Enter Custom Serial ID...", "types the name of a port that the list does not have"},
         {"Debug", "checks the program's routines for texts"},
         Back},
        {"A port that is not a number", "A port that is open stays open", "A card that is absent when the program",
         "Back from \"Rename\" or \"Serial ID\""}};
}

HelpRow ListRow() {
    return {&ScrList,
            "A list to choose from",
            "Ports, volumes, or files. In the lists of ports and volumes the highlight is the choice: moving it stores "
            "it, there is no Ok.",
            {{"a tap on a line", "chooses it and goes back"},
             {"Up, Down", "move the highlight, which stores the choice"},
             Back},
            {"A list on a desktop offers its items", "A port that is open stays open",
             "A folder or a line database that can't be read"}};
}

HelpRow InputRow() {
    return {&ScrInput,
            "A question for a text",
            "The program asks for a name, a port or a date. The title says for what.",
            {{"Ok", "gives the shown text as the answer; so does Enter on a desktop"}, {"Back", "leaves the question"}},
            {"Back from \"Rename\" or \"Serial ID\"", "An alias of a download can't be cleared",
             "On Palm OS a page key in a prompt", "Back out of a calendar stops the link",
             "A port that is not a number"}};
}

HelpRow BluetoothDebugRow() {
    return {&ScrBluetoothDebug,
            "Bluetooth Debug",
            "Lists the readings that arrive, to see whether an instrument is heard. Nothing is stored here.",
            {Back},
            {"On \"Bluetooth Debug...\" each result", "A port that is not a number"}};
}

HelpRow FileDebugRow() {
    return {&ScrFileDebug,
            "File Debug",
            "Checks of the program's own routines for files. No menu leads here.",
            {{"a tap on a line", "runs that check"}, Back},
            {}};
}

HelpRow TextFileRow() {
    return {&ScrTextFile, "A text file", "Shows the lines of a sample file. No menu leads here.", {Back}, {}};
}

HelpRow FileSelectRow() {
    return {&ScrFileSelect,
            "Choice of a file",
            "Kept for drivers of former days: no menu leads here.",
            {{"Select directory", "has no effect"}, {"Select a volume", "has no effect"}, Back},
            {}};
}

HelpRow MessageRow() {
    return {&ScrMessage, "A message", "Kept for former days: messages come in boxes of their own.", {Back}, {}};
}

HelpRow DownloadRow() {
    return {&ScrDownload,
            "A download as one list",
            "Kept for former days: a download opens at its first record.",
            {{"Close", "goes back to the list of downloads"}, {"Options", "has no effect"}},
            {}};
}

} // namespace

const std::vector<HelpRow>& HelpRows() {
    static const std::vector<HelpRow> rows = {
        MainRow(),    DriversRow(),        InstalledDriversRow(), AddDriverRow(),   DriverPropertiesRow(),
        ColumnsRow(), DownloadsRow(),      RecordRow(),           PreferencesRow(), ListRow(),
        InputRow(),   BluetoothDebugRow(), FileDebugRow(),        TextFileRow(),    FileSelectRow(),
        MessageRow(), DownloadRow()};
    return rows;
}

const HelpRow* HelpRowOf(ScreenId screen) {
    const auto found = std::find_if(HelpRows().begin(), HelpRows().end(),
                                    [screen](const HelpRow& row) { return screen != 0 && *row.Screen == screen; });
    return found == HelpRows().end() ? nullptr : &*found;
}

} // namespace companion
