// SPDX-License-Identifier: MIT
// The storage of a device for the fuzz targets, and their assertion.
#pragma once

#include <filesystem>
#include <string>

namespace fuzz {

/// If the condition does not hold, prints `what` and ends the run as a crash does.
void Must(bool holds, const std::string& what);

/// A root folder that each run empties, and beside it a file that no run may touch.
class Place {
public:
    /// In TMPDIR if that is set, else in memory, where a sync takes no time.
    Place();
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    void Empty() const;
    const std::filesystem::path& Root() const { return RootFolder_; }
    void Put(const std::string& name, const std::string& bytes) const;
    std::string Bytes(const std::string& name) const; ///< empty if the file does not exist
    bool Has(const std::string& name) const { return std::filesystem::exists(RootFolder_ / name); }
    /// Requires that nothing was made, removed or changed outside of the root folder.
    void MustHaveKeptWithinRoot() const;

private:
    std::filesystem::path Whole_;
    std::filesystem::path RootFolder_;
    std::filesystem::path Beside_;
};

} // namespace fuzz
