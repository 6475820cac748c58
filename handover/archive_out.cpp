// SPDX-License-Identifier: MIT
#include "handover/archive_out.h"

#include "backends/digest/sha256.h"
#include "backends/files/host_files.h"
#include "backends/files/left_files.h"
#include "handover/archive_in.h"
#include "handover/archive_names.h"
#include "handover/places.h"
#include "handover/zip_end.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <minizip/zip.h>

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <set>
#include <sys/stat.h>
#include <zlib.h>

namespace handover {

using backends::ErrorNumber;
using backends::NoError;
using backends::Sha256Of;

namespace {

constexpr int Level = 6;
constexpr uLong MadeBy = 3 << 8 | 45; // Unix, with files beyond 4 GB
constexpr uLong NamesAreUtf8 = 1 << 11;
constexpr uLong Attributes = 0100600uL << 16;  // a plain file of its owner alone
constexpr uLong FirstDay = 1 << 21 | 1 << 16;  // 1980-01-01, as a zip file has it: the times of the files are not data
constexpr std::size_t WrittenAtOnce = 1 << 20; // bytes
constexpr std::uint64_t Needs64 = 0xffffffffu; // bytes

std::string WordsOf(ErrorNumber error) {
    return modStringTools::ToBytes(platform::ErrorText(error));
}

/// True if a reader would refuse the file for its ratio.
bool PacksTooWell(const std::string& bytes) {
    if (bytes.size() <= FreelyPacked)
        return false;
    std::string room(bytes.size() / MostRatio, '\0');
    uLongf size = room.size();
    return ::compress2(reinterpret_cast<Bytef*>(room.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
                       bytes.size(), Level) == Z_OK;
}

/// The zip file while it is written.
class Packing {
public:
    explicit Packing(int file) : File_{.Number = file} {
        zlib_filefunc64_def calls = CallsOn(File_);
        Zip_ = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls);
    }
    Packing(const Packing&) = delete;
    Packing& operator=(const Packing&) = delete;
    ~Packing() { Close(); }

    bool Add(const std::string& name, const std::string& bytes) {
        ++Files_;
        zip_fileinfo info{};
        info.dosDate = FirstDay;
        info.external_fa = Attributes;
        const int method = PacksTooWell(bytes) ? 0 : Z_DEFLATED;
        if (Zip_ == nullptr ||
            zipOpenNewFileInZip4_64(Zip_, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, method, Level, 0,
                                    -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY, nullptr, 0, MadeBy, NamesAreUtf8,
                                    bytes.size() >= Needs64 ? 1 : 0) != ZIP_OK)
            return false;
        bool isWritten = true;
        for (std::size_t at = 0; isWritten && at < bytes.size(); at += WrittenAtOnce)
            isWritten =
                zipWriteInFileInZip(Zip_, bytes.data() + at,
                                    static_cast<unsigned>(std::min(WrittenAtOnce, bytes.size() - at))) == ZIP_OK;
        return zipCloseFileInZip(Zip_) == ZIP_OK && isWritten && File_.Error == NoError;
    }

    bool Close() {
        if (Zip_ == nullptr)
            return false;
        const std::string mark = ArchiveMark + std::to_string(ArchiveVersion);
        return zipClose(std::exchange(Zip_, nullptr), mark.c_str()) == ZIP_OK && File_.Error == NoError &&
               CompleteEnd(File_, Files_, mark.size());
    }

    std::uint64_t Size() const { return static_cast<std::uint64_t>(File_.Size); }
    std::string Why() const { return WordsOf(File_.Error == NoError ? backends::DeviceFailed : File_.Error); }

private:
    ZipFile File_;
    zipFile Zip_ = nullptr;
    std::uint64_t Files_ = 0;
};

/// One export.
class Work {
public:
    explicit Work(const ExportPlan& plan) : Plan_(plan) {}

    ExportResult Run() {
        backends::FileEntry entry;
        Done_.WhyNot = Begin(entry);
        if (!Done_.WhyNot.empty())
            return Done_;
        backends::Replacement file(std::move(entry));
        ErrorNumber error = file.Begin();
        if (error != NoError)
            return Fail(Plan_.Zip + " can't be written: " + WordsOf(error) + ".");
        Fill(file.File());
        if (!Done_.Failed.empty())
            return Done_;
        if (const std::string why = ReadBack(file.File()); !why.empty())
            return Fail(why);
        if (error = file.Commit(); error != NoError)
            return Fail(Plan_.Zip + " can't be written: " + WordsOf(error) + ".");
        return Done_;
    }

private:
    std::string Begin(backends::FileEntry& entry) {
        const std::string folder = backends::FolderOf(Plan_.Zip);
        std::string target;
        std::string root;
        struct stat found {};
        if (!backends::IsFolder(folder))
            return "There is no folder " + folder + ": is the stick plugged in, the share connected?";
        if (::lstat(Plan_.Zip.c_str(), &found) == 0)
            return "There is " + Plan_.Zip + " already: take another name, or move it away first.";
        if (backends::Canonical(folder, target) != NoError || backends::Canonical(Plan_.Root, root) != NoError)
            return folder + " or " + Plan_.Root + " can't be found.";
        if (IsBeneath(target, root))
            return Plan_.Zip + " is in the folder of the data itself: choose a place outside of " + Plan_.Root + ".";
        if (const ErrorNumber error = backends::EntryAt(Plan_.Zip, entry); error != NoError)
            return Plan_.Zip + " can't be written: " + WordsOf(error) + ".";
        backends::RemoveLeftFiles(target, 0); // of an export that was killed
        return {};
    }

