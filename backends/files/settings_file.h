// SPDX-License-Identifier: MIT
// The settings of the application, in a text file that the user can read and edit.
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
///  1. It is UTF-8, one entry a line, with LF or CR LF. A byte-order mark at its start is not part of the first line,
///     and is kept when a setting is saved.
///  2. `[Name]` begins a section, which ends at the next such line. The file belongs to one application, whose name is
///     not written in it.
///  3. `Key=Value`: the key ends at the first `=`. The value is everything after it, literally: backslashes, quotes,
///     `;`, `,`, `#` and further `=` have no meaning in it, so `StorageVolume=.\` sets the volume `.\`. Blanks and tabs
///     around key and value are ignored.
///  4. Characters that would not be read back that way are written as `%` and two hex digits for each byte of their
///     UTF-8 form: blanks and tabs at either end of a value, CR, LF, NUL, and a `%` that is followed by two hex digits.
///     Any other `%` is itself: `50%` is `50%`, `%41` is `A`, and the value `%41` is written `%2541`.
///  5. Names of keys and sections match without regard to the case of the letters A to Z. Of several lines with the
///     same key the first one is used, and saving replaces it.
///  6. A line that begins with `;` or `#` is a comment. Comments, empty lines and unrecognised lines are kept in place
///     when a setting is saved. A new key is added after the last key of its section, a new section at the end.
///
/// The values are those read at the start and saved since. A save reads the file again, changes the one key and writes
/// the file as a whole, so that it is always the old or the new file. Other keys that another program has written are
/// kept, and are used from the next start on. A file that can't be read or is larger than 1 MB counts as empty and
/// can't be saved, because its content would be lost. If saving fails, the setting keeps its old value in memory too.
class SettingsFile final : public Settings {
public:
    /// A file that the user has named: links in the path are followed.
    explicit SettingsFile(const std::string& hostPath);
    /// A file beneath the root folder; links can't lead out of it.
    SettingsFile(const PathMap& paths, const Text& devicePath);

    Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const override;
    /// PathRefused for a name that the file can't express: an empty one, one with a line end or NUL, with blanks around
    /// it, a key that contains `=` or begins with `[`, `;` or `#`, a section that ends in `]`.
    ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) override;

private:
    using FindEntry = std::function<ErrorNumber(FileEntry&)>;

    /// The content of the file.
    struct Content {
        std::string Mark;               ///< byte-order mark at its start, or empty
        std::vector<std::string> Lines; ///< without LF; a CR before it is kept
    };

    explicit SettingsFile(FindEntry find);
    struct Place;
    static Place Locate(const std::vector<std::string>& lines, const std::string& section, const std::string& key);
    static void Put(std::vector<std::string>& lines, const std::string& section, const std::string& key,
                    const std::string& written);
    ErrorNumber Read(Content& content) const;
    ErrorNumber Write(const Content& content) const;

    FindEntry Find_;                  ///< called at each use, because its folder may be exchanged meanwhile
    ErrorNumber ReadError_ = NoError; ///< why there are no lines, although the file may have some
    std::vector<std::string> Lines_;  ///< as read at the start, with the changes saved since
};

} // namespace backends
