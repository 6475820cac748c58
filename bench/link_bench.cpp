// SPDX-License-Identifier: MIT
// From the last byte of a record on a pseudo terminal to its value on the screen.
#include "bench/bench_device.h"
#include "bench/inputs.h"
#include "bench/ratio.h"
#include "src/blob/decoding.h"
#include "src/drivers/record_view.h"
#include "src/link/receive.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace bench {

namespace {

constexpr int Records = 1000; ///< in one run
constexpr std::int32_t ValueRow = 0;
constexpr std::int32_t ValueColumn = 1;
constexpr std::int64_t TickMilliseconds = 500;
constexpr int MostTicks = 3;

/// A pseudo terminal, of which the instrument's end is open.
class Terminal {
public:
    Terminal() : Instrument_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (Instrument_ < 0 || ::grantpt(Instrument_) != 0 || ::unlockpt(Instrument_) != 0)
            Fail("no pseudo terminal");
        Name = ::ptsname(Instrument_);
    }
    ~Terminal() { ::close(Instrument_); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void Send(std::string_view bytes) const {
        if (::write(Instrument_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            Fail("the terminal takes nothing");
    }

    std::string Name;

private:
    int Instrument_;
};

/// Sends a record on a thread of its own, the last byte long after the others have been read, while `wait` waits for
/// it. Returns the seconds from the last byte to the end of `wait`.
template <typename Waiting>
double FromLastByte(const Terminal& terminal, const std::string& record, Waiting wait) {
    double sent = 0;
    std::thread instrument([&] {
        terminal.Send(std::string_view(record).substr(0, record.size() - 1));
        std::this_thread::sleep_for(std::chrono::microseconds(300));
        sent = Now();
        terminal.Send(std::string_view(record).substr(record.size() - 1));
    });
    wait();
    const double seen = Now();
    instrument.join();
    return seen - sent;
}

std::vector<std::string> SomeRecords() {
    Generator generator(Seed);
    std::vector<std::string> records;
    for (int i = 0; i < Records; ++i)
        records.push_back(OneBlob(generator));
    return records;
}

// --- The reference ("floor"): a loop that polls and reads

class PlainReader {
public:
    explicit PlainReader(const std::string& name) : Port_(::open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        termios line{};
        if (Port_ < 0 || ::tcgetattr(Port_, &line) != 0)
            Fail("can't open " + name);
        ::cfmakeraw(&line);
        ::tcsetattr(Port_, TCSANOW, &line);
    }
    ~PlainReader() { ::close(Port_); }
    PlainReader(const PlainReader&) = delete;
    PlainReader& operator=(const PlainReader&) = delete;

    void Read(std::size_t bytes) const {
        char block[4096];
        while (bytes > 0) {
            pollfd waiting = {Port_, POLLIN, 0};
            ::poll(&waiting, 1, -1);
            const ssize_t count = ::read(Port_, block, sizeof block);
            if (count <= 0)
                Fail("the terminal gives nothing");
            bytes -= static_cast<std::size_t>(count);
        }
    }

private:
    int Port_;
};

std::vector<double> ReadPlainly(const Terminal& terminal, const std::vector<std::string>& records) {
    const PlainReader reader(terminal.Name);
    std::vector<double> taken;
    for (const std::string& record : records)
        taken.push_back(FromLastByte(terminal, record, [&] { reader.Read(record.size()); }));
    return taken;
}

// --- The product: its record screen, with a clock that the benchmark sets

void Write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// The data folder of a device with one driver, whose records have a field for the results.
std::string RootWithDriver(const std::string& folder) {
    const std::string root = folder + "/link";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root + "/Quorin");
    Write(root + "/settings.ini", "[Settings]\nComPort=Com1\n");
    Write(root + "/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Write(root + "/Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                      "Moisture|1||Moisture||||\nSite|1||dv: Site||||\nRemark|1||||||\n");
    return root;
}

struct Listening {
    Listening(const std::string& root, const std::string& port) : Device(root, port) {
        Text file = u"qrn0001.txt";
        modQuorin::OpenDownload(u"Meter", file);
        Device.Platform.loop.PassTime(TickMilliseconds); // opens the port
        if (!Device.Platform.serial.PortOpen())
            Fail("the port does not open");
        modBLob::Decoder.ConnectedID = u"QI-0001";
    }

    bool HasValue() { return !Device.Platform.grdMain.Cell(ValueRow, ValueColumn).empty(); }

    /// Sleeps until the record has arrived. The half second of quiet that must follow it passes on the device's clock
    /// alone, so that it is not in the figure; the work at its end is.
    void WaitForValue() {
        while (!modBluetooth::Receive.BlobEndSeen)
            Device.Platform.loop.WaitOnce();
        for (int ticks = 0; !HasValue(); ++ticks) {
            if (ticks == MostTicks)
                Fail("a result has not come to the screen");
            Device.Platform.loop.PassTime(TickMilliseconds);
        }
    }

    void ClearValue() { Device.Platform.grdMain.SetCell(ValueRow, ValueColumn, u""); }

    BenchDevice Device;
};

std::vector<double> CollectResults(const Terminal& terminal, const std::string& root,
                                   const std::vector<std::string>& records) {
    Listening listening(root, terminal.Name);
    std::vector<double> taken;
    for (const std::string& record : records) {
        taken.push_back(FromLastByte(terminal, record, [&] { listening.WaitForValue(); }));
        listening.ClearValue();
    }
    return taken;
}

double Middle(const std::vector<double>& taken) {
    return Median(taken);
}

double NearWorst(const std::vector<double>& taken) {
    return Percentile(taken, 99);
}

Sides ToTheScreen(const std::string& folder, double (*figure)(const std::vector<double>&)) {
    const auto terminal = std::make_shared<Terminal>();
    const auto records = std::make_shared<std::vector<std::string>>(SomeRecords());
    const std::string root = RootWithDriver(folder);
    return {[=] { return figure(CollectResults(*terminal, root, *records)); },
            [=] { return figure(ReadPlainly(*terminal, *records)); }};
}

Sides MedianToTheScreen(const std::string& folder) {
    return ToTheScreen(folder, Middle);
}

Sides NearWorstToTheScreen(const std::string& folder) {
    return ToTheScreen(folder, NearWorst);
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    return Main(count, words,
                {{"last byte of a record on a pseudo terminal to the value in the grid, median",
                  "poll and read of the same byte",
                  {20},
                  MedianToTheScreen},
                 {"last byte of a record on a pseudo terminal to the value in the grid, 99th percentile",
                  "poll and read of the same byte",
                  {0.001, true, Figure::Product},
                  NearWorstToTheScreen}});
}
