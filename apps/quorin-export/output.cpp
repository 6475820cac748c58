// SPDX-License-Identifier: MIT
#include "apps/quorin-export/output.h"

#include "src/text/text.h"

#include <iostream>

namespace exporter {

using backends::NoError;

namespace {

std::string WordsOf(backends::ErrorNumber error) {
    return modStringTools::ToBytes(platform::ErrorText(error));
}

} // namespace

std::string Output::Open(const std::string& path) {
    if (path.empty())
        return {};
    backends::FileEntry entry;
    auto error = backends::EntryAt(path, entry);
    if (error == NoError) {
        File_ = std::make_unique<backends::Replacement>(std::move(entry));
        error = File_->Begin();
    }
    return error == NoError ? std::string() : WordsOf(error);
}

bool Output::Write(std::string_view bytes) {
    if (Error_ != NoError)
        return false;
    if (!File_)
        return static_cast<bool>(std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())));
    Error_ = backends::WriteAll(File_->File(), bytes, static_cast<std::int64_t>(Bytes_));
    Bytes_ += bytes.size();
    Digest_.Add(bytes);
    return Error_ == NoError;
}

std::string Output::Finish() {
    if (File_ && Error_ == NoError)
        Error_ = File_->Commit();
    return Error_ == NoError ? std::string() : WordsOf(Error_);
}

} // namespace exporter
