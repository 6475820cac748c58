// SPDX-License-Identifier: MIT
// A device with two downloads, and a stick.
#pragma once

#include "handover/hand_over.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace handover {

class ADevice : public testing::Test {
protected:
    ADevice() {
        Root.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261123|\n");
        Root.Put("Quorin/qrn0001.txt", First);
        Root.Put("Quorin/qrn0002.txt", Second);
    }

    std::vector<Source> Sources() const {
        return {{"qrnctrl.txt", Root.Path("Quorin/qrnctrl.txt"), Kind::Register},
                {"drivers.txt", Root.Path("Quorin/drivers.txt"), Kind::Table},
                {"qrn0001.txt", Root.Path("Quorin/qrn0001.txt"), Kind::Download},
                {"qrn0002.txt", Root.Path("Quorin/qrn0002.txt"), Kind::Download}};
    }

    Plan ThePlan() const { return PlanOf(Sources()); }
    Plan PlanOf(const std::vector<Source>& sources) const {
        return {.Device = "shed", .Time = Time, .Target = Stick.Path(), .Root = Root.Path(), .List = [sources] {
                    return Listing{sources, {}};
                }};
    }

    Result Run() {
        Told.clear();
        Done.clear();
        return HandOver(ThePlan(), [this](const FileResult& file) {
            (file.Why.empty() ? Done : Told)
                .push_back(file.File.File + ": " + (file.Why.empty() ? file.File.As : file.Why));
        });
    }

    std::uint64_t NotHandedOver() const {
        Receipt receipt;
        EXPECT_EQ(receipt.Read(Root.Path(ReceiptName)), "");
        return RecordsNotHandedOver(Sources(), receipt);
    }

    static std::string Day(const std::string& name) { return "shed/2026-11-23/" + name; }

    const std::string First = "Place|Moisture\nNorth|12\nSouth|13\n";
    const std::string Second = "Place|Moisture\n" + std::string(500, 'x') + "|1\n";
    std::string Time = "2026-11-23T17:30:05";
    TemporaryRoot Root{support::PlaceInMemory()};
    TemporaryRoot Stick{support::PlaceInMemory()};
    std::vector<std::string> Done; ///< "FILE: as what"
    std::vector<std::string> Told; ///< "FILE: why not"
};

} // namespace handover
