// SPDX-License-Identifier: MIT
#include "apps/page_exchange/page_exchange.h"

#include "companion/driver_check.h"
#include "companion/hints.h"
#include "companion/offers.h"
#include "companion/words.h"
#include "journal/journal_lines.h"
#include "src/drivers/installation.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <utility>

namespace apps {

using backends::web::PageEvent;
using companion::InTheWay;
using journal::TextOf;
using journal::Utf8;
using Json = journal::Line;
using modQuorin::Screens;
using modStringTools::FromBytes;

namespace {

constexpr std::int64_t LargestZip = 256'000'000; // bytes; it is in memory several times

bool EndsWith(const Text& name, TextView ending) {
    return name.size() > ending.size() &&
           modStringTools::SameIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

companion::Notice HintOfNow() {
    companion::Notice hint = companion::NoDriverHint();
    hint.Offers.back() = {companion::OfferNoHints, u"Not now"}; // the next start says it again
    return hint;
}

/// A browser may remove what it keeps: that is worth more than the note of a window.
companion::Notice HandOverOfNow(std::uint64_t records) {
    companion::Notice notice = companion::NotHandedOver(static_cast<std::int64_t>(records));
    notice.Weight = companion::Severity::Hint;
    notice.Words += records == 1 ? u" It is in this browser alone." : u" They are in this browser alone.";
    notice.Offers = {{companion::OfferHandOver, u"Hand over now…"}, {companion::OfferLater, u"Not now"}};
    return notice;
}

} // namespace

PageExchange::PageExchange(backends::web::WebPlatform& page, const ExchangeFolders& folders)
    : Page_(page), Led_(page, *this), Download_(page.host, folders.Root),
      HandOver_(page, folders.Root, folders.Scratch) {
    Files_.Wants = [this](std::int32_t number, std::int64_t at) {
        Says(TextOf({{"want", number}, {"at", at}, {"count", ArrivingFiles::PartSize}}));
    };
    Files_.Arrived = [this](const ArrivingFile& file) { TakeWhole(file); };
    Files_.Failed = [this](const Text& problem) { Led_.Tell(problem); };
    page.loop.Listen(*this);
}

const std::vector<PageExchange::Row>& PageExchange::Rows() {
    static const std::vector<Row> rows = {
        {"file", &PageExchange::TakeFile},   {"part", &PageExchange::TakePart}, {"unread", &PageExchange::FailFile},
        {"reply", &PageExchange::Reply},     {"offer", &PageExchange::Accept},  {"give", &PageExchange::Give},
        {"saved", &PageExchange::TakeSaved},
    };
    return rows;
}

bool PageExchange::Take(const PageEvent& event) {
    const auto row =
        std::find_if(Rows().begin(), Rows().end(), [&](const Row& each) { return event.Kind == each.Kind; });
    if (row == Rows().end())
        return false;
    (this->*row->Does)(event);
    return true;
}

// --- files that come in ----------------------------------------------------------------------------------------------

/// What is too large is refused before the page sends it.
void PageExchange::TakeFile(const PageEvent& event) {
    ArrivingFile file{.Name = event.Words, .Use = event.Data, .Size = event.Bytes};
    if (file.Use.empty())
        file.Use = modQuorin::IsPackageName(file.Name) ? "driver" : EndsWith(file.Name, u".zip") ? "zip" : "";
    if (file.Use.empty())
        Led_.Tell(file.Name + u" is neither a driver package (.qvd) nor a zip file of a hand-over.");
    else if (file.Use == "driver" && !modQuorin::IsPackageName(file.Name))
        Led_.Tell(file.Name + u" is no driver package: its name does not end with .qvd.");
    else if (file.Use == "driver" && file.Size > static_cast<std::int64_t>(companion::LargestPackage))
        Led_.Tell(companion::TooLongForPackage(file.Name));
    else if (file.Size > LargestZip)
        Led_.Tell(file.Name + u" is too large for a page: more than 256 MB.");
    else
        Files_.Begin(event.Item, std::move(file));
}

void PageExchange::TakePart(const PageEvent& event) {
    Files_.TakePart(event.Item, event.Data);
}

void PageExchange::FailFile(const PageEvent& event) {
    Files_.Fail(event.Item, event.Words);
}

void PageExchange::TakeWhole(const ArrivingFile& file) {
    if (file.Use == "driver")
        Led_.AddPackage(file.Name, file.Bytes);
    else
        Zip_ = file;
}

/// From the first screen, which lists nothing: what other screens list may be another one afterwards.
void PageExchange::TakeZipIn() {
    Guide guide(Page_);
    if (!guide.GoTo(modQuorin::ScrMain))
        return;
    const ArrivingFile file = *std::exchange(Zip_, std::nullopt);
    const PageHandOver::Report report = HandOver_.TakeIn(modStringTools::ToBytes(file.Name), file.Bytes);
    LookAnew();
    Open({.Title = report.Title, .Words = report.Words, .BeginsAnew = report.IsBegun});
}

// --- files that go out -----------------------------------------------------------------------------------------------

void PageExchange::Give(const PageEvent& event) {
    if (event.Data != "zip")
        return GiveFile(event.Item, Download_.Make(event.Data));
    const InTheWay what = companion::WhatIsInTheWay(Page_.boxes.Current() != nullptr);
    if (what == InTheWay::Nothing)
        ZipGoes_ = event.Item;
    else
        GiveFile(event.Item,
                 {.Why = modStringTools::ToBytes(u"The data can be handed over " + companion::WhenFree(what) + u".")});
}

void PageExchange::GiveFile(std::int32_t request, const GivenFile& file) {
    Gives(TextOf({{"request", request},
                  {"name", file.Name},
                  {"type", file.Type},
                  {"words", Utf8(FromBytes(file.Words))},
                  {"why", Utf8(FromBytes(file.Why))}}),
          file.Bytes);
}

/// The person has the file. Only the zip file is remembered.
void PageExchange::TakeSaved(const PageEvent& event) {
    if (event.Item != ZipGiven_ || ZipGiven_ == 0)
        return;
    if (const std::string why = HandOver_.Remember(); !why.empty())
        return Led_.Tell(FromBytes(why));
    LookAnew();
}

// --- what is offered and asked ---------------------------------------------------------------------------------------

bool PageExchange::IsFree() const {
    return Page_.IsAtRest() && !Dialog_;
}

void PageExchange::Note(const Text&) {
}

void PageExchange::Show(const Text& problems) {
    Open({.Title = "Quorin", .Words = Utf8(problems)});
}

void PageExchange::Ask(const Text& question, ArrivalQuestion, std::function<void(bool)> answered) {
    Open({.Title = "Install a driver", .Words = Utf8(question), .Asks = true, .Answered = std::move(answered)});
}

void PageExchange::Open(Dialog dialog) {
    dialog.Number = ++Dialogs_;
    Dialog_ = std::move(dialog);
}

void PageExchange::Reply(const PageEvent& event) {
    if (!Dialog_ || Dialog_->Number != event.Item)
        return;
    const Dialog dialog = *std::exchange(Dialog_, std::nullopt);
    if (dialog.Answered)
        dialog.Answered(event.Yes);
}

void PageExchange::Accept(const PageEvent& event) {
    if (event.Words == companion::OfferSample)
        Led_.AddSample();
    else if (event.Words == companion::OfferNoHints)
        HintWasSeen_ = true;
    else if (event.Words == companion::OfferLater)
        NotHandedOver_ = 0;
    else if (event.Words == companion::OfferNotNow)
        DropWhatWaits();
}

void PageExchange::DropWhatWaits() {
    Led_.DropAll();
    Zip_.reset();
}

/// Returns what waits until the form is free; empty if nothing does.
Text PageExchange::WhatWaits() const {
    const bool isAsked = Page_.boxes.Current() != nullptr;
    const InTheWay what = companion::WhatIsInTheWay(isAsked);
    Text words = Led_.Offer(isAsked);
    if (Zip_ && what != InTheWay::Nothing)
        words += (words.empty() ? u"" : u" ") + (u"Take in " + Zip_->Name + u" " + companion::WhenFree(what) + u".");
    return words;
}

void PageExchange::RaiseNotices() {
    companion::Notices& notices = Page_.onlooker.notices;
    const bool isStart = companion::IsStartScreen();
    if (isStart && HasDriver_ == false && !HintWasSeen_)
        notices.Raise(HintOfNow());
    else
        notices.Withdraw(companion::AboutHint);
    if (isStart && NotHandedOver_ > 0)
        notices.Raise(HandOverOfNow(NotHandedOver_));
    else
        notices.Withdraw(companion::AboutHandOver);
}

// --- the steps -------------------------------------------------------------------------------------------------------

bool PageExchange::RaiseWhatIsPending() {
    if (Screens.CurrentScreen == 0 || !Says) // the form has not been started
        return false;
    if (Screens.CurrentScreen != SeenScreen_)
        SeenScreen_ = 0; // also if the form comes back to it before the next step
    Download_.Look();
    WasOpen_ = WasOpen_ || companion::RecordIsOpen();
    RaiseNotices();
    Json formats = Json::array();
    for (const DownloadFormat& format : Download_.Formats())
        formats.push_back({{"name", format.Name}, {"words", format.Words}});
    Json dialog = nullptr;
    if (Dialog_)
        dialog = {{"id", Dialog_->Number},
                  {"title", Utf8(FromBytes(Dialog_->Title))},
                  {"words", Utf8(FromBytes(Dialog_->Words))},
                  {"asks", Dialog_->Asks},
                  {"anew", Dialog_->BeginsAnew}};
    std::string state = TextOf({{"offer", Utf8(WhatWaits())},
                                {"dialog", dialog},
                                {"download", Utf8(FromBytes(Download_.Title()))},
                                {"formats", formats},
                                {"driver", HasDriver_.value_or(false)}});
    if (state != Shown_)
        Says(Shown_ = std::move(state));
    return false;
}

void PageExchange::LookAnew() {
    SeenScreen_ = 0;
    WasOpen_ = true; // the records are counted
}

/// Files are read only when another screen has come.
void PageExchange::LookAtScreen() {
    if (std::exchange(SeenScreen_, Screens.CurrentScreen) == Screens.CurrentScreen)
        return;
    HasDriver_ = !companion::DriversOfDevice().empty();
    if (companion::IsStartScreen() && std::exchange(WasOpen_, false))
        NotHandedOver_ = HandOver_.NotHandedOver();
}

void PageExchange::Step() {
    if (!IsFree())
        return;
    Led_.Step();
    if (IsFree() && companion::WhatIsInTheWay(false) == InTheWay::Nothing)
        StepOnFreeScreen();
}

void PageExchange::StepOnFreeScreen() {
    if (const auto request = std::exchange(ZipGoes_, std::nullopt)) {
        ZipGiven_ = *request;
        GiveFile(*request, HandOver_.Make());
    }
    if (Zip_ && !Led_.Any())
        TakeZipIn();
    LookAtScreen();
    RaiseWhatIsPending();
}

} // namespace apps
