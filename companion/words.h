// SPDX-License-Identifier: MIT
// The texts for what the form has no message for.
#pragma once

#include "companion/notices.h"
#include "src/view/platform/onlooker.h"

namespace companion {

// The short names of notices, as in docs/limits.md.
inline const Text AboutSaving = u"notsaved";
inline const Text AboutRecord = u"record";
inline const Text AboutDriver = u"driver";
inline const Text AboutWaiting = u"waiting";
inline const Text AboutValue = u"value";
inline const Text AboutMailbox = u"mailbox";
inline const Text AboutLinkOff = u"linkoff";
inline const Text AboutLinkOn = u"linkon";
inline const Text AboutLock = u"lock";
inline const Text AboutFolder = u"folder";
inline const Text AboutList = u"list";
inline const Text AboutRights = u"rights";
inline const Text AboutPort = u"port";
inline const Text AboutCharacters = u"characters";
inline const Text AboutPlace = u"place";
inline const Text AboutDraft = u"draft";
inline const Text AboutUnsaved = u"unsaved";
inline const Text AboutDraftFile = u"draftfile";
inline const Text AboutJournal = u"journal";
inline const Text AboutLimits = u"limits";
inline const Text AboutRemembered = u"remembered";
inline const Text AboutPin = u"pin";
inline const Text AboutAdapter = u"adapter";
inline const Text AboutSpace = u"space";
inline const Text AboutSound = u"sound";
inline const Text AboutHandOver = u"handover";
inline const Text AboutHint = u"hint";
inline const Text AboutPause = u"pause";

/// "20:30:05".
Text TimeText(const platform::DateTime& moment);

/// Something that an instrument has sent did not reach the program.
Notice CharactersLost(const Text& why);
/// Says which folder of the host holds the records.
Notice DataFolder(const Text& folder);
/// One for each file: the next failure of the same file replaces it.
Notice NotSaved(const platform::DateTime& now, const Text& file, const Text& why);

/// Returns why nothing of the record can be stored: "qrn0001.txt could not be created: the disk is full. Readings are
/// not stored."
Text NoPlaceText(const platform::OpenedRecord& record);
/// "the reading 23.4 % is not stored: the file could not be created".
Text LossText(const platform::LostReading& reading);

Notice NoPlace(const platform::OpenedRecord& record);
Notice OtherDriver(const platform::OpenedRecord& record);
Notice ReadingWaits(const platform::DateTime& now, const platform::DateTime& since);
Notice ReadingWithoutValue(const platform::DateTime& now, const Text& field);
Notice DeliveryStays(const Text& fullName, platform::ErrorNumber why);
Notice DeliveryKept(const Text& fullName, platform::ErrorNumber why);
Notice LinkIsOff();
Notice LinkIsOn();
/// `why` is the message with which the program will end.
Notice PortEndsProgram(const Text& why);
/// `why` says that a second program can't be kept out of the root folder.
Notice NobodyKeepsAway(const Text& why);
/// Files are not where they should be: they are in `instead`, or nowhere if that is empty.
Notice FolderReplaced(const Text& folder, const Text& instead, platform::ErrorNumber why);
/// A list of files lacks these files, which can't be read.
Notice ListIncomplete(const std::vector<platform::Unlisted>& unlisted);
/// The record on the screen can't be kept for the case that the program is ended.
Notice DraftNotKept(const Text& why);
/// So many records of earlier runs are kept as drafts.
Notice DraftsWait(std::size_t count);
/// Drafts that can't be read: the path and the reason of each.
Notice DraftsNotRead(const std::vector<Text>& lines);
/// What is received and done is recorded in the journal of this folder.
Notice JournalKept(const Text& folder);
/// Nothing more is recorded in the journal.
Notice JournalStopped(const Text& why);
/// Lines of the journal are written to the disk after the tone of a reading.
Notice JournalIsSlow();
/// The limits of a driver's values can't be read.
Notice LimitsNotRead(const Text& driver, const Text& why);
/// Some of them are not used. `problems`: one at least.
Notice LimitsNotUsed(const Text& driver, const std::vector<Text>& problems);
/// A port that can be used in place of the chosen one.
Notice PortOffered(const Text& words);
/// A person has paused the link.
Notice LinkIsPaused();
/// So many characters came during the pause, and the record for which they came was left.
Notice NotReadInPause(std::size_t characters);
/// What a hand-over is doing or has done, in the words of a person.
Notice HandOverState(const Text& words);
/// Why a hand-over has failed, with what to do.
Notice HandOverFailed(const Text& why);
/// There are records that were never handed over, where a hand-over was made before.
Notice NotHandedOver(std::int64_t records);

/// The disk of a folder has less room left than that.
Notice LittleSpace(const Text& folder, std::int64_t megabytes);
/// A tone could not be played; the window flashes its line instead.
Notice NoSound();
/// What the window should remember for its next start can't be written to its file.
Notice NothingRemembered(const Text& file, const Text& why);
/// `pin`: a line of the file, and what is wrong with it.
Notice PinNotUsed(const Text& pin);
/// A file that was rewritten could not keep all of its permissions.
Notice RightsNotKept(const Text& file);

} // namespace companion
