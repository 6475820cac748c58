// SPDX-License-Identifier: MIT
// A copy of a record that was on the screen and not in its file yet. It is kept outside of the root folder, and given
// back at the next start if the program has ended before the record was saved.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/device.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace companion {

/// Which root folder a record belongs to.
struct RootId {
    std::uint64_t Device = 0; ///< st_dev of the folder
    std::uint64_t Inode = 0;  ///< st_ino
    std::string Path;         ///< without links, in the bytes of the host
    bool operator==(const RootId&) const = default;
};

struct Draft {
    RootId Root;
    Text Time;               ///< of the form's clock, when it was written: "2026-11-22 20:30:05"
    Text File;               ///< bare name of the table
    Text FullName;           ///< as the device names it
    Text Header;             ///< line 1 of the table
    Text Register;           ///< the table's line in the register of downloads; empty if it is not there
    std::int32_t Row = 0;    ///< of the record, from 1; 0 if it has none in the file
    Text Line;               ///< the record as it was in the file
    std::vector<Text> Texts; ///< what the screen showed, a text for each column
    bool operator==(const Draft&) const = default;
};

/// True if a draft belongs to this folder: by its path, since some file systems number their folders anew at each
/// mount, or by its numbers, since it may have been moved.
bool IsOf(const Draft& draft, const RootId& root);

/// Returns the record on the screen, or under a prompt, if it was changed since it was loaded; its Root and Time are
/// empty. It is made from what is in memory, so that it can be called at any time.
std::optional<Draft> DraftOfScreen();

/// Returns the line that a save of the draft writes: the fields that the record in the file does not have are left out.
Text LineOf(const Draft& draft);

/// True if the screen showed anything else than the file holds.
bool IsNeeded(const Draft& draft);

/// Writes a draft as lines of a name, a blank and a value. Control characters and `%` in values are `%` and two
/// hexadecimal digits.
std::string BytesOf(const Draft& draft);
/// Reads them back. Returns nothing for anything else.
std::optional<Draft> DraftFrom(std::string_view bytes);
/// Returns why the bytes of a draft's file can't be read, in a few words. REQUIRES: DraftFrom returns nothing.
Text WhyNoDraft(std::string_view bytes);

/// What a draft is to the table that it is of.
struct DraftState {
    bool IsSaved = false; ///< the record is in the file as the screen showed it
    Text WhyNot;          ///< why it can't be put back: the table, its line in the register or the record has changed
};

/// Looks into the table. REQUIRES: the form has not been started.
DraftState StateOf(const Draft& draft);

/// Writes the draft to its record, if it can be put back. Returns why not; empty on success.
Text PutBack(const Draft& draft);

/// Returns a moment as Draft::Time has it.
Text DraftTime(const platform::DateTime& moment);

/// "A record of 20:30 was not saved: qrn0002.txt, record 4." The date stands with the time if it is not `today`, which
/// is of the form of Draft::Time.
Text WordsOf(const Draft& draft, const Text& today);

struct DraftField {
    Text Name;
    Text Shown;
    Text Saved; ///< what the file held when the draft was written
};

/// Returns the fields of the record, in the order of the columns.
std::vector<DraftField> FieldsOf(const Draft& draft);

} // namespace companion
