// SPDX-License-Identifier: MIT
// The settings of the application, in one text file that a person can read and edit.
#pragma once

#include "backends/files/path_map.h"
#include "src/view/platform/device.h"

#include <functional>
#include <string>
#include <vector>

namespace backends {

using namespace platform;

/// The file, by example:
///
///     # The link
///     [Settings]
///     ComPort=Com3
///     Font=Tahoma
///
///  1. It is UTF-8, one entry a line, with LF or CR LF. A byte-order mark at its start is none of the
///     first line, and stays when a setting is saved.
///  2. `[Name]` begins a section, which goes on to the next such line. The file belongs to one application, whose name
///     is written nowhere.
///  3. `Key=Value`: the key ends at the first `=`. The value is what stands behind it, literally: backslashes, quotes,
///     `;`, `,`, `#` and further `=` have no meaning in it, so that `StorageVolume=.\` is the volume `.\` and no more.
///     Blanks and tabs around key and value do not count.
///  4. What would not come back that way is written as `%` and two hex digits for each byte of its UTF-8 form: blanks
///     and tabs at either end of a value, CR, LF, NUL, and a `%` that two hex digits follow. A `%` that no two hex
///     digits follow is itself: `50%` is `50%`, `%41` is `A`, and the value `%41` is written `%2541`.
///  5. Names of keys and sections match without regard to the case of the letters A to Z. Of several lines with the
///     same key the first one counts, and is the one that saving replaces.
///  6. A line that begins with `;` or `#` is a comment. Comments, empty lines and lines that mean nothing stay where
///     they are when a setting is saved. A new key is put behind the last key of its section, a new section at the end.
///
/// The values are those that were read at the start and saved since. A save reads the file again, puts the one key into
/// what is there, and writes it as a whole, so that it is the old one or the new one whatever happens meanwhile, and
/// what another program has written of other keys stays: it counts from the next start on. A file that can't be read,
/// or is larger than 1 MB, is an empty one that can't be saved: what it holds would be gone. When saving fails the
/// setting keeps its old value in memory too.
class SettingsFile final : public Settings {
public:
    /// A file that a person has named: links in the path are meant.
    explicit SettingsFile(const std::string& hostPath);
    /// A file beneath the root folder, which no link leads out of.
    SettingsFile(const PathMap& paths, const Text& devicePath);

    Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const override;
    /// PathRefused for a name that the file has no form for: an empty one, one with a line end or NUL, with blanks
    /// around it, a key with `=` or with `[`, `;` or `#` in front, a section with `]` at its end.
    ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) override;

private:
    using FindEntry = std::function<ErrorNumber(FileEntry&)>;

    /// What is in the file.
    struct Content {
        std::string Mark;               ///< a byte-order mark at its head, or nothing
        std::vector<std::string> Lines; ///< without LF; a CR in front of it is kept
    };

    explicit SettingsFile(FindEntry find);
    struct Place;
    static Place Locate(const std::vector<std::string>& lines, const std::string& section, const std::string& key);
    static void Put(std::vector<std::string>& lines, const std::string& section, const std::string& key,
                    const std::string& written);
    ErrorNumber Read(Content& content) const;
    ErrorNumber Write(const Content& content) const;

    FindEntry Find;                  ///< looked for at each use: its folder may be exchanged meanwhile
    ErrorNumber ReadError = NoError; ///< why there are no lines, when the file may have some
    std::vector<std::string> Lines;  ///< as read at the start, with what has been saved since
};

} // namespace backends
