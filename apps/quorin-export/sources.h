// SPDX-License-Identifier: MIT
// Finds the tables that a person names, and reads them.
#pragma once

#include "apps/download_files/device_table.h"
#include "apps/quorin-export/export_options.h"
#include "companion/value_limits.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace backends::headless {
class FormlessDevice;
}

namespace exporter {

/// The tables of a root folder and of the host, read while other programs may work on them: a table is replaced as a
/// whole, and a line database is read under its lock.
class Tables {
public:
    /// The options must exist as long as this.
    explicit Tables(const Options& options);
    ~Tables();

    /// Reads a table: a download by its name or alias, or a file of the host, whose name has a `/`. Returns why it
    /// can't, as a sentence; empty on success.
    std::string Read(const std::string& name, Table& table);
    /// Reads the limits of a table's driver, NAME.limits beside the settings. Returns what is wrong with them, a line
    /// each.
    std::vector<std::string> ReadLimits(const Table& table, companion::ValueLimits& limits) const;

    struct Listed {
        std::string File, Driver, Alias;
        std::optional<std::size_t> Records; ///< none if the file is not there: it is made when it is first opened
        std::string WhyNot;                 ///< why they could not be counted, as a sentence; empty if they could
    };
    /// Finds the downloads of the root folder, oldest first. Returns why it can't, as a sentence; empty on success.
    std::string List(std::vector<Listed>& downloads);

private:
    std::string ReadFile(const std::string& path, Table& table);
    std::string ReadDownload(const std::string& name, Table& table);
    std::string OpenRoot();
    std::string TakeDriver(const std::string& driver, Table& table) const;

    const Options& Options_;
    std::unique_ptr<backends::headless::FormlessDevice> Root_; ///< none until a download is asked for
};

} // namespace exporter
