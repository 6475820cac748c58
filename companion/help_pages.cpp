// SPDX-License-Identifier: MIT
#include "companion/help_pages.h"

#include "companion/help_rows.h"

namespace companion {

namespace {

constexpr std::string_view CellEnd = " | ";

std::string_view LineAt(std::string_view text, std::size_t& at) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = text.substr(at, end - at);
    at = end + 1;
    return line;
}

bool Begins(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool IsOfLetters(char each) {
    return (each >= 'a' && each <= 'z') || (each >= '0' && each <= '9') || each == '-' || each == '_' ||
           (each & 0x80) != 0;
}

std::string Heading(const std::string& title) {
    return "# " + title + "\n\n";
}

/// A text in which no character is a mark of Markdown.
std::string Code(const std::string& text) {
    return "`" + text + "`";
}

std::string KeysBlock(const std::string& keys) {
    return "```\n" + keys + "```\n";
}

std::string ActsOf(const HelpRow& row) {
    std::string list = "## What can be done here\n\n";
    for (const HelpAct& act : row.Acts)
        list += std::string("- **") + act.Name + "** " + act.What + "\n";
    return list + "\n";
}

std::string LimitsOf(const HelpRow& row, std::string_view limits) {
    if (row.Limits.empty())
        return {};
    std::string list = "## What to know\n\n";
    for (const LimitRow& limit : LimitRows(limits))
        for (const char* const wanted : row.Limits)
            if (Begins(limit.What, wanted))
                list += "- " + limit.What + " *" + limit.Avoid + "*\n";
    return list + "\nAll cases: [what to know before a shift](limits.md).\n\n";
}

/// A bar within a table of Markdown has a backslash before it, which elsewhere would be shown.
std::string WithBars(std::string_view cell) {
    std::string text(cell);
    for (std::size_t at = 0; (at = text.find("\\|", at)) != std::string::npos; ++at)
        text.erase(at, 1);
    return text;
}

std::string SizeText(std::size_t size) {
    return std::to_string(size) + (size == 1 ? " byte" : " bytes");
}

} // namespace

std::vector<LimitRow> LimitRows(std::string_view markdown) {
    std::vector<LimitRow> rows;
    for (std::size_t at = 0; at < markdown.size();) {
        const std::string_view line = LineAt(markdown, at);
        const std::size_t middle = line.find(CellEnd, 1);
        if (!Begins(line, "| ") || middle == std::string_view::npos || Begins(line, "| What happens |"))
            continue;
        const std::size_t second = middle + CellEnd.size();
        const std::size_t end = line.find(" |", second);
        rows.push_back({WithBars(line.substr(2, middle - 2)), WithBars(line.substr(second, end - second))});
    }
    return rows;
}

std::string ScreenPage(modQuorin::ScreenId screen, std::string_view limits, const std::string& keys) {
    const HelpRow* const row = HelpRowOf(screen);
    if (row == nullptr)
        return Heading("This screen") + "The form has not started yet.\n";
    return Heading(row->Title) + row->Purpose + "\n\n" + ActsOf(*row) +
           "When something went wrong: [recovery card](recovery-card.md).\n\n" + LimitsOf(*row, limits) +
           "## Keys\n\n" + KeysBlock(keys);
}

std::string KeysPage(const std::string& keys) {
    return Heading("Keys") +
           "The number is the code of the key on a device, the next word its name there, the last one the key of your "
           "keyboard. [More about keys](window.md#keys).\n\n" +
           KeysBlock(keys);
}

std::string ScratchPage(const std::vector<ScratchFile>& files) {
    std::string page =
        Heading("Left-over files") +
        "The program writes a table anew into a file of eight digits and then gives it the table's name. "
        "These were left over, by a full disk, a loss of power, or a change that another program made "
        "meanwhile. They are not read as data and never removed by the program: one may be the only copy "
        "of what you saved.\n\n| File | Last changed | Size |\n|---|---|---|\n";
    for (const ScratchFile& file : files)
        page += "| " + Code(file.Path) + " | " + file.Time + " | " + SizeText(file.Size) + " |\n";
    return page +
           "\n## What to do\n\n"
           "1. Look into it with any editor.\n"
           "2. One line is a record that has lost its place: copy it into its table by hand, while no download is "
           "open.\n"
           "3. A whole table is the state that could not be put in place: compare it with the table of the same "
           "columns, and keep what that one lacks.\n"
           "4. Then delete it, or move it to another folder.\n\n"
           "[What can leave such a file](limits.md#storage-and-the-link).\n";
}

std::string AboutPage(const std::string& version, const std::vector<PlaceRow>& places,
                      const std::vector<PartRow>& parts) {
    std::string page = Heading("About") + version + "\n\nCollects the results of a test instrument. Licence: MIT.\n\n" +
                       "## Where things are\n\n| What | Where |\n|---|---|\n";
    for (const PlaceRow& place : places)
        page += "| " + place.What + " | " + (place.Path.empty() ? "none is kept" : Code(place.Path)) + " |\n";
    page += "\nWhat is kept about people: [privacy](privacy.md).\n\n## Parts by others\n\n| Part | Licence |\n|---|---|\n";
    for (const PartRow& part : parts)
        page += "| " + part.Name + " | " + part.Licence + " |\n";
    return page;
}

std::string WithLinksTo(const std::function<bool(const std::string&)>& isPage, const std::string& markdown) {
    std::string text;
    std::size_t at = 0;
    for (;;) {
        const std::size_t middle = markdown.find("](", at);
        const std::size_t open = markdown.rfind('[', middle);
        const std::size_t close = markdown.find(')', middle);
        if (middle == std::string::npos || close == std::string::npos || open == std::string::npos || open < at)
            return text + markdown.substr(at);
        const std::string words = markdown.substr(open + 1, middle - open - 1);
        const std::string target = markdown.substr(middle + 2, close - middle - 2);
        const std::size_t mark = std::min(target.find('#'), target.size());
        const std::string path = target.substr(0, mark);
        const std::string name = path.substr(path.rfind('/') + 1);
        const bool stays = path.empty() || (path.find(':') == std::string::npos && isPage(name));
        text += markdown.substr(at, open - at);
        text += stays ? "[" + words + "](" + name + target.substr(mark) + ")" : words;
        at = close + 1;
    }
}

std::string NameOfHeading(std::string_view heading) {
    std::string name;
    for (char each : heading) {
        if (each >= 'A' && each <= 'Z')
            each = static_cast<char>(each - 'A' + 'a');
        if (each == ' ')
            name += '-';
        else if (IsOfLetters(each))
            name += each;
    }
    return name;
}

} // namespace companion
