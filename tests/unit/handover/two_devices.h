// SPDX-License-Identifier: MIT
// A device whose data is packed, and an empty one that takes it in.
#pragma once

#include "handover/archive_out.h"
#include "handover/keyed_rows.h"
#include "handover/taking_in.h"
#include "tests/unit/handover/a_device.h"

namespace handover {

class TwoDevices : public ADevice {
protected:
    TwoDevices() {
        Root.Put("Quorin/qrnctrl.txt", Register + "Meter|qrn0001.txt|20261123|\nMeter|qrn0002.txt|20261124|Loft\n");
        Root.Put("Quorin/meter.txt", "FIELDNAME|BLOB\nPlace|\nMoisture|Moisture\n");
    }

    static Kind KindOf(const std::string& name) {
        if (name == "qrnctrl.txt")
            return Kind::Register;
        return name.starts_with("qrn") ? Kind::Download : Kind::Table;
    }

    static std::vector<Source> FilesIn(const TemporaryRoot& root, const std::string& folder,
                                       const std::string& beneath) {
        std::vector<Source> sources;
        if (root.Has(folder))
            for (const auto& entry : std::filesystem::directory_iterator(root.Path(folder))) {
                const std::string name = entry.path().filename().string();
                const Kind kind = beneath.empty() ? KindOf(name) : Kind::Journal;
                if (name.front() != '.')
                    sources.push_back({beneath + name, entry.path().string(), kind});
            }
        return sources;
    }

    static Listing All(const TemporaryRoot& root) {
        Listing all{FilesIn(root, "Quorin", ""), {}};
        for (const Source& each : FilesIn(root, "journal", "journal/"))
            all.Sources.push_back(each);
        return all;
    }

    ExportResult Export(const TemporaryRoot& root, const std::string& name = "a.zip") const {
        return ExportZip({.Zip = Stick.Path(name), .Root = root.Path(), .List = [&root] { return All(root); }});
    }

    static Taker TakerOf(const TemporaryRoot& root) {
        const auto append = [&root](const std::string& file, const std::string& header, const std::string& line) {
            const std::string path = root.Path("Quorin/" + file);
            const std::string before = root.Has("Quorin/" + file) ? root.Bytes("Quorin/" + file) : header;
            return WriteWhole(path, before + line).empty();
        };
        return {.Data = root.Path("Quorin"),
                .Databases = root.Path("Databases"),
                .Journal = root.Path("journal"),
                .NextDownload =
                    [&root] {
                        const std::string last = FieldOf(KeyedRowsOf(root.Bytes("Quorin/qrnctrl.txt")).back(), "FILE");
                        return "qrn000" + std::to_string(last[6] - '0' + 1) + ".txt";
                    },
                .AddDownload =
                    [append](const RegisterRow& row) {
                        return append("qrnctrl.txt", Register,
                                      row.Driver + "|" + row.File + "|" + row.Date + "|" + row.Alias + "\n");
                    },
                .AddDriver =
                    [append](const std::string& name, const std::string& inf) {
                        return append("drivers.txt", "NAME|INFFILE\n", name + "|" + inf + "\n");
                    }};
    }

    TakeResult Import(const std::string& name = "a.zip") {
        Fates.clear();
        Differences.clear();
        return TakeIn(Stick.Path(name), [this] { return TakerOf(Other); },
                      {.Taken =
                           [this](const TakenFile& file) {
                               static const char* const words[] = {"new", "grown", "there", "left", "failed"};
                               Fates.push_back(file.As + " " + words[static_cast<int>(file.Is)]);
                           },
                       .Differs =
                           [this](const Difference& each) {
                               Differences.push_back(each.File + " " + std::to_string(each.Record) + ": " +
                                                     each.Here.value_or("-") + " / " + each.InZip);
                           }});
    }

    /// Exports the first device, and imports it into the other one.
    TakeResult Move() {
        std::filesystem::remove(Stick.Path("a.zip"));
        EXPECT_THAT(Export(Root).Failed, testing::IsEmpty());
        return Import();
    }

    /// Returns each file of a device, by its name.
    static std::map<std::string, std::string> Content(const TemporaryRoot& root) {
        std::map<std::string, std::string> content;
        for (const Source& each : All(root).Sources)
            content[each.Name] = root.Bytes(each.Path.substr(root.Path().size() + 1));
        return content;
    }

    inline static const std::string Register = "DRIVER|FILE|DATE|ALIAS\n";
    TemporaryRoot Other{support::PlaceInMemory()};
    std::vector<std::string> Fates;       ///< "NAME HERE word"
    std::vector<std::string> Differences; ///< "FILE RECORD: here / in the zip file"
};

} // namespace handover
