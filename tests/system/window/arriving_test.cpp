// SPDX-License-Identifier: MIT
// Files that a person gives to the window: the form installs a package and opens a download, once it is free.
#include "apps/quorin/arriving.h"
#include "apps/quorin/package_watch.h"
#include "apps/quorin/window_entries.h"
#include "src/app/commands.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include <sys/stat.h>

namespace windowtest {
namespace {

using namespace modQuorin;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string Meter =
    "New Meter|new.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nA|1||A||||\n";
/// A package with which nothing is wrong.
const std::string SecondPackage =
    "Second|second.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nA|1||A||||\n";

class ArrivingFiles : public InAWindow {
protected:
    explicit ArrivingFiles(const DeviceOptions& options = OfType(0)) : InAWindow(options) {
        Data.RaiseWhatIsPending();
        Outside.Put("meter.qvd", Meter);
    }
    std::string PathOf(const std::string& name) { return (Outside.Path() / name).string(); }
    void Arrive(const std::string& name) { Files.Arrive({PathOf(name)}, "/"); }
    /// Goes on as the program does between two events.
    void Step() {
        Settle();
        Files.Step();
        Settle();
    }
    /// The form's own box is answered while the form is led.
    void StepTo(const std::string& message) {
        Device.WillDo([this] { Device.Hand.PressBoxButton(platform::BoxAnswer::Ok); });
        Step();
        EXPECT_FALSE(Device.HasStepsLeft());
        EXPECT_THAT(Device.Did.Messages(), testing::Contains(modStringTools::FromBytes(message)));
    }
    QMessageBox* Box(const char* name) {
        auto* const box = Form().findChild<QMessageBox*>(QString::fromLatin1(name));
        return box == nullptr || !box->isVisible() ? nullptr : box;
    }
    std::string Told() {
        const QMessageBox* const box = Box("arrivalBox");
        return box == nullptr ? "" : box->text().toStdString();
    }
    QWidget& Bar() { return *Form().findChild<QWidget*>(QStringLiteral("offer")); }
    std::string Offered() {
        return Bar().isVisible() ? Bar().findChild<QLabel*>()->text().toStdString() : std::string();
    }
    /// Drops files on a widget of the window. Returns whether they were accepted.
    bool Drop(QWidget& target, const std::vector<std::string>& names) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& name : names)
            urls.push_back(QUrl::fromLocalFile(QString::fromStdString(PathOf(name))));
        data.setUrls(urls);
        QDragEnterEvent enters(QPoint(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        enters.setAccepted(false);
        QCoreApplication::sendEvent(&target, &enters);
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        drop.setAccepted(false);
        QCoreApplication::sendEvent(&target, &drop);
        return enters.isAccepted() && drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
    }

    const support::TemporaryFolder Outside;
    quorin::DataFolder Data{Device.Platform, Device.Folder.Path().string()};
    quorin::Arriving Files{Device.Platform, Data};
};

TEST_F(ArrivingFiles, AreInstalledByTheFormWhichGoesBackThen) {
    for (const char16_t* const screen : {u"", u"Start...", u"inf editor...", u"Preferences..."}) {
        Put("drivers.txt", "NAME|INFFILE\n");
        if (*screen != 0)
            MenuEvent(screen);
        Settle();
        const ScreenId before = Screen();
        Arrive("meter.qvd");
        StepTo("Driver installed");
        EXPECT_EQ(Screen(), before) << ScreenRow(before).Name;
        EXPECT_EQ(File("meter.qvd"), Meter);
        EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nNew Meter|new.txt\n");
        if (Screen() != ScrMain)
            MenuEvent(u"Back");
    }
}

TEST_F(ArrivingFiles, AreListedOnTheScreenOfDriversThen) {
    MenuEvent(u"Start...");
    Arrive("meter.qvd");
    StepTo("Driver installed");
    Repaint();
    EXPECT_EQ(Cell(0), u"New Meter");
}

TEST_F(ArrivingFiles, LeadFromAListBackToThePreferences) {
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Repaint();
    Arrive("meter.qvd");
    StepTo("Driver installed");
    EXPECT_EQ(Screen(), ScrPreferences);
}

TEST_F(ArrivingFiles, StayOnAddDriverIfThatIsOnTheScreen) {
    Put("another.qvd", "Another|another.txt\n");
    MenuEvent(u"Add Driver...");
    Repaint();
    Arrive("meter.qvd");
    StepTo("Driver installed");
    EXPECT_EQ(Screen(), ScrAddDriver);
    EXPECT_EQ(Selection.SelectedPackage, u".\\Quorin\\meter.qvd");
    MenuEvent(u"Back");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(ArrivingFiles, AreRefusedByTheFormAsEver) {
    Put("drivers.txt", "NAME|INFFILE\nNEW METER|old.txt\n");
    Arrive("meter.qvd");
    StepTo("Driver already exists");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(ArrivingFiles, AreInstalledOneAfterTheOther) {
    Outside.Put("second.qvd", SecondPackage);
    Files.Arrive({PathOf("meter.qvd"), PathOf("second.qvd")}, "/");
    StepTo("Driver installed");
    StepTo("Driver installed");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nNew Meter|new.txt\nSecond|second.txt\n");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(ArrivingFiles, AreFoundFromTheFolderOfTheCommandLine) {
    Files.Arrive({"meter.qvd"}, Outside.Path().string());
    StepTo("Driver installed");
}

TEST_F(ArrivingFiles, WithFaultsAreInstalledOnlyAfterAQuestion) {
    Put("drivers.txt", "NAME|INFFILE\nOther|other.txt\n");
    Outside.Put("odd.qvd", "Odd|other.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                           "A|1||A||||\nB|2||B||||\n");
    Arrive("odd.qvd");
    Step();
    ASSERT_NE(Box("checkBox"), nullptr);
    EXPECT_EQ(
        Box("checkBox")->text().toStdString(),
        "Something is wrong with odd.qvd:\n\n"
        "line 1, column 5: the inf file would replace that of the installed driver \"Other\"\n"
        "line 4, column 3: VISIBLE \"2\" counts as 0: only 1 is yes\n"
        "line 4, column 3: one of the first two fields is hidden, and with it INFFILE of a driver after a download "
        "was open\n\nInstall it all the same?");
    QTest::keyClick(Box("checkBox"), Qt::Key_Return); // the safe answer
    Step();
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_FALSE(Device.Folder.Has("Quorin/odd.qvd"));

    Arrive("odd.qvd");
    Step();
    ASSERT_NE(Box("checkBox"), nullptr);
    Box("checkBox")->button(QMessageBox::Yes)->click();
    StepTo("Driver installed");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nOther|other.txt\nOdd|other.txt\n");
}

TEST_F(ArrivingFiles, WithManyFaultsNameTenOfThem) {
    std::string rows;
    for (int i = 0; i < 13; ++i)
        rows += "F" + std::to_string(i) + "|1||R" + std::to_string(i) + "|green|||\n";
    Outside.Put("odd.qvd", "Odd|odd.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n" + rows);
    Arrive("odd.qvd");
    Step();
    ASSERT_NE(Box("checkBox"), nullptr);
    const std::string text = Box("checkBox")->text().toStdString();
    EXPECT_THAT(text, HasSubstr("line 12, column "));
    EXPECT_THAT(text, testing::Not(HasSubstr("line 13, ")));
    EXPECT_THAT(text, HasSubstr("\nand 3 more\n\nInstall it all the same?"));
}

TEST_F(ArrivingFiles, WithNotesAloneAreInstalledUnasked) {
    Outside.Put("noted.qvd", "Noted|noted.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|DATATYPE|FORMULA\nA|1||A|||\n");
    Arrive("noted.qvd");
    StepTo("Driver installed");
}

TEST_F(ArrivingFiles, LeadBackAlsoIfTheLastOneIsDeclined) {
    Outside.Put("odd.qvd", "Odd|odd.txt\nH\n");
    Files.Arrive({PathOf("meter.qvd"), PathOf("odd.qvd")}, "/");
    StepTo("Driver installed");
    Step();
    ASSERT_NE(Box("checkBox"), nullptr);
    QTest::keyClick(Box("checkBox"), Qt::Key_Return);
    Step();
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(ArrivingFiles, ReplaceAnotherPackageOnlyAfterAQuestion) {
    Put("meter.qvd", "Old|old.txt\n");
    Arrive("meter.qvd");
    Step();
    ASSERT_NE(Box("replaceBox"), nullptr);
    EXPECT_EQ(Box("replaceBox")->text().toStdString(),
              "The data folder has a meter.qvd already, with another content. Replace it?");
    QTest::keyClick(Box("replaceBox"), Qt::Key_Return); // the safe answer
    Step();
    EXPECT_EQ(File("meter.qvd"), "Old|old.txt\n");
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_THAT(Device.Did.Messages(), IsEmpty());

    Arrive("meter.qvd");
    Step();
    ASSERT_NE(Box("replaceBox"), nullptr);
    Box("replaceBox")->button(QMessageBox::Yes)->click();
    StepTo("Driver installed");
    EXPECT_EQ(File("meter.qvd"), Meter);
}

TEST_F(ArrivingFiles, OfTheSameContentAreNotWrittenAgain) {
    Put("meter.qvd", Meter);
    const auto path = Device.Folder.Path() / "Quorin/meter.qvd";
    const auto before = std::filesystem::last_write_time(path) - std::chrono::hours(1);
    std::filesystem::last_write_time(path, before);
    Files.Arrive({path.string()}, "/");
    StepTo("Driver installed");
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST_F(ArrivingFiles, ThatAreNoneAreToldInABox) {
    Outside.Put("binary.qvd", std::string("\x89PNG\0|", 6));
    Outside.Put("large.qvd", Meter + std::string(100 << 20, 'x'));
    Outside.Put("notes.txt", "text");
    std::filesystem::create_directory(PathOf("folder.qvd"));
    ASSERT_EQ(::mkfifo(PathOf("pipe.qvd").c_str(), 0600), 0);
    const std::pair<const char*, std::string> rows[] = {
        {"binary.qvd", "binary.qvd is no driver package: "},
        {"large.qvd", PathOf("large.qvd") + " can't be read: it is larger than 1 MB."},
        {"folder.qvd", PathOf("folder.qvd") + " can't be read: it is a folder."},
        {"pipe.qvd", PathOf("pipe.qvd") + " can't be read: it is no plain file."},
        {"missing.qvd", PathOf("missing.qvd") + " can't be read: it does not exist."},
        {"notes.txt", PathOf("notes.txt") + " is neither a driver package (.qvd) nor a file of the data folder, " +
                          Device.Folder.Path().string() + "/Quorin."},
        {"", PathOf("") + " is a folder."},
    };
    for (const auto& [name, words] : rows) {
        testing::internal::CaptureStderr();
        Arrive(name);
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("quorin: " + words));
        Step();
        EXPECT_THAT(Told(), HasSubstr(words));
        ASSERT_NE(Box("arrivalBox"), nullptr) << name;
        Box("arrivalBox")->button(QMessageBox::Ok)->click();
        Step();
        EXPECT_EQ(Told(), "");
    }
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_TRUE(std::filesystem::is_empty(Device.Folder.Path() / "Quorin"));
}

TEST_F(ArrivingFiles, ThatCanNotBeStoredAreToldInABox) {
    Arrive("meter.qvd");
    Device.Host.faults.FailNext(-1);
    Step();
    Step();
    Device.Host.faults.FailNext(0);
    EXPECT_EQ(Told(), "meter.qvd can't be put into the data folder: the disk is full.");
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_TRUE(std::filesystem::is_empty(Device.Folder.Path() / "Quorin"));
}

TEST_F(ArrivingFiles, WaitForAnAnswerToAQuestion) {
    AskInABox(platform::BoxButtons::Ok, [this] {
        Arrive("meter.qvd");
        Step();
        EXPECT_EQ(Offered(), "Install meter.qvd when this question is answered.");
        Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
    });
    StepTo("Driver installed");
    EXPECT_EQ(Offered(), "");
}

TEST_F(ArrivingFiles, WaitWhileThePointerIsDown) {
    MenuEvent(u"Preferences...");
    Repaint();
    Arrive("meter.qvd");
    Down(Grid(), Middle(0));
    Step();
    EXPECT_EQ(Screen(), ScrPreferences);
    EXPECT_FALSE(Device.Folder.Has("Quorin/meter.qvd"));
    Up(Grid(), Middle(0)); // on "Zoom"
    StepTo("Driver installed");
}

// While a record is on the screen.

class ArrivingAtARecord : public ArrivingFiles {
protected:
    ArrivingAtARecord() {
        SaveSetting(u"ComPort", u"Com1");
        OpenRecord();
        Pass(600);
    }
};

TEST_F(ArrivingAtARecord, IsOfferedForLaterAndTheLinkStaysUp) {
    ASSERT_TRUE(modBluetooth::Ports.LinkOpen);
    Arrive("meter.qvd");
    Step();
    EXPECT_EQ(Offered(), "Install meter.qvd when this record is done.");
    EXPECT_TRUE(modBluetooth::Ports.LinkOpen);
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_FALSE(Device.Folder.Has("Quorin/meter.qvd"));
    MenuEvent(u"Back");
    Step();
    EXPECT_EQ(Offered(), "Install meter.qvd when this screen is left.");
    MenuEvent(u"Back");
    StepTo("Driver installed");
    EXPECT_EQ(Offered(), "");
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(ArrivingAtARecord, IsCalledOff) {
    Arrive("meter.qvd");
    Step();
    const auto* const focus = Holder();
    auto* const button = Bar().findChild<QPushButton*>();
    Click(*button, button->rect().center());
    Step();
    EXPECT_EQ(Offered(), "");
    EXPECT_EQ(Holder(), focus);
    MenuEvent(u"Back");
    MenuEvent(u"Back");
    Step();
    EXPECT_EQ(Screen(), ScrDrivers);
    EXPECT_FALSE(Device.Folder.Has("Quorin/meter.qvd"));
}

TEST_F(ArrivingAtARecord, IsCalledOffByKeysAlone) {
    Arrive("meter.qvd");
    Step();
    Press(Qt::Key_N, Qt::AltModifier);
    QTest::qWait(200); // the button is seen to go down and up
    Step();
    EXPECT_EQ(Offered(), "");
}

TEST_F(ArrivingAtARecord, IsTakenAlsoWhereAFieldIsOpen) {
    Tap(2, 1);
    ASSERT_TRUE(Field().Visible());
    const Text typed = Field().Contents();
    EXPECT_TRUE(Drop(Line(), {"meter.qvd"}));
    Step();
    EXPECT_EQ(Offered(), "Install meter.qvd when this record is done.");
    EXPECT_EQ(Field().Contents(), typed);
}

// A drop, and the dialog.

TEST_F(ArrivingFiles, AreTakenWhereverTheyAreDropped) {
    Outside.Put("second.qvd", SecondPackage);
    EXPECT_TRUE(Drop(Form(), {"meter.qvd"}));
    StepTo("Driver installed");
    EXPECT_TRUE(Drop(Grid(), {"second.qvd"}));
    StepTo("Driver installed");
    EXPECT_TRUE(Form().acceptDrops());
}

TEST_F(ArrivingFiles, AreNoTextThatIsDropped) {
    QMimeData data;
    data.setText(QStringLiteral("meter.qvd"));
    QDragEnterEvent enters(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enters.setAccepted(false);
    QCoreApplication::sendEvent(&Form(), &enters);
    EXPECT_FALSE(enters.isAccepted());
}

TEST_F(ArrivingFiles, AreChosenInADialog) {
    quorin::WindowSettings remembered((Device.Folder.Path() / "window.ini").string());
    quorin::WindowPorts ports(Device.Platform, remembered, [] { return false; });
    quorin::WindowHints hints(Device.Platform, remembered, [] { return std::string(); });
    quorin::WindowExport exports(Device.Platform, remembered, {});
    quorin::WindowHandOver handOver(Device.Platform, remembered, {}, "");
    quorin::WindowHelp help(Device.Platform, Data, {});
    quorin::WindowZoom zoom(Device.Platform, remembered, 1);
    quorin::FillWindowMenu(Device.Platform, Data, Files, ports, hints, exports, handOver, help, zoom);
    Press(Qt::Key_O, Qt::ControlModifier);
    auto* const dialog = Form().findChild<QFileDialog*>(QStringLiteral("packageDialog"));
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    Arrive("meter.qvd");
    Step();
    EXPECT_EQ(Screen(), ScrMain) << "nothing is led under a dialog";
    Outside.Put("second.qvd", SecondPackage);
    Q_EMIT dialog->filesSelected({QString::fromStdString(PathOf("second.qvd"))});
    static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    StepTo("Driver installed");
    StepTo("Driver installed");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nNew Meter|new.txt\nSecond|second.txt\n");
}

// A download.

class ArrivingDownload : public ArrivingFiles {
protected:
    ArrivingDownload() {
        Put("drivers.txt", "NAME|INFFILE\nOther|other.txt\nMeter|meter.txt\nEmpty|none.txt\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nOther|qrn0001.txt|20070301|\nMeter|qrn0002.txt|20070301|\n"
                           "Meter|qrn0003.txt|20070301|North wall\nEmpty|qrn0004.txt|20070301|\n");
        Put("qrn0003.txt", "Place\nhere\n");
    }
    void Open(const std::string& name) {
        Files.Arrive({name}, Outside.Path().string());
        Step();
        Repaint();
    }
};

TEST_F(ArrivingDownload, IsOpenedWithItsDriver) {
    for (const std::string& name :
         {std::string("North wall"), std::string("qrn0003.txt"), (Device.Folder.Path() / "Quorin/qrn0003.txt").string(),
          (Device.Folder.Path() / "Quorin/../Quorin/qrn0003.txt").string()}) {
        Open(name);
        EXPECT_EQ(Screen(), ScrInfRecord) << name;
        EXPECT_EQ(Selection.SelectedDriver, u"Meter");
        EXPECT_EQ(Cell(0, 1), u"here");
        for (int back = 0; back < 3; ++back)
            MenuEvent(u"Back");
        ASSERT_EQ(Screen(), ScrMain);
    }
}

TEST_F(ArrivingDownload, IsOpenedAfterThePackagesOfTheSameLine) {
    Files.Arrive({"North wall", PathOf("meter.qvd")}, "/");
    StepTo("Driver installed");
    Step();
    EXPECT_EQ(Screen(), ScrInfRecord);
}

TEST_F(ArrivingDownload, IsRefusedInABox) {
    Open("South wall");
    Step();
    EXPECT_EQ(Told(), "There is no download South wall.");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(ArrivingDownload, IsToldIfTheFormDoesNotOpenIt) {
    Open("qrn0004.txt");
    Step();
    EXPECT_EQ(Told(), "qrn0004.txt could not be opened with the driver Empty.");
}

// The list of packages while it is on the screen.

class ShownPackages : public ArrivingFiles {
protected:
    ShownPackages() {
        Put("b.qvd", "B|b.txt\n");
        MenuEvent(u"Add Driver...");
        Repaint();
        Look(0);
    }
    void Look(std::int64_t later) {
        Device.Platform.loop.Jump(later);
        Packages.Look();
        Repaint();
    }
    quorin::PackageWatch Packages{Device.Platform, Device.Folder.Path().string()};
};

TEST_F(ShownPackages, GrowByOneThatArrives) {
    Look(1000);
    Put("a.qvd", "A|a.txt\n");
    Look(500);
    EXPECT_EQ(Main().Rows(), 1) << "one look a second";
    Look(500);
    ASSERT_EQ(Main().Rows(), 2);
    EXPECT_EQ(Cell(0), u".\\Quorin\\a.qvd");
    EXPECT_EQ(Selection.SelectedPackage, u".\\Quorin\\b.qvd");
}

TEST_F(ShownPackages, AreNotListedAgainWhileNoFolderHasChanged) {
    const auto folder = Device.Folder.Path() / "Quorin";
    const auto old = std::filesystem::last_write_time(folder) - std::chrono::hours(1);
    for (const auto& each : {folder, Device.Folder.Path()})
        std::filesystem::last_write_time(each, old);
    Look(1000);
    Put("a.qvd", "A|a.txt\n");
    for (const auto& each : {folder, Device.Folder.Path()})
        std::filesystem::last_write_time(each, old);
    Look(1000);
    EXPECT_EQ(Main().Rows(), 1) << "the folder says that nothing has happened";
}

TEST_F(ShownPackages, AreLeftAloneOnAnyOtherScreen) {
    MenuEvent(u"Back");
    MenuEvent(u"inf editor...");
    Put("a.qvd", "A|a.txt\n");
    Look(1000);
    EXPECT_EQ(Main().Rows(), 0);
}

// On a device whose memory holds databases.

class ArrivingAtAPalm : public ArrivingFiles {
protected:
    ArrivingAtAPalm() : ArrivingFiles(OfType(1)) {}
};

TEST_F(ArrivingAtAPalm, IsOfferedWithoutAWiderWindow) {
    const int width = Form().width();
    MenuEvent(u"Bluetooth Debug...");
    Arrive("meter.qvd");
    Step();
    EXPECT_EQ(Offered(), "Install meter.qvd when this screen is left.");
    EXPECT_EQ(Form().width(), width);
}

TEST_F(ArrivingAtAPalm, IsInstalledFromADatabase) {
    Arrive("meter.qvd");
    StepTo("Driver installed");
    EXPECT_EQ(Screen(), ScrMain);
    MenuEvent(u"Start...");
    Repaint();
    EXPECT_EQ(Cell(0), u"New Meter");
}

} // namespace
} // namespace windowtest
