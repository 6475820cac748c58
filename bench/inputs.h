// SPDX-License-Identifier: MIT
// The inputs of the measurements. They come from a generator with a fixed seed, so that every run has the same input;
// none was chosen to suit a routine.
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace bench {

using Generator = std::mt19937_64;
inline constexpr std::uint64_t Seed = 20070305;

/// A whole number from `low` to `high`, both inclusive.
std::int64_t Draw(Generator& generator, std::int64_t low, std::int64_t high);

/// A file of lines of about 80 characters. Like all files here it is made once; later calls use it again.
void MakeLines(const std::string& path, std::int64_t count);

inline constexpr int RowColumns = 12;
/// The header of a table of rows, C1|C2|...|C12, without a line end.
std::string RowHeader();
/// One row of twelve fields without a line end, about 80 characters with one.
std::string OneRow(Generator& generator, std::int64_t number);
/// A table of so many rows.
void MakeRows(const std::string& path, std::int64_t count);

/// A register of downloads of ten drivers in turn, "Meter 0" to "Meter 9".
void MakeRegister(const std::string& path, std::int64_t count);

/// So many BLobs of about 130 bytes, lines ended by CR LF, of one instrument; the BLob that connects it comes first.
std::string Stream(std::int64_t blobs);
/// One BLob of that kind.
std::string OneBlob(Generator& generator);
/// So many bytes of lines that belong to no BLob, ended by CR LF.
std::string Noise(std::int64_t bytes);

} // namespace bench
