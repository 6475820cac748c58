// SPDX-License-Identifier: MIT
// What the form has no message for and a person should know. The form goes on as if nothing were; who stands around it
// finds the words and shows them.
#pragma once

#include "src/view/platform/device.h"
#include "src/view/platform/storage.h"

namespace platform {

/// What can be done with the record that was opened.
enum class RecordPlace {
    Stored,   ///< it is a row of its file
    NoFile,   ///< the file could not be made
    NoRecord, ///< the file's first record could not be added
};

struct OpenedRecord {
    Text File; ///< bare name of the download
    RecordPlace Place = RecordPlace::Stored;
    ErrorNumber Why = NoError;
    Text Driver;        ///< with which it is shown
    Text Owner;         ///< whose download it is; the same, but for one that is opened from another driver's empty list
    bool Listed = true; ///< the list from which it was opened names it
};

/// Why what an instrument has sent, and the record shows, will be in no row of the file.
enum class ReadingLoss {
    NoFile,  ///< there is no file
    NoRow,   ///< the file has no row for the record on screen
    NoField, ///< the row has no such field, or the table no such column
    Emptied, ///< the formula of its row, or a variable, has taken its place
};

struct LostReading {
    Text File; ///< bare name
    ReadingLoss Why = ReadingLoss::NoFile;
    Text Value;            ///< with its unit
    bool WithValue = true; ///< the value is lost, and not only what came with it
    Text Fields;           ///< names of the fields that are lost, parted by ", "
};

class Onlooker {
public:
    virtual ~Onlooker() = default;

    virtual void RecordOpened(const OpenedRecord& record) = 0;
    virtual void ReadingLost(const LostReading& reading) = 0;
    /// A reading came with a unit and without a value; `field` is where it went.
    virtual void ReadingWithoutValue(const Text& field) = 0;
    /// What came at that moment is not decoded yet, and goes into the record that has just come on the screen.
    virtual void ReadingWaits(const DateTime& since) = 0;

    /// A data folder is not there and can't be made, or its name is refused: the files that belong there are looked for
    /// and made in `instead`, which is empty where that is not there either. May come again and again.
    virtual void FolderReplaced(const Text& folder, const Text& instead, ErrorNumber why) = 0;

    /// A list of files is shown without these, which could not be read.
    virtual void ListIncomplete(const std::vector<Unlisted>& unlisted) = 0;

    /// The mailbox's file was taken and could not be deleted.
    virtual void DeliveryStays(const Text& fullName, ErrorNumber why) = 0;
    /// It is there and could not be read, or is no file.
    virtual void DeliveryKept(const Text& fullName, ErrorNumber why) = 0;
    /// Neither is so now.
    virtual void MailboxClear() = 0;
};

} // namespace platform
