// SPDX-License-Identifier: MIT
// The waiting times at the window: to the first frame after the start, to the frame after a key, and in the panel of
// readings.
#include "backends/input/gestures.h"
#include "backends/qt/readings_panel.h"
#include "bench/bench_device.h"
#include "bench/processes.h"
#include "bench/ratio.h"
#include "bench/recorded_batch.h"
#include "tests/support/window_hand.h"

#include <QApplication>
#include <QTest>
#include <QWindow>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace bench {

namespace {

// --- Start

constexpr int Starts = 10; ///< in one run, whose figure is their median

/// The seconds from a program's start to its first frame, offscreen.
double ToFirstFrame(const std::vector<std::string>& words) {
    ::setenv("LD_PRELOAD", Beside("libfirst_frame.so").c_str(), 1);
    std::vector<double> taken;
    for (int i = 0; i < Starts; ++i)
        taken.push_back(SecondsOf(words));
    ::unsetenv("LD_PRELOAD");
    return Median(taken);
}

Sides Starting(const std::string& folder) {
    const std::string root = folder + "/window-start";
    std::filesystem::create_directories(root);
    return {[root] {
                return ToFirstFrame({Beside("quorin"), "--root", root});
            },
            [] { return ToFirstFrame({Beside("one_widget")}); }};
}

// --- A key

constexpr int Fields = 200;
constexpr int Presses = 600;
constexpr double Percent = 99;

/// Counts the paint events of a widget.
class FrameWatch final : public QObject {
public:
    int Frames = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        Frames += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

class RecordInAWindow {
public:
    explicit RecordInAWindow(const std::string& root)
        : Pump_([](const backends::ProgramOver&) -> int { Fail("the window has ended"); }), Host_(OptionsFor(root)),
          Device_(Host_, {}, Pump_, Commands_, Watcher_) {
        Device_.StartProgram();
        Device_.window.activateWindow();
        if (!QTest::qWaitForWindowActive(&Device_.window))
            Fail("the window does not get the keyboard");
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open"}) {
            if (const std::string why = backends::Choose(Hand_, caption); !why.empty())
                Fail("the record can't be opened: " + why);
            Settle();
        }
        Device_.loop.PassTime(1000);
        Settle();
        if (Device_.grdMain.Rows() != Fields)
            Fail("the record has " + std::to_string(Device_.grdMain.Rows()) + " rows");
        Device_.grdMain.Widget().installEventFilter(&Watch_);
    }

    /// Returns the seconds from a key to the frame that shows its effect.
    double Press() {
        const std::int32_t row = Device_.grdMain.Row();
        if (row == 0 || row == Fields - 1)
            Down_ = row == 0;
        Watch_.Frames = 0;
        const double start = Now();
        QTest::keyClick(Device_.window.windowHandle(), Down_ ? Qt::Key_Down : Qt::Key_Up);
        while (Watch_.Frames == 0 && Now() - start < 1)
            Settle();
        const double taken = Now() - start;
        if (Device_.grdMain.Row() == row)
            Fail("the key has moved nothing");
        return taken;
    }

private:
    void Settle() {
        Device_.loop.HandleDue();
        QCoreApplication::processEvents();
    }

