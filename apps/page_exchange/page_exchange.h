// SPDX-License-Identifier: MIT
// What comes in and goes out by the page: driver packages, the data as a zip file, downloads. The page draws the state
// and the dialog that it is shown, and keeps nothing of its own.
#pragma once

#include "apps/arrivals/led_arrivals.h"
#include "apps/page_exchange/arriving_files.h"
#include "apps/page_exchange/page_download.h"
#include "apps/page_exchange/page_hand_over.h"
#include "backends/web/page_events.h"
#include "backends/web/web_platform.h"

#include <functional>
#include <optional>
#include <string>

namespace apps {

struct ExchangeFolders {
    std::string Root;    ///< of the device
    std::string Scratch; ///< for files on their way, outside of the root folder
};

class PageExchange final : public backends::EventSource, private ArrivalTalk {
public:
    PageExchange(backends::web::WebPlatform& page, const ExchangeFolders& folders);

    /// Takes what a person has done, if it belongs here. May be called at any time.
    bool Take(const backends::web::PageEvent& event);
    /// Does the next thing that has been asked for, if the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step();
    /// Tells a person what went wrong, once no question is open.
    void Tell(const Text& problem) { Led_.Tell(problem); }
    /// The data was changed by something else than the form.
    void LookAnew();
    /// Shows the page the state, if it has changed.
    bool RaiseWhatIsPending() override;

    /// Send a JSON object to the page; the second one with the bytes of a file.
    std::function<void(const std::string& json)> Says;
    std::function<void(const std::string& json, const std::string& bytes)> Gives;

private:
    /// A dialog of the page, beside the form's boxes.
    struct Dialog {
        std::int32_t Number = 0;
        std::string Title;
        std::string Words;
        bool Asks = false;
        bool BeginsAnew = false; ///< the page is loaded anew: its spare files may be used up
        std::function<void(bool)> Answered = {};
    };
    struct Row {
        const char* Kind;
        void (PageExchange::*Does)(const backends::web::PageEvent& event);
    };
    static const std::vector<Row>& Rows();

    bool IsFree() const override;
    void Note(const Text& problem) override;
    void Show(const Text& problems) override;
    void Ask(const Text& question, ArrivalQuestion about, std::function<void(bool)> answered) override;
    void Open(Dialog dialog);

    void TakeFile(const backends::web::PageEvent& event);
    void TakePart(const backends::web::PageEvent& event);
    void FailFile(const backends::web::PageEvent& event);
    void Reply(const backends::web::PageEvent& event);
    void Accept(const backends::web::PageEvent& event);
    void Give(const backends::web::PageEvent& event);
    void TakeSaved(const backends::web::PageEvent& event);

    void TakeWhole(const ArrivingFile& file);
    void GiveFile(std::int32_t request, const GivenFile& file);
    void StepOnFreeScreen();
    void LookAtScreen();
    void TakeZipIn();
    Text WhatWaits() const;
    void DropWhatWaits();
    void RaiseNotices();

    backends::web::WebPlatform& Page_;
    LedArrivals Led_;
    ArrivingFiles Files_;
    PageDownload Download_;
    PageHandOver HandOver_;

    std::optional<Dialog> Dialog_;
    std::int32_t Dialogs_ = 0;            ///< opened so far
    std::optional<ArrivingFile> Zip_;     ///< waits to be taken in
    std::optional<std::int32_t> ZipGoes_; ///< the number of the request for the zip file
    std::int32_t ZipGiven_ = 0;           ///< the number of the request that has got it
    modQuorin::ScreenId SeenScreen_ = 0;  ///< a free one, when it was looked at last; 0 for none
    std::optional<bool> HasDriver_;       ///< once it was looked for
    bool WasOpen_ = true;                 ///< a download, since the records were counted last
    std::uint64_t NotHandedOver_ = 0;
    bool HintWasSeen_ = false;
    std::string Shown_;
};

} // namespace apps
