// SPDX-License-Identifier: MIT
// Where an export is written.
#pragma once

#include "backends/digest/sha256.h"
#include "backends/files/host_files.h"

#include <memory>
#include <string>
#include <string_view>

namespace exporter {

/// A file that appears as a whole once it is finished, or standard output.
class Output {
public:
    /// Begins a file; an empty path is standard output. Returns why that is not possible, or an empty text.
    std::string Open(const std::string& path);
    /// Returns false once the bytes can't be written.
    bool Write(std::string_view bytes);
    /// Returns why the file is not there, or an empty text. On failure a file of the name is as it was.
    std::string Finish();

    std::size_t Bytes() const { return Bytes_; }
    /// Returns the SHA-256 of what was written, in 64 hexadecimal digits. May be called once.
    std::string Sha256() { return Digest_.Digits(); }

private:
    std::unique_ptr<backends::Replacement> File_; ///< none for standard output
    backends::Sha256 Digest_;
    std::size_t Bytes_ = 0;
    backends::ErrorNumber Error_ = backends::NoError;
};

} // namespace exporter
