// SPDX-License-Identifier: MIT
// The smallest program that shows a window with a text: the time that Qt itself needs to start. The window is as large
// as the product's.
#include <QApplication>
#include <QLabel>

int main(int count, char** words) {
    QApplication application(count, words);
    QLabel window(QStringLiteral("Quorin"));
    window.resize(640, 480);
    window.show();
    return QApplication::exec();
}
