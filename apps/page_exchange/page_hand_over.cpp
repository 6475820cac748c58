// SPDX-License-Identifier: MIT
#include "apps/page_exchange/page_hand_over.h"

#include "apps/hand_over/archive_run.h"
#include "apps/hand_over/hand_over_run.h"
#include "apps/start/exit_status.h"
#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/files/plain_file.h"
#include "handover/archive_out.h"
#include "handover/hand_over.h"
#include "handover/receipt.h"
#include "src/drivers/downloads.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <fstream>
#include <limits>
#include <sstream>
#include <unistd.h>

namespace apps {

using modStringTools::ToBytes;

namespace {

/// "1 record", "12 records".
std::string Counted(std::uint64_t count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

constexpr const char* Nothing = "Nothing is taken in.";

/// Removes the file when it is done with.
class PassingFile {
public:
    explicit PassingFile(std::string path) : Path(std::move(path)) { ::unlink(Path.c_str()); }
    PassingFile(const PassingFile&) = delete;
    PassingFile& operator=(const PassingFile&) = delete;
    ~PassingFile() { ::unlink(Path.c_str()); }

    const std::string Path;
};

} // namespace

std::uint64_t PageHandOver::NotHandedOver() const {
    handover::Receipt receipt;
    const bool isRead = receipt.Read(Root_ + "/" + handover::ReceiptName).empty();
    return isRead ? handover::RecordsNotHandedOver(FilesOf(Root_, "").Sources, receipt) : 0;
}

GivenFile PageHandOver::Make() {
    GivenFile given{.Name = "quorin-" + ToBytes(modQuorin::Today()) + ".zip", .Type = "application/zip"};
    given.Why = MakeScratch();
    if (!given.Why.empty())
        return given;
    const PassingFile zip(Scratch_ + "/" + given.Name);
    const handover::ExportResult result = handover::ExportZip(
        {.Zip = zip.Path, .Root = Root_, .List = [this] { return FilesOf(Root_, "", Packages::With); }});
    given.Why = WithoutScratch(result.WhyNot.empty() && !result.Failed.empty() ? result.Failed.front() : result.WhyNot);
    if (!given.Why.empty())
        return given;
    backends::PlainFile file = backends::ReadPlainFile(zip.Path, std::numeric_limits<std::size_t>::max(),
                                                       backends::Links::Refuse, backends::Mark::Keep);
    given.Bytes = std::move(file.Bytes);
    given.Why = file.Why.empty() ? file.Why : given.Name + " can't be read: " + file.Why + ".";
    std::uint64_t records = 0;
    Packed_.clear();
    for (const handover::ExportedFile& each : result.Files) {
        records += each.Records;
        Packed_.push_back({each.Name, each.Bytes, each.Records, each.Sha256});
    }
    ZipName_ = given.Name;
    given.Words = Counted(records, "record") + " in " + Counted(Packed_.size(), "file");
    return given;
}

std::string PageHandOver::Remember() const {
    handover::Receipt receipt;
    const std::string path = Root_ + "/" + handover::ReceiptName;
    std::string why = receipt.Read(path);
    for (const Packed& each : Packed_)
        receipt.Add({.Time = LocalTime(),
                     .Device = {},
                     .Target = ZipName_,
                     .File = each.File,
                     .As = each.File,
                     .Bytes = each.Bytes,
                     .Records = each.Records,
                     .Sha256 = each.Sha256});
    if (why.empty())
        why = receipt.Write(path);
    return why.empty() ? why : "It can't be remembered that the data was handed over: " + why + ".";
}

PageHandOver::Report PageHandOver::TakeIn(const std::string& name, std::string_view bytes) {
    if (std::string why = MakeScratch(); !why.empty())
        return {.Title = Nothing, .Words = why};
    const PassingFile zip(Scratch_ + "/" + backends::NameOf(name));
    if (!(std::ofstream(zip.Path, std::ios::binary) << bytes).flush())
        return {.Title = Nothing, .Words = "There is no room for " + name + "."};
    std::ostringstream told, errors;
    const start::ExitStatus status = ImportZip(
        {.Program = {}, .Root = Root_, .Journal = {}, .Zip = zip.Path, .IsForPeople = true, .Errors = &errors}, Device_,
        told);
    std::string lines = WithoutScratch(told.str());
    std::string warnings = WithoutScratch(errors.str());
    if (status == start::ExitStatus::Failure)
        warnings += "Take it in again after OK: the page gets room for some 90 new files each time it is loaded.\n";
    if (lines.empty())
        return {.Title = Nothing, .Words = warnings};
    lines.pop_back();
    const std::size_t last = lines.rfind('\n') + 1; // the line on the whole; npos + 1 is 0
    return {.Title = "Take in " + name,
            .Words = lines.substr(last) + "\n\n" + warnings + (warnings.empty() ? "" : "\n") + lines.substr(0, last),
            .IsBegun = true};
}

std::string PageHandOver::MakeScratch() const {
    const auto error = backends::MakeFolders(Scratch_);
    return error == backends::NoError ? std::string() : Scratch_ + ": " + ToBytes(platform::ErrorText(error)) + ".";
}

/// The person knows the file by its name alone.
std::string PageHandOver::WithoutScratch(std::string words) const {
    const std::string folder = Scratch_ + "/";
    for (std::size_t at; (at = words.find(folder)) != std::string::npos;)
        words.erase(at, folder.size());
    return words;
}

} // namespace apps
