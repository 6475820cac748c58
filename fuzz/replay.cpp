// SPDX-License-Identifier: MIT
// The main program of a target in a build without a fuzzer: runs the target on the files that its command line names,
// and on all files of a folder that it names. It prints each name first, so the last one is the file that has failed.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

/// In the order of their names, so that each replay is like the one before.
std::vector<std::string> FilesAt(const std::string& path) {
    if (!std::filesystem::is_directory(path))
        return {path};
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

bool Replay(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "Can't read %s\n", path.c_str());
        return false;
    }
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int count, char** paths) {
    int replayed = 0;
    for (int i = 1; i < count; ++i) {
        for (const std::string& path : FilesAt(paths[i])) {
            if (!Replay(path))
                return 2;
            ++replayed;
        }
    }
    std::printf("%d files\n", replayed);
    return replayed > 0 ? 0 : 2; // a missing corpus is an error
}
