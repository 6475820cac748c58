// SPDX-License-Identifier: MIT
#include "tests/system/window/picture_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>

namespace windowtest {
namespace {

using testing::HasSubstr;

constexpr int Pixels = 15; // the font size of a desktop's list

QImage Paper() {
    QImage picture(200, 60, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return picture;
}

QImage Words(const char* text, QPoint place = {10, 40}, QColor colour = Qt::black, int pixels = Pixels) {
    QImage picture = Paper();
    QPainter painter(&picture);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(place, QString::fromLatin1(text));
    return picture;
}

TEST(PictureComparison, HasNothingToSayOfTheSame) {
    EXPECT_EQ(Difference(Words("Moisture 24.5 %"), Words("Moisture 24.5 %")), "");
}

TEST(PictureComparison, OverlooksAPixelAndAPalerShade) {
    EXPECT_EQ(Difference(Words("Moisture 24.5 %"), Words("Moisture 24.5 %", {11, 40})), "");
    EXPECT_EQ(Difference(Words("Moisture 24.5 %"), Words("Moisture 24.5 %", {10, 40}, QColor(40, 40, 40))), "");
}

TEST(PictureComparison, SeesALetterThatIsAnotherOrMissing) {
    EXPECT_NE(Difference(Words("Moisture 24.5 %"), Words("Moisture 24.9 %")), "");
    EXPECT_NE(Difference(Words("Moisture 24.5 %"), Words("Moisture 24.5")), "");
    EXPECT_NE(Difference(Words("Moisture"), Words("Moistur")), "");
    EXPECT_NE(Difference(Words("Moistur"), Words("Moisture")), "");
}

TEST(PictureComparison, SeesTextThatIsElsewhereOrInOtherLetters) {
    EXPECT_NE(Difference(Words("Moisture"), Words("Moisture", {14, 40})), "");
    EXPECT_NE(Difference(Words("Moisture"), Words("Moisture", {10, 44})), "");
    EXPECT_NE(Difference(Words("Moisture"), Words("Moisture", {10, 40}, Qt::black, Pixels + 2)), "");
}

TEST(PictureComparison, SeesAnotherColour) {
    QImage blue = Paper();
    QPainter(&blue).fillRect(QRect(40, 20, 60, 20), QColor(0xC0, 0xE0, 0xFF));
    QImage orange = Paper();
    QPainter(&orange).fillRect(QRect(40, 20, 60, 20), QColor(0xFF, 0xE0, 0xC0));
    EXPECT_NE(Difference(blue, orange), "");
    EXPECT_NE(Difference(blue, Paper()), "");
}

TEST(PictureComparison, SeesALineThatIsNotThere) {
    QImage framed = Paper();
    QPainter painter(&framed);
    painter.setPen(QColor(0, 0xFF, 0));
    painter.drawRect(QRect(20, 20, 100, 20));
    EXPECT_THAT(Difference(framed, Paper()), HasSubstr("it differs from 16,16 to 127,47"));
}

TEST(PictureComparison, SeesAnotherSize) {
    EXPECT_EQ(Difference(Paper(), Paper().copy(0, 0, 200, 59)), "its size is 200x59 in place of 200x60");
    EXPECT_EQ(Difference(QImage(), Paper()), "its size is 200x60 in place of 0x0");
}

} // namespace
} // namespace windowtest
