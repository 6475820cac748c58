// SPDX-License-Identifier: MIT
// The least that shows a window with something to read in it: what Qt itself needs to come up. The window is as large
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
