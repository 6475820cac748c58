// SPDX-License-Identifier: MIT
#include "apps/quorin/window_export.h"

#include "apps/quorin/export_preview.h"
#include "src/app/commands.h"
#include "src/drivers/selection.h"
#include "tests/support/in_a_window.h"
#include "tests/support/temporary_root.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTest>

#include <gmock/gmock.h>

namespace quorin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ExportOfTheWindow : public windowtest::InAWindow {
protected:
    ExportOfTheWindow() {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|North wall\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                         "Site|1||||site||\nMoisture|1||Moisture||moisture||\n");
        Put("qrn0001.txt", "Site|Moisture\nloft, east|24.50 %\ncellar|007\n");
        Export.Exporter.Program = QStringLiteral(QUORIN_PROGRAM);
        Export.Opener = [this](const std::string& path) {
            Opened = path;
            return HasOpener;
        };
    }
    backends::DeviceOptions Options() {
        backends::DeviceOptions options;
        options.Root = Device.Folder.Path();
        return options;
    }
    void OpenTheRecord() {
        for (const char16_t* command : {u"Start...", u"Ok", u"Open"})
            modQuorin::MenuEvent(command);
        Settle();
    }
    void OpenDialog() {
        Export.Open();
        WaitFor([this] { return State() != "Reading…"; });
    }
    QWidget* Dialog() {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("export"))
                return window;
        return nullptr;
    }
    std::string State() { return Dialog()->findChild<QLabel*>(QStringLiteral("exportState"))->text().toStdString(); }
    QTableWidget& Table() { return *Dialog()->findChild<QTableWidget*>(); }
    std::string Cell(int row, int column) {
        const QTableWidgetItem* const item = Table().item(row, column);
        return item == nullptr ? "no cell" : item->text().toStdString();
    }
    void Choose(const char* format) {
        auto* const formats = Dialog()->findChild<QComboBox*>();
        formats->setCurrentIndex(formats->findData(QString::fromLatin1(format)));
    }
    void Tick(int column, bool isWanted) {
        Dialog()->findChild<QListWidget*>()->item(column)->setCheckState(isWanted ? Qt::Checked : Qt::Unchecked);
    }
    void SetPath(const std::string& name) {
        Dialog()->findChild<QLineEdit*>()->setText(QString::fromStdString(Place.Path(name)));
    }
    QPushButton* Button(const char* words) {
        for (auto* const button : Dialog()->findChildren<QPushButton*>())
            if (button->text() == QString::fromUtf8(words))
                return button;
        return nullptr;
    }
    void Click(const char* words) {
        QTest::mouseClick(Button(words), Qt::LeftButton);
        WaitFor([this] { return !QString::fromStdString(State()).endsWith(QStringLiteral("ing…")); });
    }
    static void WaitFor(const std::function<bool()>& holds) { ASSERT_TRUE(QTest::qWaitFor(holds, 60'000)); }
    std::string Saved(const std::string& name) { return Place.Bytes(name); }

    TemporaryRoot Place;
    std::string Opened;
    bool HasOpener = true;
    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowExport Export{Device.Platform, Remembered, Options()};
};

TEST_F(ExportOfTheWindow, ShowsTheFirstRecordsOfTheOpenDownload) {
    OpenTheRecord();
    OpenDialog();
    EXPECT_EQ(Dialog()->findChild<QLabel*>(QStringLiteral("exportTitle"))->text().toStdString(),
              "qrn0001.txt. The record on the screen is in it as it was saved last.");
    EXPECT_EQ(Table().columnCount(), 3);
    EXPECT_EQ(Table().horizontalHeaderItem(1)->text(), QStringLiteral("moisture"));
    EXPECT_EQ(Cell(0, 0), "loft, east");
    EXPECT_EQ(Cell(0, 1), "24.50");
    EXPECT_EQ(Cell(0, 2), "%");
    EXPECT_EQ(Cell(1, 1), "007");
}

TEST_F(ExportOfTheWindow, SavesTheChosenColumns) {
    OpenTheRecord();
    OpenDialog();
    Tick(2, false);
    EXPECT_TRUE(Table().isColumnHidden(2));
    SetPath("out.csv");
    Click("&Save");
    EXPECT_THAT(State(), HasSubstr("Saved: " + Place.Path("out.csv")));
    EXPECT_THAT(State(), HasSubstr("moisture: 1 value is no number with a unit, kept as text"));
    EXPECT_EQ(Saved("out.csv"), "site,moisture\r\n\"loft, east\",24.50\r\ncellar,007\r\n");
}

TEST_F(ExportOfTheWindow, AsksBeforeItReplacesAFile) {
    Place.Put("out.csv", "mine");
    OpenTheRecord();
    OpenDialog();
    SetPath("out.csv");
    Click("&Save");
    EXPECT_EQ(State(), "There is a file of this name already.");
    EXPECT_EQ(Saved("out.csv"), "mine");
    QTest::keyClick(Dialog()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(State(), "") << "Esc takes the question back, and nothing else";
    ASSERT_TRUE(Dialog()->isVisible());
    Click("&Save");
    Click("&Replace it");
    EXPECT_THAT(Saved("out.csv"), HasSubstr("loft, east"));
}

TEST_F(ExportOfTheWindow, SaysWhyAFileIsNotThere) {
    OpenTheRecord();
    OpenDialog();
    SetPath("no/such/folder.csv");
    Click("&Save");
    EXPECT_THAT(State(), HasSubstr("can't write " + Place.Path("no/such/folder.csv")));
}

TEST_F(ExportOfTheWindow, CopiesATableForSpreadsheets) {
    OpenTheRecord();
    OpenDialog();
    Click("&Copy as table");
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("site\tmoisture\tmoisture_unit\r\nloft, east\t24.50\t%\r\ncellar\t007\t\r\n"));
    EXPECT_THAT(State(), HasSubstr("The table is in the clipboard."));
}

TEST_F(ExportOfTheWindow, OpensACopyInAnotherProgram) {
    OpenTheRecord();
    OpenDialog();
    Choose("jsonl");
    Click("&Open in…");
    EXPECT_THAT(Opened, HasSubstr("/qrn0001.jsonl"));
    EXPECT_THAT(State(), HasSubstr("Opened a copy."));
    HasOpener = false;
    Click("&Open in…");
    EXPECT_EQ(State(), "The desktop has no program for this format. Save the file, and open it from there.");
}

TEST_F(ExportOfTheWindow, RemembersTheLastChoice) {
    OpenTheRecord();
    OpenDialog();
    Choose("jsonl");
    Tick(0, false);
    Click("&Copy as table");
    Dialog()->close();
    OpenDialog();
    EXPECT_EQ(Dialog()->findChild<QComboBox*>()->currentData().toString(), QStringLiteral("jsonl"));
    EXPECT_TRUE(Table().isColumnHidden(0));
    EXPECT_FALSE(Table().isColumnHidden(1));
    EXPECT_TRUE(Dialog()->findChild<QLineEdit*>()->text().endsWith(QStringLiteral("/qrn0001.jsonl")));
}

TEST_F(ExportOfTheWindow, TakesTheDownloadThatIsSelectedInTheList) {
    for (const char16_t* command : {u"Start...", u"Ok"})
        modQuorin::MenuEvent(command);
    Settle();
    OpenDialog();
    EXPECT_EQ(Cell(0, 0), "loft, east");
    EXPECT_EQ(Dialog()->findChild<QLabel*>(QStringLiteral("exportTitle"))->text(), QStringLiteral("qrn0001.txt"));
    EXPECT_EQ(Dialog()->findChild<QComboBox*>()->findData(QStringLiteral("svg")), -1) << "a plot is no table";
}

TEST_F(ExportOfTheWindow, KeepsTheDownloadThatItShows) {
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|-odd.txt|20070301|\nMeter|qrn0001.txt|20070301|\n");
    Put("-odd.txt", "Site|Moisture\nattic|1 %\n");
    for (const char16_t* command : {u"Start...", u"Ok"})
        modQuorin::MenuEvent(command);
    Settle();
    OpenDialog();
    EXPECT_EQ(Cell(0, 0), "attic") << State();
    modQuorin::Selection.SelectedDownload = u"qrn0001.txt"; // the form goes on
    SetPath("out.csv");
    Click("&Save");
    EXPECT_THAT(Saved("out.csv"), HasSubstr("attic"));
}

TEST_F(ExportOfTheWindow, HasTheColumnsThatWereNotLeftOutOfAnotherDriver) {
    Remembered.Save("ExportLeftOut", "site\nheat");
    OpenTheRecord();
    OpenDialog();
    EXPECT_TRUE(Table().isColumnHidden(0));
    EXPECT_FALSE(Table().isColumnHidden(1));
    EXPECT_FALSE(Table().isColumnHidden(2));
}

TEST_F(ExportOfTheWindow, SaysThatNoDownloadIsOpen) {
    Settle();
    Export.Open();
    EXPECT_THAT(Dialog()->findChild<QLabel*>(QStringLiteral("exportTitle"))->text().toStdString(),
                HasSubstr("No download is open"));
    EXPECT_FALSE(Button("&Save")->isEnabled());
}

TEST_F(ExportOfTheWindow, SaysThatItsProgramCantBeStarted) {
    Export.Exporter.Program = QStringLiteral("/no/such/program");
    OpenTheRecord();
    OpenDialog();
    EXPECT_EQ(State(), "The export has failed.");
}

TEST(PreviewOfAnExport, HasTenRecordsAndEachDigit) {
    std::string lines;
    for (int record = 0; record < 12; ++record)
        lines += R"({"b":1.10,"a":null,"c":"x|\"y"})"
                 "\n";
    const auto preview = PreviewOf(lines + R"({"b":1)");
    EXPECT_THAT(preview.Columns, ElementsAre("b", "a", "c"));
    EXPECT_EQ(preview.Rows.size(), 10U);
    EXPECT_THAT(preview.Rows.front(), ElementsAre("1.10", "", "x|\"y"));
    EXPECT_EQ(PreviewOf("").Why, "The download has no records yet.");
}

} // namespace
} // namespace quorin