    void Fill(int file) {
        ReadRegister();
        Listing all = Plan_.List();
        for (const std::string& problem : all.Problems)
            Fail(problem);
        std::sort(all.Sources.begin(), all.Sources.end(),
                  [](const Source& one, const Source& other) { return one.Name < other.Name; });
        CheckNames(all.Sources);
        if (all.Sources.empty())
            Fail("There is nothing to export.");
        Packing zip(file);
        for (const Source& source : all.Sources)
            if (Done_.Failed.empty())
                Add(zip, source);
        if (Done_.Failed.empty() && !zip.Close())
            Fail(Plan_.Zip + " can't be written: " + zip.Why() + ".");
        Done_.Bytes = zip.Size();
        if (Done_.Failed.empty() && ::fsync(file) != 0)
            Fail(Plan_.Zip + " can't be written: " + backends::ReasonOf(errno) + ".");
    }

    /// Before the downloads: one that is begun meanwhile is in no register without its file.
    void ReadRegister() {
        for (const Source& source : Plan_.List().Sources)
            if (source.Is == Kind::Register)
                Read(source, Registers_[source.Name]);
    }

    bool Read(const Source& source, Content& content) {
        const std::string why = ReadContent(source, content);
        if (!why.empty())
            Fail(source.Name + " can't be read: " + why + ".");
        return why.empty();
    }

    /// What a reader would refuse is not written.
    void CheckNames(const std::vector<Source>& sources) {
        std::set<std::string> registered;
        for (const Source& source : sources)
            if (source.Is == Kind::Download)
                registered.insert(source.Name);
        ArchiveNames names(std::move(registered));
        for (const Source& source : sources)
            if (const std::string why = names.Add(source.Name); !why.empty())
                Fail(source.Name + " can't be in the zip file: " + why + ". Hand over to a folder instead.");
        if (sources.size() > MostFiles)
            Fail("There are too many files for a zip file. Hand over to a folder instead.");
    }

    void Add(Packing& zip, const Source& source) {
        Content content;
        if (const auto known = Registers_.find(source.Name); known != Registers_.end())
            content = known->second;
        else if (!Read(source, content))
            return;
        const std::uint64_t size = content.Bytes.size();
        Total_ += size;
        if (size > LargestFile || Total_ > LargestTotal)
            Fail(source.Name + " is too large for the zip file. Hand over to a folder instead.");
        else if (!zip.Add(source.Name, content.Bytes))
            Fail(Plan_.Zip + " can't be written: " + zip.Why() + ".");
        const bool isDownload = source.Is == Kind::Download || source.Is == Kind::DownloadDatabase;
        Done_.Files.push_back(
            {source.Name, content.Bytes.size(), isDownload ? content.Records : 0, Sha256Of(content.Bytes)});
    }

    /// Reads the zip file as an import does, and compares it with what was put in.
    std::string ReadBack(int file) {
        ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED); // from the medium, not from the memory of the machine
        const std::string wrong = "What was read back is not what was written: try another stick or folder.";
        ArchiveIn zip;
        if (!zip.Open(file).empty() || zip.Entries().size() != Done_.Files.size())
            return wrong;
        std::string bytes;
        for (const ExportedFile& each : Done_.Files) {
            const ArchiveEntry* const entry = zip.Find(each.Name);
            if (entry == nullptr || !zip.Read(*entry, bytes).empty() || Sha256Of(bytes) != each.Sha256)
                return wrong;
        }
        return {};
    }

    ExportResult Fail(const std::string& why) {
        Done_.Failed.push_back(why);
        return Done_;
    }

    const ExportPlan& Plan_;
    ExportResult Done_;
    std::map<std::string, Content> Registers_;
    std::uint64_t Total_ = 0; ///< bytes of all files
};

} // namespace

ExportResult ExportZip(const ExportPlan& plan) {
    return Work(plan).Run();
}

} // namespace handover
