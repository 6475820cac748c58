// SPDX-License-Identifier: MIT
#pragma once

#include "tests/unit/apps/quorin-console/console_run.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace console {

/// A root folder with the sample driver, a download of it that has an alias, and one of a driver that is not installed,
/// without its file. And a folder outside of it.
class ClimateRoot : public Console {
protected:
    ClimateRoot() {
        std::istringstream package(Sample("climate.qvd"));
        std::string inf;
        bool isBehindDriver = false;
        for (std::string line; std::getline(package, line);) {
            if (isBehindDriver)
                inf += line + "\n";
            isBehindDriver = isBehindDriver || line.rfind("Climate Meter|", 0) == 0;
        }
        Put("climate.txt", inf);
        Put("drivers.txt", "NAME|INFFILE\nClimate Meter|climate.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070305|North wall\n"
                           "Gone|qrn0002.txt|20070305|\n");
        Put("qrn0001.txt", Sample("download.txt"));
    }
    static std::string Sample(const std::string& name) {
        std::ostringstream bytes;
        bytes << std::ifstream(std::filesystem::path(QUORIN_SAMPLES) / name, std::ios::binary).rdbuf();
        return bytes.str();
    }
    void Put(const std::string& name, const std::string& bytes) { Root.Put("Quorin/" + name, bytes); }
    std::string Table(const std::string& name) const { return Root.Bytes("Quorin/" + name); }
    std::string Out(const std::string& name = "") { return (Place.Path() / name).string(); }

    support::TemporaryFolder Place;
};

} // namespace console
