// SPDX-License-Identifier: MIT
// What the data files must contain, as rows of texts.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace shift {

using Row = std::vector<std::string>;

Row SplitFields(const std::string& line);

struct DataFile {
    Row Columns;
    std::vector<Row> Rows;

    std::vector<std::string> Lines() const;
    std::string Bytes() const;
    const std::string& At(std::size_t row, const std::string& column) const;
};

/// One field of a driver's downloads.
struct Field {
    std::string Name;
    bool Visible = true;
    bool Copy = false;
    std::string Blob;
    bool IsDate = false;
    std::string Formula;
};

/// All data files by their names, and which of them have been written to since the last TakeWritten.
class DataFolder {
public:
    bool Has(const std::string& name) const { return Files_.count(name) != 0; }
    const DataFile& Read(const std::string& name) const { return Files_.at(name); }
    DataFile& Write(const std::string& name) {
        Written_.insert(name);
        return Files_[name];
    }
    void Delete(const std::string& name) {
        Written_.erase(name);
        Files_.erase(name);
    }
    const std::map<std::string, DataFile>& All() const { return Files_; }
    std::set<std::string> TakeWritten() {
        std::set<std::string> written;
        written.swap(Written_);
        return written;
    }

    std::string InfOf(const std::string& driver) const;
    std::vector<Field> FieldsOf(const std::string& driver) const;
    /// Returns the rows of the register that belong to a driver, oldest first.
    std::vector<std::size_t> DownloadsOf(const std::string& driver) const;
    /// Returns the name of the next download. Its number follows that of the register's last row, of any driver.
    std::string NextDownload() const;

private:
    std::map<std::string, DataFile> Files_;
    std::set<std::string> Written_;
};

inline constexpr const char* DriversName = "drivers.txt";
inline constexpr const char* RegisterName = "qrnctrl.txt";

} // namespace shift
