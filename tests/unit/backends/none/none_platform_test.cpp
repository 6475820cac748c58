// SPDX-License-Identifier: MIT
// The whole application runs on the template of a back-end: a new back-end begins with a program that runs.
#include "backends/none/none_platform.h"

#include "src/app/commands.h"
#include "src/app/form.h"
#include "src/app/start_up.h"
#include "src/view/screen_table.h"

#include <gtest/gtest.h>

namespace backends::none {
namespace {

using namespace modQuorin;

class EmptyBackEnd : public testing::Test {
protected:
    EmptyBackEnd() {
        Install(&Platform_.Record());
        ResetModules();
        frmQuorin::Form_Load();
        frmQuorin::Form_Activate();
    }
    NonePlatform Platform_;
};

TEST_F(EmptyBackEnd, ShowsTheFirstScreen) {
    EXPECT_EQ(Screens.CurrentScreen, ScrMain);
    EXPECT_EQ(Platform_.Record().mnuButtonO1[0]->Caption(), u"Start...");
}

TEST_F(EmptyBackEnd, GoesFromScreenToScreen) {
    MenuEvent(u"Preferences...");
    EXPECT_EQ(Screens.CurrentScreen, ScrPreferences);
    GoBack();
    EXPECT_EQ(Screens.CurrentScreen, ScrMain);
}

TEST_F(EmptyBackEnd, EndsTheProgramByBackOnTheFirstScreen) {
    EXPECT_EXIT(GoBack(), testing::ExitedWithCode(0), "");
}

TEST_F(EmptyBackEnd, TellsAFailureAndEndsWithOne) {
    EXPECT_EXIT(RuntimeFailure(u"no such thing"), testing::ExitedWithCode(1), "no such thing");
}

} // namespace
} // namespace backends::none
