// SPDX-License-Identifier: MIT
#include "tests/system/serial_line/collection.h"

#include "backends/input/gestures.h"
#include "src/app/commands.h"
#include "src/storage/settings.h"
#include "src/view/navigation.h"

namespace line {

namespace {

/// Less than the system's buffer of a terminal.
constexpr std::size_t PieceSize = 2048;

backends::DeviceOptions Behind(const Socket& socket) {
    backends::DeviceOptions options;
    options.Ports.Pinned = {{1, backends::PathAddress(socket.Path())}};
    return options;
}

} // namespace

void Socket::PlugIn() {
    Instrument.PlugIn();
    Link();
}

void Socket::PullOut() {
    std::filesystem::remove(Path());
    Instrument.PullOut();
}

void Socket::ForgetWhatWaits() const {
    const int port = ::open(Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_EQ(::tcflush(port, TCIFLUSH), 0);
    ::close(port);
}

void Socket::Link() {
    std::filesystem::create_symlink(Instrument.Path(), Path());
}

Collection::Collection(On screen) : Device(Behind(Line)) {
    Device.Folder.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Device.Folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    Device.Folder.Put("Quorin/meter.txt",
                      "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMoisture|1||Moisture||||\n"
                      "Temperature|1||Temperature||||\nSite|1||dv: Site||||\nMeter|1||dv: ORIGIN||||\n");
    Device.Platform.StartProgram();
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    if (screen == On::Trace)
        Choose(u"Bluetooth Debug...");
    else
        for (const char16_t* command : {u"Start...", u"Ok", u"Open"})
            Choose(command);
    Tick();
    EXPECT_TRUE(PortIsOpen());
}

void Collection::Choose(const Text& command) {
    modQuorin::MenuEvent(command);
    Device.Platform.loop.HandleDue();
}

void Collection::Deliver(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, PieceSize);
        Line.Instrument.Send(piece);
        if (Device.Host.ports.Descriptor() >= 0)
            WaitUntilThere(Device.Host.ports.Descriptor(), piece.size());
        Device.Platform.loop.HandleDue();
        bytes.remove_prefix(piece.size());
    }
}

void Collection::PullOut() {
    const int port = Device.Host.ports.Descriptor();
    Line.PullOut();
    ASSERT_TRUE(Tells(port));
    Device.Platform.loop.HandleDue();
    ASSERT_FALSE(PortIsOpen());
}

std::string Collection::Title() {
    return Shown(Device.Title().Cell(0, 0));
}

std::string Collection::Values() {
    auto& grid = Device.Main();
    std::string values;
    for (std::int32_t row = 0; row < grid.Rows(); ++row)
        values += Shown(grid.Cell(row, grid.Cols() - 1)) + "\n";
    return values;
}

std::string Collection::Saved() {
    modQuorin::GoBack();
    return Device.Folder.Bytes("Quorin/qrn0001.txt");
}

std::string Shown(const Text& text) {
    return modStringTools::ToBytes(text);
}

} // namespace line
