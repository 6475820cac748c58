// SPDX-License-Identifier: MIT
#include "bench/inputs.h"

#include "bench/ratio.h"

#include <filesystem>
#include <fstream>
#include <functional>

namespace bench {

namespace {

const std::string Letters = "abcdefghijklmnopqrstuvwxyz ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789";

std::string Word(Generator& generator, std::int64_t shortest, std::int64_t longest) {
    std::string word(static_cast<std::size_t>(Draw(generator, shortest, longest)), ' ');
    for (char& character : word)
        character =
            Letters[static_cast<std::size_t>(Draw(generator, 0, static_cast<std::int64_t>(Letters.size()) - 1))];
    return word;
}

std::string Decimal(Generator& generator) {
    return std::to_string(Draw(generator, 0, 99)) + "." + std::to_string(Draw(generator, 0, 9));
}

void MakeFile(const std::string& path, const std::function<void(std::ofstream&)>& write) {
    if (std::filesystem::exists(path))
        return;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    write(file);
    file.close();
    if (!file)
        Fail("can't write " + path);
}

} // namespace

std::int64_t Draw(Generator& generator, std::int64_t low, std::int64_t high) {
    return low + static_cast<std::int64_t>(generator() % static_cast<std::uint64_t>(high - low + 1));
}

void MakeLines(const std::string& path, std::int64_t count) {
    MakeFile(path, [count](std::ofstream& file) {
        Generator generator(Seed);
        for (std::int64_t i = 0; i < count; ++i)
            file << Word(generator, 40, 118) << '\n';
    });
}

std::string RowHeader() {
    std::string header = "C1";
    for (int column = 2; column <= RowColumns; ++column)
        header += "|C" + std::to_string(column);
    return header;
}

std::string OneRow(Generator& generator, std::int64_t number) {
    std::string row = std::to_string(number) + "|" + Word(generator, 2, 14);
    for (int column = 3; column <= 7; ++column)
        row += "|" + Decimal(generator);
    row += "|" + Word(generator, 0, 12) + "|05/03/2007|09:30|05/03/2007|";
    return row + "QI-" + std::to_string(Draw(generator, 1000, 9999));
}

void MakeRows(const std::string& path, std::int64_t count) {
    MakeFile(path, [count](std::ofstream& file) {
        Generator generator(Seed);
        file << RowHeader() << '\n';
        for (std::int64_t i = 1; i <= count; ++i)
            file << OneRow(generator, i) << '\n';
    });
}

void MakeRegister(const std::string& path, std::int64_t count) {
    MakeFile(path, [count](std::ofstream& file) {
        Generator generator(Seed);
        file << "DRIVER|FILE|DATE|ALIAS\n";
        for (std::int64_t i = 1; i <= count; ++i)
            file << "Meter " << Draw(generator, 0, 9) << "|qrn" << i << ".txt|20070305|" << Word(generator, 0, 20)
                 << '\n';
    });
}

std::string OneBlob(Generator& generator) {
    return "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=" + Word(generator, 1, 8) +
           "\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + Decimal(generator) +
           "\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
}

std::string Stream(std::int64_t blobs) {
    Generator generator(Seed);
    std::string stream = "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n";
    for (std::int64_t i = 0; i < blobs; ++i)
        stream += OneBlob(generator);
    return stream;
}

std::string Noise(std::int64_t bytes) {
    Generator generator(Seed);
    std::string noise;
    while (static_cast<std::int64_t>(noise.size()) < bytes)
        noise += Word(generator, 40, 118) + "\r\n";
    return noise;
}

} // namespace bench
