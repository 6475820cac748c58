// SPDX-License-Identifier: MIT
// Runs the suites of a form on the back-end of the page, with measures as a page gives them.
#include "tests/conformance/form_in_hand.h"
#include "tests/support/page_person.h"

#include "src/app/start_up.h"

#include <deque>

namespace conformance {

namespace {

backends::DeviceOptions OnFolder(const support::TemporaryFolder& folder) {
    backends::DeviceOptions options;
    options.Root = folder.Path().string();
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    return options;
}

class PageDevice final : backends::CommandSource {
public:
    PageDevice() {
        platform::Install(&Platform.record);
        modQuorin::ResetModules();
        Platform.Changed = [](const std::string&) {};
    }
    ~PageDevice() override { modQuorin::ResetModules(); }

    void WillDo(std::function<void()> step) { Steps_.push_back(std::move(step)); }

    const support::TemporaryFolder Folder;
    support::Record Did;
    backends::HostDevice Host{OnFolder(Folder)};
    backends::web::PageFonts Fonts{
        {.Ascent = 0.93, .Descent = 0.24, .Other = 0.6, .Ranges = {{.First = u'i', .Widths = {0.3}}}}};
    backends::web::WebPlatform Platform{Host, Fonts, *this, Did};
    webtest::PagePerson Hand{Platform};

private:
    void AboutToWait(int) override {}
    bool HasCommand() override { return !Steps_.empty(); }
    bool Ended() override { return true; }
    void TakeInput() override {}
    void RunCommand() override {
        const std::function<void()> step = std::move(Steps_.front());
        Steps_.pop_front();
        step();
    }

    std::deque<std::function<void()>> Steps_;
};

class WebForm final : public FormInHand<PageDevice> {
public:
    void WhileABoxIsOpen(std::function<void()> step, BoxAnswer answer) override {
        Of.WillDo([this, step = std::move(step), answer] {
            step();
            backends::Answer(Of.Hand, answer);
        });
    }
};

std::unique_ptr<FormUnderTest> MadeOnAPage() {
    return std::make_unique<WebForm>();
}

const FormFactory OnAPage = {"web", MadeOnAPage};

} // namespace

QUORIN_RUN_FORM_SUITES(OnAPage, OnAPage);

} // namespace conformance
