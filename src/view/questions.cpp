// SPDX-License-Identifier: MIT
#include "src/view/questions.h"

#include "src/view/input_fields.h"
#include "src/view/platform/application.h"
#include "src/view/platform/platform.h"

namespace modPDAUI {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

BoxAnswer Show(const Text& text, BoxButtons buttons, BoxIcon icon) {
    const BoxAnswer answer = platform::Device().messageBox.Show(text, buttons, icon, modQuorin::ApplicationName);
    FocusPromptField(); // a box over a prompt may have taken the focus
    return answer;
}

bool AskDestructive(const Text& question) {
    return Show(question, BoxButtons::YesNo, BoxIcon::Question) == BoxAnswer::Yes;
}

} // namespace

void Tell(const Text& message) {
    Show(message, BoxButtons::Ok, BoxIcon::None);
}

bool Ask(const Text& question) {
    return Show(question, BoxButtons::YesNo, BoxIcon::None) == BoxAnswer::Yes;
}

bool AskTwice(const Text& question) {
    return AskDestructive(question) && AskDestructive(u"Are you sure?");
}

} // namespace modPDAUI
