// SPDX-License-Identifier: MIT
// Where the fuzz targets keep a device's storage, and how one of them says that something does not hold.
#pragma once

#include <filesystem>
#include <string>

namespace fuzz {

/// Says what does not hold, and ends the run as a crash does.
void Must(bool holds, const std::string& what);

/// A root folder that each run finds empty, and beside it a file that no run has any business with.
class Place {
public:
    /// In TMPDIR where that is set, else in the memory, where no sync holds up a run.
    Place();
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    void Empty() const;
    const std::filesystem::path& Root() const { return RootFolder_; }
    void Put(const std::string& name, const std::string& bytes) const;
    std::string Bytes(const std::string& name) const; ///< empty when the file is not there
    bool Has(const std::string& name) const { return std::filesystem::exists(RootFolder_ / name); }
    /// Nothing has come, gone or changed outside of the root folder.
    void MustHaveKeptWithinRoot() const;

private:
    std::filesystem::path Whole_;
    std::filesystem::path RootFolder_;
    std::filesystem::path Beside_;
};

} // namespace fuzz
