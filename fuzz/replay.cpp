// SPDX-License-Identifier: MIT
// Gives a target the files that are named on its command line, where no fuzzer is at hand.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

int main(int count, char** names) {
    for (int i = 1; i < count; ++i) {
        std::ifstream file(names[i], std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "Can't read %s\n", names[i]);
            return 2;
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
