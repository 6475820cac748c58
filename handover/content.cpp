// SPDX-License-Identifier: MIT
#include "handover/content.h"

#include "backends/digest/sha256.h"
#include "backends/files/host_files.h"
#include "backends/files/plain_file.h"
#include "backends/files/sql.h"
#include "companion/values/table_text.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace handover {

using backends::ErrorNumber;
using backends::NoError;
using backends::Sha256Of;

namespace {

constexpr std::size_t ReadAtOnce = 1 << 18; // bytes

std::string WordsOf(ErrorNumber error) {
    return error == NoError ? std::string() : modStringTools::ToBytes(platform::ErrorText(error));
}

/// One transaction for the count and the bytes: they are of the same moment.
std::string ReadDatabase(const Source& source, Content& content) {
    backends::FileEntry entry;
    if (const ErrorNumber error = backends::EntryAt(source.Path, entry); error != NoError)
        return WordsOf(error);
    backends::LockWait patience;
    backends::SqlConnection connection;
    if (!connection.Open(std::move(entry), patience))
        return WordsOf(connection.LastError());
    if (const ErrorNumber error = connection.Execute("BEGIN"); error != NoError)
        return WordsOf(error);
    {
        backends::SqlStatement count;
        if (!count.Prepare(connection.Handle(), "SELECT count(*) FROM \"TEXT\"") || !count.NextRow())
            return WordsOf(connection.LastError());
        content.Records = static_cast<std::uint64_t>(std::max<std::int64_t>(count.Number(0) - 1, 0));
        count.Done();
    }
    return WordsOf(connection.ReadAll(content.Bytes));
}

/// Returns the SHA-256 of what a file has; nothing is left in the memory of the machine, so it is read from the medium.
std::string HashOnMedium(int file) {
    ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    backends::Sha256 hash;
    std::string part(ReadAtOnce, '\0');
    std::int64_t offset = 0;
    for (;;) {
        const std::int64_t count = backends::ReadAt(file, part.data(), part.size(), offset);
        if (count < 0)
            return {};
        if (count == 0)
            return hash.Digits();
        hash.Add(std::string_view(part).substr(0, static_cast<std::size_t>(count)));
        offset += count;
    }
}

} // namespace

std::string ReadContent(const Source& source, Content& content) {
    if (source.Is == Kind::Database || source.Is == Kind::DownloadDatabase)
        return ReadDatabase(source, content);
    backends::PlainFile file = backends::ReadPlainFile(source.Path, std::numeric_limits<std::size_t>::max(),
                                                       backends::Links::Follow, backends::Mark::Keep);
    content.Bytes = std::move(file.Bytes);
    if (source.Is == Kind::Journal) // a line that is being written comes with the next hand-over
        content.Bytes.resize(content.Bytes.rfind('\n') + 1);
    if (source.Is == Kind::Download)
        content.Records = values::RecordsOf(content.Bytes);
    return file.Why;
}

std::string WriteWhole(const std::string& path, std::string_view bytes) {
    backends::FileEntry entry;
    if (const ErrorNumber error = backends::EntryAt(path, entry); error != NoError)
        return WordsOf(error);
    backends::Replacement file(std::move(entry));
    ErrorNumber error = file.Begin();
    if (error == NoError)
        error = backends::WriteAll(file.File(), bytes, 0);
    if (error == NoError && ::fsync(file.File()) != 0)
        error = backends::FromErrno(errno);
    if (error != NoError)
        return WordsOf(error);
    if (HashOnMedium(file.File()) != Sha256Of(bytes))
        return "what was read back is not what was written: try another stick or folder";
    return WordsOf(file.Commit());
}

} // namespace handover
