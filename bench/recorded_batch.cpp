// SPDX-License-Identifier: MIT
#include "bench/recorded_batch.h"

#include "backends/host/drafts.h"
#include "backends/host/journal.h"
#include "backends/qt/qt_platform.h"
#include "bench/bench_device.h"
#include "src/app/start_up.h"
#include "src/drivers/record_view.h"

#include <filesystem>
#include <fstream>
#include <optional>

namespace bench {

namespace {

constexpr int Results = 1000;
constexpr std::int64_t TickMilliseconds = 500;

std::string TypeOf(int result) {
    return "Type " + std::to_string(result);
}

void Write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// Makes a device with one driver, whose records have a field for each result.
std::string RootOf(const std::string& folder) {
    std::string inf = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
    for (int i = 0; i < Results; ++i)
        inf.append("F").append(std::to_string(i)).append("|1||").append(TypeOf(i)).append("||||\n");
    std::string root = folder + "/batch";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root + "/Quorin");
    Write(root + "/settings.ini", "[Settings]\nComPort=Com1\n");
    Write(root + "/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Write(root + "/Quorin/meter.txt", inf);
    return root;
}

Text Batch() {
    std::string batch = "[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n";
    for (int i = 0; i < Results; ++i)
        batch += "[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"" + TypeOf(i) + "\"]\r\n[RESULT_VALUE \"23.4\"]\r\n" +
                 "[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
    return modStringTools::FromBytes(batch);
}

/// Counts the verdicts, and notes when the last one came: the result is in its cell then.
class Counter final : public platform::ReadingLog {
public:
    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict&) override {
        if (++Readings == Results)
            End = Now();
    }
    void RowChanged(const platform::RowChange&) override {}
    int Readings = 0;
    double End = 0;
};

/// The journal is not synced here: its bytes are synced once a batch, in the half second of quiet before the decoding.
double SecondsOfBatch(const std::string& folder, const std::string& root, bool everything) {
    backends::NoCommands commands;
    BenchWatcher watcher;
    backends::qt::QtPump pump([](const backends::ProgramOver&) -> int { Fail("the window has ended"); });
    backends::HostDevice host(OptionsFor(root));
    backends::qt::QtPlatform device(host, {}, pump, commands, watcher);
    Counter counter;
    companion::KeptReadings kept;
    std::optional<backends::Journal> journal;
    std::optional<backends::Drafts> drafts;
    if (everything) {
        std::filesystem::remove_all(folder + "/state");
        device.readings.Add(kept);
        journal.emplace(backends::JournalPlan{folder + "/state/journal", root, {}},
                        backends::ProgramName{"bench", "V 1", {}}, device, [](int) { return 0; });
        drafts.emplace(folder + "/state/drafts", root);
        drafts->Attach(device);
    }
    device.readings.Add(counter); // after the others have taken each verdict
    device.StartProgram();
    Text file = u"qrn0001.txt";
    modQuorin::OpenDownload(u"Meter", file);
    device.loop.PassTime(TickMilliseconds);
    const Text batch = Batch();
    const double start = Now();
    device.serial.Arrive(batch);
    while (counter.Readings < Results)
        device.loop.PassTime(TickMilliseconds);
    if (counter.Readings != Results)
        Fail("the batch has other results");
    modQuorin::ResetModules();
    return counter.End - start;
}

} // namespace

Sides RecordedBatch(const std::string& folder) {
    const std::string root = RootOf(folder);
    return {[=] { return SecondsOfBatch(folder, root, true); }, [=] { return SecondsOfBatch(folder, root, false); }};
}

} // namespace bench
