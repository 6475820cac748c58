// SPDX-License-Identifier: MIT
// The pages of the help that are made while the program runs, as Markdown. The others are documents.
#pragma once

#include "src/view/screen_table.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

/// A page of the help.
struct HelpPage {
    std::string Name;     ///< as links have it: "limits.md"
    std::string Title;    ///< for the list of pages
    std::string Markdown; ///< UTF-8
};

/// A row of the tables of docs/limits.md, as Markdown.
struct LimitRow {
    std::string What;
    std::string Avoid;
};

/// Returns the rows of all tables of two columns.
std::vector<LimitRow> LimitRows(std::string_view markdown);

/// Returns the page on a screen: what it is for, what can be done, what is to be known, the keys. `limits`: the text of
/// docs/limits.md. `keys`: the table of keys, which is shown as it is.
std::string ScreenPage(modQuorin::ScreenId screen, std::string_view limits, const std::string& keys);

std::string KeysPage(const std::string& keys);

/// A file that a rewrite has left over in the data folder.
struct ScratchFile {
    std::string Path;
    std::string Time; ///< of its last change, for people
    std::size_t Size = 0;
};

/// Returns what can be done with them.
std::string ScratchPage(const std::vector<ScratchFile>& files);

/// A line of "About": what it is, and where.
struct PlaceRow {
    std::string What;
    std::string Path;
};

/// A part of the program that is not its own.
struct PartRow {
    std::string Name;
    std::string Licence;
};

std::string AboutPage(const std::string& version, const std::vector<PlaceRow>& places,
                      const std::vector<PartRow>& parts);

/// Returns the text with every link left out whose target is no page of the help: its words stay. A target is kept as
/// its page's bare name, with the part after `#`.
std::string WithLinksTo(const std::function<bool(const std::string& name)>& isPage, const std::string& markdown);

/// Returns the name that links give a heading: "Check a package" is "check-a-package".
std::string NameOfHeading(std::string_view heading);

} // namespace companion
