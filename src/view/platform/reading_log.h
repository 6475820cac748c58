// SPDX-License-Identifier: MIT
// An observer of what becomes of each reading. The application reports it at the place where it is decided, and does
// not depend on what the observer does with it.
#pragma once

#include "src/text/text.h"

#include <memory>
#include <vector>

namespace platform {

/// What became of a reading.
enum class Fate {
    Taken,    ///< written to an empty field
    Replaced, ///< written over the old value, after the question
    Kept, ///< the old value was kept: the answer to the question was no, or an input control was open that ignores it
    OpenField, ///< written to the text field that was open for typing
    NoRow,     ///< no row of the record asks for any of its types
    NoColumn,  ///< shown, and not in any column of the record's row in the file
    NoRecord,  ///< shown on the record screen, and the file has no record for it
    NoType,    ///< it has no type, and was written to the first row that asks for none
    OffScreen, ///< dropped: neither the record screen nor the trace was shown
    Trace,     ///< listed on the trace, which stores nothing
    Origin,    ///< refused: its BLob names an origin that is not the connected instrument
    Connect,   ///< dropped: it came in the BLob by which the instrument connected
    Shape,     ///< refused: its BLob has no exact end tag
    Waiting,   ///< another BLob of its burst was refused; it comes with the next burst that is accepted as a whole
    Emptied,   ///< dropped with the text that arrived while a question was open
};

/// One result, as the instrument sent it.
struct Reading {
    std::vector<Text> Types; ///< the names by which it may be known; one empty name if it has none
    Text Value;
    Text Unit;
    std::vector<Text> Variables; ///< each a name, `=` and a value
    Text Origin;                 ///< the instrument, as the variable ORIGIN has it
    /// The BLob that it came in, if that was refused or dropped; its lines end with a carriage return. All results of a
    /// BLob share it. Null if the reading was delivered, or waits.
    std::shared_ptr<const Text> Blob = nullptr;
};

struct Verdict {
    platform::Fate Fate = Fate::Taken;
    platform::Reading Reading = {};
    std::int32_t Row = -1; ///< the row of grdMain that it belongs to, from 0; -1 for none
    Text Field = {};       ///< the name of that row
    Text Old = {};         ///< what the row held before
    Text File = {};        ///< bare name of the open download; empty if no record is on the screen
    Text Expected = {};    ///< the connected instrument, where the origin is refused
};

/// Where received text comes from.
enum class TextSource { Port, Mailbox, Again };

enum class RowEvent { Saved, Added, Deleted };

/// What happened to a row of a table, or was to happen.
struct RowChange {
    RowEvent Event = RowEvent::Saved;
    Text File = {};       ///< bare name of the table
    std::int32_t Row = 0; ///< from 1
    Text OldLine = {};    ///< as it was when the row was loaded
    Text NewLine = {};    ///< as it is in the file now, or was to be
    Text Why = {};        ///< why it failed; empty on success
};

class ReadingLog {
public:
    virtual ~ReadingLog() = default;

    /// A delivery of the mailbox is reported before its file is deleted.
    virtual void TextReceived(TextSource source, TextView characters) = 0;
    /// A batch of received text is about to be decoded. This is the last report before the tones of its results.
    virtual void DecodingBegins() = 0;
    /// A result is about to be captured. Here, and in no other report, the observer may run commands of the form: the
    /// result goes to the record that is on the screen afterwards.
    virtual void ResultComes(const Reading&) {}
    /// Text that arrived while a question was open was dropped without being decoded.
    virtual void TextEmptied(TextView characters) = 0;
    /// There is one verdict for each result. One that waits has a second verdict when it is delivered, and so has one
    /// that is delivered a second time while a question is open. The observer copies what it keeps, and the results of
    /// one BLob may be many.
    virtual void ReadingJudged(const Verdict& verdict) = 0;
    virtual void RowChanged(const RowChange& change) = 0;
};

} // namespace platform
