// SPDX-License-Identifier: MIT
#include "bench/recorded_batch.h"

#include "backends/host/drafts.h"
#include "backends/host/journal.h"
#include "bench/bench_device.h"
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

std::string RootOf(const std::string& folder, const std::string& infRows) {
    std::string root = folder + "/batch";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root + "/Quorin");
    Write(root + "/settings.ini", "[Settings]\nComPort=Com1\n");
    Write(root + "/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Write(root + "/Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n" + infRows);
    return root;
}

Text Batch() {
    std::string batch = "[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n";
    for (int i = 0; i < Results; ++i)
        batch += "[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"" + TypeOf(i) + "\"]\r\n[RESULT_VALUE \"23.4\"]\r\n" +
                 "[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
    return modStringTools::FromBytes(batch);
}

/// Counts the verdicts.
class Counter final : public platform::ReadingLog {
public:
    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict&) override { ++Readings; }
    void RowChanged(const platform::RowChange&) override {}
    int Readings = 0;
};

double SecondsOfBatch(const std::string& folder, const std::string& root, bool everything) {
    BenchDevice device(root);
    Counter counter;
    device.Platform.readings.Add(counter);
    companion::KeptReadings kept;
    std::optional<backends::Journal> journal;
    std::optional<backends::Drafts> drafts;
    if (everything) {
        std::filesystem::remove_all(folder + "/state");
        device.Platform.readings.Add(kept);
        journal.emplace(backends::JournalPlan{folder + "/state/journal", root, {}},
                        backends::ProgramName{"bench", "V 1", {}}, device.Platform);
        drafts.emplace(folder + "/state/drafts", root);
        drafts->Attach(device.Platform);
    }
    Text file = u"qrn0001.txt";
    modQuorin::OpenDownload(u"Meter", file);
    device.Platform.loop.PassTime(TickMilliseconds);
    const Text batch = Batch();
    const double taken = Seconds([&] {
        device.Platform.serial.Arrive(batch);
        while (counter.Readings < Results)
            device.Platform.loop.PassTime(TickMilliseconds);
        device.Platform.loop.HandleDue();
    });
    if (counter.Readings != Results)
        Fail("the batch has other results");
    return taken;
}

Sides SidesOf(const std::string& folder, const std::string& infRows) {
    const std::string root = RootOf(folder, infRows);
    return {[=] { return SecondsOfBatch(folder, root, true); }, [=] { return SecondsOfBatch(folder, root, false); }};
}

} // namespace

Sides RefusedBatch(const std::string& folder) {
    return SidesOf(folder, "Moisture|1||Moisture||||\nSite|1||dv: Site||||\nRemark|1||||||\n");
}

Sides TakenBatch(const std::string& folder) {
    std::string rows;
    for (int i = 0; i < Results; ++i)
        rows += "F" + std::to_string(i) + "|1||" + TypeOf(i) + "||||\n";
    return SidesOf(folder, rows);
}

} // namespace bench
