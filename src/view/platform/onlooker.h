// SPDX-License-Identifier: MIT
// An observer of facts that a person should know and the form has no message for. The application reports them and goes
// on; the observer words and shows them.
#pragma once

#include "src/view/platform/device.h"
#include "src/view/platform/storage.h"

namespace platform {

/// Where the record that was opened will be stored.
enum class RecordPlace {
    Stored,   ///< it is a row of its file
    NoFile,   ///< the file could not be created
    NoRecord, ///< the first record of the file could not be added
};

struct OpenedRecord {
    Text File; ///< bare name of the download
    RecordPlace Place = RecordPlace::Stored;
    ErrorNumber Why = NoError;
    Text Driver;        ///< the driver with which it is shown
    Text Owner;         ///< whose download it is; not Driver only if it was opened from another driver's empty list
    bool Listed = true; ///< the list from which it was opened contains it
};

/// Why a reading that the record shows will not be in a row of the file.
enum class ReadingLoss {
    NoFile,      ///< there is no file
    NoRow,       ///< the file has no row for the record on screen
    NoField,     ///< the row has no such field, or the table no such column
    Overwritten, ///< the formula of its row, or a variable, has replaced it
};

struct LostReading {
    Text File; ///< bare name
    ReadingLoss Why = ReadingLoss::NoFile;
    Text Value;            ///< with its unit
    bool WithValue = true; ///< false if only what came with the value is lost
    Text Fields;           ///< names of the lost fields, separated by ", "
};

class Onlooker {
public:
    virtual ~Onlooker() = default;

    virtual void RecordOpened(const OpenedRecord& record) = 0;
    virtual void ReadingLost(const LostReading& reading) = 0;
    /// A reading had a unit and no value; it was written to `field`.
    virtual void ReadingWithoutValue(const Text& field) = 0;
    /// Text received at `since` is not decoded yet, and will be written into the record that has just been opened.
    virtual void ReadingWaits(const DateTime& since) = 0;

    /// A data folder is missing and can't be created, or its name is refused. Its files are read and created in
    /// `instead`, which is empty if that folder is missing too. May be reported repeatedly.
    virtual void FolderReplaced(const Text& folder, const Text& instead, ErrorNumber why) = 0;

    /// A list of files is shown without these entries, which could not be read.
    virtual void ListIncomplete(const std::vector<Unlisted>& unlisted) = 0;

    /// The mailbox's file was read and could not be deleted.
    virtual void DeliveryStays(const Text& fullName, ErrorNumber why) = 0;
    /// The mailbox's file exists and could not be read, or it is not a regular file.
    virtual void DeliveryKept(const Text& fullName, ErrorNumber why) = 0;
    /// Neither applies any more.
    virtual void MailboxClear() = 0;
};

} // namespace platform
