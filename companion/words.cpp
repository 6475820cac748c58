// SPDX-License-Identifier: MIT
#include "companion/words.h"

#include "companion/offers.h"
#include "src/text/digits.h"

#include <algorithm>
#include <string>

namespace companion {

using modStringTools::TwoDigits;
using platform::DateTime;

namespace {

/// "20:30", with the date if it is not today.
Text MomentText(const DateTime& now, const DateTime& moment) {
    Text text = TwoDigits(moment.Hour) + u":" + TwoDigits(moment.Minute);
    if (moment.Date != now.Date)
        text += u" on " + TwoDigits(moment.Date.Day) + u"/" + TwoDigits(moment.Date.Month) + u"/" +
                modStringTools::NumberText(moment.Date.Year);
    return text;
}

Text ReasonOf(const platform::LostReading& reading) {
    switch (reading.Why) {
    case platform::ReadingLoss::NoFile:
        return u"the file could not be created";
    case platform::ReadingLoss::NoRow:
        return u"the file has no such record";
    case platform::ReadingLoss::NoField:
        return u"the record in the file has no field " + reading.Fields;
    case platform::ReadingLoss::Overwritten:
        break;
    }
    return u"the formula or the variable of its row " + reading.Fields + u" has replaced it";
}

const Text TapWhenRead = u" Tap here when you have read it.";

/// Returns the notice with what the person must do at the end of its words.
Notice WithRemedy(Notice notice, const Text& remedy) {
    notice.Words += remedy;
    notice.Remedy = remedy;
    return notice;
}

} // namespace

Text TimeText(const DateTime& moment) {
    return TwoDigits(moment.Hour) + u":" + TwoDigits(moment.Minute) + u":" + TwoDigits(moment.Second);
}

Notice DataFolder(const Text& folder) {
    return {AboutPlace, Severity::Note, u"Data: " + folder, Until::Withdrawn, NoticeAction::Open};
}

Notice NotSaved(const DateTime& now, const Text& file, const Text& why) {
    return WithRemedy({.About = AboutSaving + u" " + file,
                       .Weight = Severity::Loss,
                       .Words = TimeText(now) + u"  Not saved: " + file + u", " + why + u".",
                       .Stands = Until::Tapped},
                      u" Tap here once you have dealt with it.");
}

Text NoPlaceText(const platform::OpenedRecord& record) {
    const Text what = record.Place == platform::RecordPlace::NoFile
                          ? record.File + u" could not be created: "
                          : u"No record could be added to " + record.File + u": ";
    return what + platform::ErrorText(record.Why) + u". Readings are not stored.";
}

Text LossText(const platform::LostReading& reading) {
    const Text what =
        reading.WithValue ? u"the reading " + reading.Value : u"what came with the reading " + reading.Value;
    return what + u" is not stored: " + ReasonOf(reading);
}

Notice NoPlace(const platform::OpenedRecord& record) {
    return {AboutRecord, Severity::Loss, NoPlaceText(record), Until::Tapped};
}

Notice OtherDriver(const platform::OpenedRecord& record) {
    const Text words = record.Owner != record.Driver
                           ? u"This record belongs to driver " + record.Owner + u", it is shown with driver " +
                                 record.Driver + u": readings may land in the wrong columns."
                           : u"No list contains the download " + record.File + u" any more.";
    return WithRemedy({AboutDriver, Severity::Warning, words, Until::RecordLeft}, u" Go Back and make a new download.");
}

Notice ReadingWaits(const DateTime& now, const DateTime& since) {
    return {AboutWaiting, Severity::Warning,
            u"A reading of " + MomentText(now, since) + u" is still waiting and will go into this record.",
            Until::RecordLeft};
}

Notice ReadingWithoutValue(const DateTime& now, const Text& field) {
    return WithRemedy({AboutValue, Severity::Warning,
                       TimeText(now) + u"  A reading came with a unit and without a value:", Until::RecordLeft},
                      u" check " + field + u".");
}

Notice DeliveryStays(const Text& fullName, platform::ErrorNumber why) {
    return {AboutMailbox, Severity::Warning,
            fullName + u" can't be deleted: " + platform::ErrorText(why) +
                u". It was read once, and is ignored until it changes.",
            Until::Withdrawn};
}

Notice DeliveryKept(const Text& fullName, platform::ErrorNumber why) {
    return {AboutMailbox, Severity::Warning,
            fullName + u" can't be read: " + platform::ErrorText(why) + u". Nothing of it was read.", Until::Withdrawn};
}

Notice CharactersLost(const Text& why) {
    return {AboutCharacters, Severity::Loss,
            u"Characters from the instrument were lost: " + why + u". Compare the record with its display.",
            Until::Tapped};
}

Notice LinkIsOff() {
    return WithRemedy({AboutLinkOff, Severity::Warning,
                       u"Back has closed the link of this record, although the title still shows it.",
                       Until::Withdrawn},
                      u" Go Back and open the download again.");
}

Notice LinkIsOn() {
    return {
        AboutLinkOn, Severity::Warning,
        u"The instrument is still sending, and the link is still open: a reading would go into a field that is open "
        u"here.",
        Until::Withdrawn};
}

Notice PortEndsProgram(const Text& why) {
    return {AboutPort, Severity::Warning, why + u" Opening a download that receives readings will end the program.",
            Until::Withdrawn};
}

Notice NobodyKeepsAway(const Text& why) {
    return WithRemedy({AboutLock, Severity::Warning, why + u".", Until::Tapped}, TapWhenRead);
}

Notice FolderReplaced(const Text& folder, const Text& instead, platform::ErrorNumber why) {
    const Text where =
        instead.empty() ? Text(u"No file is opened or created there") : u"Its files are read and created in " + instead;
    return WithRemedy({AboutFolder, Severity::Warning,
                       u"Can't use the folder " + folder + u": " + platform::ErrorText(why) + u". " + where + u".",
                       Until::Tapped},
                      TapWhenRead);
}

Notice ListIncomplete(const std::vector<platform::Unlisted>& unlisted) {
    Text words;
    for (const platform::Unlisted& each : unlisted)
        words += (words.empty() ? u"" : u" ") + Text(u"Can't read ") + each.Name + u" for the list: " +
                 platform::ErrorText(each.Why) + u".";
    return WithRemedy({AboutList, Severity::Warning, words, Until::Tapped}, TapWhenRead);
}

Notice DraftNotKept(const Text& why) {
    return {AboutDraft, Severity::Warning,
            u"The record on the screen is not kept until it is saved: " + why +
                u". If the program is ended by force, what was entered since the last save is lost."};
}

Notice JournalKept(const Text& folder) {
    return {AboutJournal, Severity::Note,
            u"Journal of what comes and what is done: " + folder + u" (--no-journal keeps none)"};
}

Notice JournalStopped(const Text& why) {
    return {AboutJournal, Severity::Warning,
            u"The journal has stopped: " + why + u". Readings are stored as before, but not recorded."};
}

Notice JournalIsSlow() {
    return {AboutJournal, Severity::Warning,
            u"The disk is slow: when a reading sounds, it may not be in the journal on the disk yet."};
}

Notice DraftsWait(std::size_t count) {
    const Text what =
        count == 1 ? Text(u"A record of an earlier run was")
                   : modStringTools::NumberText(static_cast<std::int32_t>(count)) + u" records of earlier runs were";
    return {AboutUnsaved, Severity::Warning,
            what + u" not saved. The window offers them at its start, quorin-console with --recover.", Until::Tapped};
}

Notice DraftsNotRead(const std::vector<Text>& lines) {
    Text all;
    for (const Text& line : lines)
        all += (all.empty() ? u"" : u"; ") + line;
    return WithRemedy(
        {AboutDraftFile, Severity::Warning, u"A record that was not saved can't be read: " + all + u".", Until::Tapped},
        TapWhenRead);
}

Notice LimitsNotRead(const Text& driver, const Text& why) {
    return {AboutLimits, Severity::Warning,
            driver + u".limits can't be read: " + why + u". No value is compared with its limits.", Until::RecordLeft};
}

Notice LimitsNotUsed(const Text& driver, const std::vector<Text>& problems) {
    constexpr std::size_t MostNamed = 5;
    Text words = driver + u".limits, ";
    for (std::size_t at = 0; at < std::min(problems.size(), MostNamed); ++at)
        words += (at == 0 ? u"" : u"; ") + problems[at];
    if (problems.size() > MostNamed)
        words +=
            u"; and " + modStringTools::NumberText(static_cast<std::int64_t>(problems.size() - MostNamed)) + u" more";
    return {AboutLimits, Severity::Warning, words + u". What is wrong there is not used.", Until::RecordLeft};
}

Notice PortOffered(const Text& words) {
    return {.About = AboutAdapter,
            .Weight = Severity::Hint,
            .Words = words,
            .Stands = Until::Withdrawn,
            .Offers = {{OfferUsePort, u"Use it"}, {OfferNotNow, u"Not now"}}};
}

Notice LinkIsPaused() {
    return {.About = AboutPause,
            .Words = u"The link is paused: what the instrument sends waits until you go on, or leave the record.",
            .Stands = Until::Withdrawn,
            .Offers = {{OfferGoOn, u"Go on"}}};
}

Notice NotReadInPause(std::size_t characters) {
    return WithRemedy({.About = AboutPause,
                       .Words = modStringTools::FromBytes(std::to_string(characters)) +
                                u" characters that came while the link was paused were not read: the record was left.",
                       .Stands = Until::Tapped},
                      TapWhenRead);
}

Notice HandOverState(const Text& words) {
    return {AboutHandOver, Severity::Note, words, Until::Tapped};
}

Notice HandOverFailed(const Text& why) {
    return WithRemedy({AboutHandOver, Severity::Warning, why, Until::Tapped}, TapWhenRead);
}

Notice NotHandedOver(std::int64_t records) {
    const Text count = modStringTools::FromBytes(std::to_string(records));
    return {.About = AboutHandOver,
            .Weight = Severity::Note,
            .Words = count + (records == 1 ? u" record is" : u" records are") + u" not handed over.",
            .Stands = Until::Withdrawn,
            .Offers = {{OfferHandOver, u"Hand over…"}}};
}

Notice LittleSpace(const Text& folder, std::int64_t megabytes) {
    return WithRemedy({AboutSpace, Severity::Warning,
                       u"Less than " + modStringTools::NumberText(megabytes) +
                           (megabytes == 1 ? u" MB is" : u" MB are") + u" free on the disk of " + folder + u"."},
                      u" Make room before readings can't be saved.");
}

Notice NoSound() {
    return {AboutSound, Severity::Note, u"This machine plays no tones: the line of the link flashes instead.",
            Until::Withdrawn};
}

Notice NothingRemembered(const Text& file, const Text& why) {
    return WithRemedy(
        {AboutRemembered, Severity::Warning,
         file + u" can't be written: " + why + u". The window will not remember its size, its ports and its hints.",
         Until::Tapped},
        TapWhenRead);
}

Notice PinNotUsed(const Text& pin) {
    return WithRemedy(
        {AboutPin, Severity::Warning, u"A port that was chosen before is not used: " + pin + u".", Until::Tapped},
        u" Choose it again by \"Ports…\"." + TapWhenRead);
}

Notice RightsNotKept(const Text& file) {
    return WithRemedy({AboutRights, Severity::Warning,
                       file + u" has lost its group or its access list: other users may have fewer rights to it than "
                              u"before.",
                       Until::Tapped},
                      TapWhenRead);
}

} // namespace companion
