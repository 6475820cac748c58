// SPDX-License-Identifier: MIT
// The program in an invisible window, with the lines outside of the form.
#pragma once

#include "apps/quorin/window_watch.h"
#include "tests/support/in_a_window.h"

#include <QLabel>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

namespace windowtest {

class WatchedWindow : public InAWindow {
protected:
    WatchedWindow() { Watch_.Attach(Device.Platform); }

    /// The state of the link, at the window's foot.
    std::string LinkLine() { return TextOf("linkState"); }
    /// The red line above it.
    std::string RedLine() { return TextOf("warning"); }
    /// Waits until the state of the link meets this. The window checks it a few times a second. Returns false after 20
    /// seconds.
    bool LinkLineMeets(const std::function<bool(const std::string&)>& wanted) {
        const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!wanted(LinkLine()) && std::chrono::steady_clock::now() < patience) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            Settle();
        }
        return wanted(LinkLine());
    }
    bool LinkLineBecomes(const std::string& text) {
        return LinkLineMeets([&text](const std::string& line) { return line == text; });
    }
    bool LinkLineBegins(const std::string& text) {
        return LinkLineMeets([&text](const std::string& line) { return line.rfind(text, 0) == 0; });
    }

    void PlayTone() { Watch_.TonePlayed(1046, 50); }

private:
    std::string TextOf(const char* name) {
        const QLabel* const label = Form().findChild<QLabel*>(QString::fromLatin1(name));
        return label == nullptr || label->isHidden() ? "" : label->accessibleName().toStdString();
    }

    quorin::WindowWatch Watch_;
};

} // namespace windowtest
