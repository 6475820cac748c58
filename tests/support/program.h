// SPDX-License-Identifier: MIT
// The whole program, started on a test device, with a routine for each action of a technician.
#pragma once

#include "backends/input/gestures.h"
#include "src/app/commands.h"
#include "src/app/form.h"
#include "src/drivers/selection.h"
#include "src/storage/keyed_tables.h"
#include "src/view/menu_table.h"
#include "src/view/navigation.h"
#include "src/view/screen_table.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace support {

inline backends::DeviceOptions OfType(std::int32_t deviceType) {
    backends::DeviceOptions options;
    options.DeviceType = deviceType;
    return options;
}

class Program : public testing::Test {
protected:
    explicit Program(const backends::DeviceOptions& options = {}) : Device(options) { Device.Platform.StartProgram(); }

    static modQuorin::ScreenId Screen() { return modQuorin::Screens.CurrentScreen; }
    Text TitleCell(std::int32_t col = 0) { return Device.Title().Cell(0, col); }
    Text Cell(std::int32_t row, std::int32_t col = 0) { return Device.Main().Cell(row, col); }
    std::vector<Text> Column(std::int32_t col) {
        std::vector<Text> texts;
        for (std::int32_t row = 0; row < Device.Main().Rows(); ++row)
            texts.push_back(Device.Main().Cell(row, col));
        return texts;
    }

    void Tap(std::int32_t row, std::int32_t col = 0) {
        EXPECT_EQ(backends::Tap(Device.Hand, row, col), "");
        Settle();
    }
    void Choose(const Text& caption) {
        EXPECT_EQ(backends::Choose(Device.Hand, caption), "") << modStringTools::ToBytes(caption);
        Settle();
    }
    void Type(const Text& text) { EXPECT_EQ(backends::SetInput(Device.Hand, text), ""); }
    void Settle() { Device.Platform.loop.HandleDue(); }
    /// Lets the time of the deferred repaint pass.
    void Repaint() { Device.Tick(100); }

    void Put(const std::string& name, const std::string& bytes) { Device.Folder.Put("Quorin/" + name, bytes); }
    std::string File(const std::string& name) { return Device.Folder.Bytes("Quorin/" + name); }

    /// Stores a driver "Meter" with three fields, and an empty register of downloads.
    void InstallMeter(const std::string& infRows = "Place|1||||||\nMoisture|1||Moisture||||\nRemark|1||||||\n") {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n" + infRows);
    }
    /// Stores this content as the only download of the only driver, and opens it on the record screen.
    void OpenDownload(const std::string& content) {
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        if (!content.empty())
            Put("qrn0001.txt", content);
        modQuorin::MenuEvent(u"Start...");
        modQuorin::MenuEvent(u"Ok");
        modQuorin::MenuEvent(u"Open");
        Settle();
    }

    TestDevice Device;
};

} // namespace support
