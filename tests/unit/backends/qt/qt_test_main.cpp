// SPDX-License-Identifier: MIT
// Tests of the window on an invisible screen: one QApplication for all of them.
#include "tests/support/in_a_window.h"
#include "tests/support/locale.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // what this screen lacks
    testing::InitGoogleTest(&count, words);
    if (!support::TakeLocale())
        return 1;
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    if (count > 1 && std::strcmp(words[1], "--form-on-this-screen") == 0) {
        std::puts(windowtest::FormOnThisScreen().c_str());
        return 0;
    }
    return RUN_ALL_TESTS();
}
