// SPDX-License-Identifier: MIT
// A root folder for one test, accessed by the paths of the host.
#pragma once

#include "tests/support/places.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>

class TemporaryRoot {
public:
    explicit TemporaryRoot(const std::filesystem::path& place = support::PlaceOnDisk()) {
        std::string pattern = (place / "quorin-test-XXXXXX").string();
        Folder_ = std::filesystem::canonical(mkdtemp(pattern.data())).string();
    }
    TemporaryRoot(const TemporaryRoot&) = delete;
    TemporaryRoot& operator=(const TemporaryRoot&) = delete;
    ~TemporaryRoot() {
        std::error_code ignored;
        std::filesystem::remove_all(Folder_, ignored);
    }

    const std::string& Path() const { return Folder_; }
    std::string Path(const std::string& name) const { return Folder_ + "/" + name; }

    void Put(const std::string& name, std::string_view bytes) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }

    std::string Bytes(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        EXPECT_TRUE(file) << name << " is not there";
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    bool Has(const std::string& name) const { return std::filesystem::exists(Path(name)); }

    /// Returns how many entries a folder of the root has, including hidden ones.
    std::ptrdiff_t Entries(const std::string& name = "") const {
        return std::distance(std::filesystem::directory_iterator(Path(name)), std::filesystem::directory_iterator());
    }

    void Link(const std::string& target, const std::string& name) const {
        std::filesystem::create_symlink(target, Path(name));
    }

private:
    std::string Folder_;
};
