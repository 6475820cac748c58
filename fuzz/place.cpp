// SPDX-License-Identifier: MIT
#include "fuzz/place.h"

#include "tests/support/places.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace fuzz {

namespace {

const std::string OthersText = "None of the program's business\n";

std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace

void Must(bool holds, const std::string& what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

Place::Place() {
    std::string name = (support::PlaceInMemory() / "quorin-fuzz-XXXXXX").string();
    Must(::mkdtemp(name.data()) != nullptr, "no folder to work in");
    Whole_ = name;
    RootFolder_ = Whole_ / "root";
    Beside_ = Whole_ / "beside.txt";
    Write(Beside_, OthersText);
}

Place::~Place() {
    std::error_code ignored;
    std::filesystem::remove_all(Whole_, ignored);
}

void Place::Empty() const {
    std::filesystem::remove_all(RootFolder_);
    std::filesystem::create_directory(RootFolder_);
}

void Place::Put(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((RootFolder_ / name).parent_path());
    Write(RootFolder_ / name, bytes);
}

std::string Place::Bytes(const std::string& name) const {
    return BytesOf(RootFolder_ / name);
}

void Place::MustHaveKeptWithinRoot() const {
    for (const auto& entry : std::filesystem::directory_iterator(Whole_))
        Must(entry.path() == RootFolder_ || entry.path() == Beside_,
             "outside of the root folder: " + entry.path().string());
    Must(BytesOf(Beside_) == OthersText, "a file outside of the root folder was written");
}

} // namespace fuzz