    backends::NoCommands Commands_;
    BenchWatcher Watcher_;
    backends::qt::QtPump Pump_;
    backends::HostDevice Host_;
    backends::qt::QtPlatform Device_;
    windowtest::WindowHand Hand_{Device_};
    FrameWatch Watch_;
    bool Down_ = true; ///< the direction through the record
};

Sides Pressing(const std::string& folder) {
    const std::string root = folder + "/window-record";
    std::filesystem::create_directories(root + "/Quorin");
    std::ofstream(root + "/Quorin/drivers.txt") << "NAME|INFFILE\nMeter|meter.txt\n";
    std::ofstream(root + "/Quorin/qrnctrl.txt") << "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070305|\n";
    std::ofstream meter(root + "/Quorin/meter.txt");
    std::ofstream download(root + "/Quorin/qrn0001.txt");
    meter << "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
    std::string names;
    std::string values;
    for (int field = 1; field <= Fields; ++field) {
        const std::string number = std::to_string(field);
        meter << "Field " << number << "|1||||||\n";
        names += (field > 1 ? "|Field " : "Field ") + number;
        values += (field > 1 ? "|" : "") + number + ".5 mm";
    }
    download << names << "\n" << values << "\n";
    meter.close();
    download.close();
    const auto record = std::make_shared<RecordInAWindow>(root);
    return {[record] {
                std::vector<double> taken;
                for (int press = 0; press < Presses; ++press)
                    taken.push_back(record->Press());
                return Percentile(taken, Percent);
            },
            {}};
}

// --- The panel of readings

constexpr int KeptReadings = 10'000;

/// The panel over that many readings, and a window in place of the form's.
class OpenPanel {
public:
    explicit OpenPanel(const std::string& root) {
        const BenchDevice device(root); // its clock gives each reading its time
        for (int n = 0; n < KeptReadings; ++n) {
            platform::Verdict verdict{.Row = 1, .Field = u"Wall", .File = u"qrn0001.txt"};
            verdict.Reading.Types = {u"Moisture", u"M"};
            verdict.Reading.Value = modStringTools::NumberText(n);
            verdict.Reading.Unit = u"%";
            verdict.Reading.Origin = u"QI-0001";
            Table_.ReadingJudged(verdict);
        }
        Form_.show();
        Panel_.Toggle();
        if (!QTest::qWaitForWindowActive(&Panel_))
            Fail("the panel does not get the keyboard");
        View().viewport()->installEventFilter(&Watch_);
    }

    /// Returns the seconds from Page Up, or Page Down, to the frame with the other page.
    double Page() {
        const int row = View().currentIndex().row();
        if (row <= 0 || row >= KeptReadings - 1)
            Down_ = row <= 0;
        return ToFrame([this] { QTest::keyClick(Panel_.windowHandle(), Down_ ? Qt::Key_PageDown : Qt::Key_PageUp); });
    }
    /// Returns the seconds from a changed filter to the frame that shows its rows.
    double Filter() {
        QLineEdit& words = *Panel_.findChild<QLineEdit*>();
        const QString text = words.text().isEmpty() ? QStringLiteral("99") : QString();
        const double taken = ToFrame([&] { words.setText(text); });
        if ((View().model()->rowCount() == KeptReadings) != text.isEmpty())
            Fail("the filter shows " + std::to_string(View().model()->rowCount()) + " rows");
        return taken;
    }

private:
    QTableView& View() { return *Panel_.findChild<QTableView*>(); }
    double ToFrame(const std::function<void()>& act) {
        QCoreApplication::processEvents();
        Watch_.Frames = 0;
        const double start = Now();
        act();
        while (Watch_.Frames == 0 && Now() - start < 1)
            QCoreApplication::processEvents();
        return Now() - start;
    }

    companion::ReadingTable Table_;
    QWidget Form_;
    backends::qt::ReadingsPanel Panel_{Table_, Form_, [] { return false; }, 1};
    FrameWatch Watch_;
    bool Down_ = false;
};

Sides InThePanel(const std::string& folder, double (OpenPanel::*act)(), int times) {
    const std::string root = folder + "/window-panel";
    std::filesystem::create_directories(root);
    const auto panel = std::make_shared<OpenPanel>(root);
    return {[panel, act, times] {
                std::vector<double> taken;
                for (int time = 0; time < times; ++time)
                    taken.push_back((*panel.*act)());
                return Percentile(taken, Percent);
            },
            {}};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    if (count < 2)
        Fail("which folder?");
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("XDG_RUNTIME_DIR", words[1], 1); // required by Qt
    const QApplication application(count, words);
    return Main(
        count, words,
        {{"quorin from its start to its first painted frame, offscreen", "a one-widget Qt program", {1.5}, Starting},
         {"a key press on a record of 200 fields to the painted frame, 99th percentile",
          "a frame of 16.7 ms",
          {0.0167, false, Figure::Product},
          Pressing},
         {"a page of 10,000 readings in their panel to the painted frame, 99th percentile",
          "a frame of 16.7 ms",
          {0.0167, false, Figure::Product},
          [](const std::string& folder) { return InThePanel(folder, &OpenPanel::Page, Presses); }},
         {"a filter of 10,000 readings in their panel to the painted frame, 99th percentile",
          "a tenth of a second",
          {0.1, false, Figure::Product},
          [](const std::string& folder) { return InThePanel(folder, &OpenPanel::Filter, 100); }},
         {"1,000 results of one batch to the grid of a window, with journal and drafts",
          "the same without",
          {1.3},
          RecordedBatch}});
}
