// SPDX-License-Identifier: MIT
#include "apps/hand_over/hand_over_run.h"

#include "backends/files/host_files.h"
#include "backends/files/path_map.h"
#include "handover/hand_over.h"
#include "journal/journal_format.h"
#include "journal/journal_lines.h"
#include "src/drivers/downloads.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/platform/device_traits.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <set>
#include <system_error>

namespace apps {

using handover::FileResult;
using handover::Kind;
using handover::Source;
using start::ExitStatus;

namespace {

using Json = journal::Line;
using journal::TextOf;

constexpr const char* RegisterStem = "qrnctrl";

std::string StemOf(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

bool EndsWith(const std::string& name, const std::string& end) {
    return name.size() > end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
}

bool IsPlainFile(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode);
}

/// A folder of the device, whose files get names beneath another one.
struct Place {
    std::string Path;
    std::string Beneath;
};

/// Adds the files of a folder with an ending. A folder that is not there has none.
template <class KindOf>
void AddFiles(const Place& place, const std::string& ending, KindOf kindOf, handover::Listing& listing) {
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator(place.Path, failed)) {
        const std::string name = entry.path().filename().string();
        if (name.front() != '.' && EndsWith(name, ending) && IsPlainFile(place.Path + "/" + name))
            listing.Sources.push_back({place.Beneath + name, place.Path + "/" + name, kindOf(name)});
    }
    if (failed && failed != std::errc::no_such_file_or_directory)
        listing.Problems.push_back("The folder " + place.Path +
                                   " can't be read: " + backends::ReasonOf(failed.value()) + ".");
}

std::string LineOf(const FileResult& result, bool isForPeople) {
    const handover::HandedFile& file = result.File;
    if (!isForPeople)
        return TextOf({{"file", file.File},
                       {"as", file.As},
                       {"copied", result.Copied},
                       {"bytes", file.Bytes},
                       {"records", file.Records},
                       {"sha256", file.Sha256}});
    return file.File + (result.Copied ? ": copied to " : ": is there as ") + file.As;
}

std::string LineOf(const handover::Result& result, const std::string& target, bool isForPeople) {
    if (!isForPeople)
        return TextOf({{"handed_over", result.Copied},
                       {"there_already", result.Same},
                       {"failed", result.Failed},
                       {"records", result.Records},
                       {"target", target}});
    return std::to_string(result.Copied) + " files copied to " + target + ", " + std::to_string(result.Same) +
           " were there already, " + std::to_string(result.Failed) + " failed; " + std::to_string(result.Records) +
           " records are handed over for the first time.";
}

/// Adds what the register names and the list of the folder does not have: a file with another ending, or one that can't
/// be read, which the hand-over tells. A download that was never opened has no file.
void AddRegistered(const std::string& folder, const std::vector<std::string>& registered, handover::Listing& listing) {
    std::vector<Source>& sources = listing.Sources;
    for (const std::string& name : registered) {
        const std::string path = folder + "/" + name;
        struct stat found {};
        const bool isListed =
            std::any_of(sources.begin(), sources.end(), [&](const Source& each) { return each.Name == name; });
        if (!isListed && name.find('/') == std::string::npos && ::lstat(path.c_str(), &found) == 0)
            sources.push_back({name, path, Kind::Download});
    }
}

} // namespace

std::string LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return text.data();
}

handover::Listing FilesOf(const std::string& root, const std::string& journal, Packages packages) {
    std::set<std::string> downloads;
    std::vector<std::string> registered;
    for (const modQuorin::RegisteredDownload& each : modQuorin::RegisteredDownloads()) {
        registered.push_back(modStringTools::ToBytes(each.File));
        downloads.insert(StemOf(registered.back()));
    }
    const auto kindOfTable = [&](const std::string& name) {
        if (StemOf(name) == RegisterStem)
            return Kind::Register;
        return downloads.count(StemOf(name)) > 0 ? Kind::Download : Kind::Table;
    };
    const auto kindOfDatabase = [&](const std::string& name) {
        return downloads.count(StemOf(name)) > 0 ? Kind::DownloadDatabase : Kind::Database;
    };
    handover::Listing listing;
    std::string beneath;
    const Text data = modFileSystem::GetDataPath(u"");
    if (!platform::Traits().IsMemory(data) && backends::RelativePath(data, beneath) == platform::NoError) {
        AddFiles({root + "/" + beneath, ""}, ".txt", kindOfTable, listing);
        AddRegistered(root + "/" + beneath, registered, listing);
        if (packages == Packages::With)
            for (const char* const ending : {".qvd", ".QVD"})
                AddFiles(
                    {root + "/" + beneath, ""}, ending, [](const std::string&) { return Kind::Table; }, listing);
    }
    AddFiles({root + "/Databases", "Databases/"}, ".sqlite", kindOfDatabase, listing);
    std::string canonical;
    if (!journal.empty() && backends::Canonical(root, canonical) == platform::NoError)
        AddFiles(
            {journal, "journal/"}, "-" + journal::RootKey(canonical) + ".jsonl",
            [](const std::string&) { return Kind::Journal; }, listing);
    std::sort(listing.Sources.begin(), listing.Sources.end(),
              [](const Source& one, const Source& other) { return one.Name < other.Name; });
    return listing;
}

namespace {

/// Writes a line for people to standard error.
void Tell(const HandOverWish& wish, const std::string& words) {
    std::cerr << wish.Program << ": " << words << "\n";
}

ExitStatus HandOverNow(const HandOverWish& wish, std::ostream& out) {
    const handover::Plan plan{
        .Device = wish.DeviceName, .Time = LocalTime(), .Target = wish.Target, .Root = wish.Root, .List = [&wish] {
            return FilesOf(wish.Root, wish.Journal);
        }};
    const handover::Result result = handover::HandOver(plan, [&](const FileResult& file) {
        if (file.Why.empty())
            out << LineOf(file, wish.IsForPeople) << std::endl;
        else
            Tell(wish, file.File.File.empty() ? file.Why : file.File.File + " is not handed over: " + file.Why);
    });
    if (!result.WhyNot.empty()) {
        Tell(wish, "nothing is handed over. " + result.WhyNot);
        return ExitStatus::NotStarted;
    }
    out << LineOf(result, plan.Target, wish.IsForPeople) << std::endl;
    if (result.OddLines > 0)
        Tell(wish, std::to_string(result.OddLines) + " lines of the receipts can't be read. They are kept, and their "
                                                     "files are handed over again.");
    if (result.Failed == 0)
        return result.OddLines > 0 ? ExitStatus::Odd : ExitStatus::Ended;
    Tell(wish, "not everything is handed over. Run it again once that is mended: what is there is whole.");
    return ExitStatus::Failure;
}

ExitStatus CountNow(const HandOverWish& wish, std::ostream& out) {
    handover::Receipt receipt;
    const std::string path = wish.Root + "/" + handover::ReceiptName;
    if (const std::string why = receipt.Read(path); !why.empty()) {
        Tell(wish, "the receipt " + path + " can't be used: " + why + ".");
        return ExitStatus::NotStarted;
    }
    const std::uint64_t records =
        receipt.Files().empty() ? 0 : handover::RecordsNotHandedOver(FilesOf(wish.Root, wish.Journal).Sources, receipt);
    out << TextOf(Json{{"not_handed_over", records}}) << std::endl;
    return ExitStatus::Ended;
}

/// Runs a part of the program on a device without a form.
ExitStatus OnDevice(ExitStatus (*run)(const HandOverWish&, std::ostream&), const HandOverWish& wish,
                    backends::BackEnd& device, std::ostream& out) {
    try {
        device.Serve();
        modQuorin::SetFilePaths();
        return run(wish, out);
    } catch (const backends::ProgramOver& over) { // the data folder or the register can't be opened
        Tell(wish, "nothing is handed over. " + modStringTools::ToBytes(over.Failure));
        return ExitStatus::Failure;
    }
}

} // namespace

ExitStatus HandOver(const HandOverWish& wish, backends::BackEnd& device, std::ostream& out) {
    return OnDevice(HandOverNow, wish, device, out);
}

ExitStatus CountNotHandedOver(const HandOverWish& wish, backends::BackEnd& device, std::ostream& out) {
    return OnDevice(CountNow, wish, device, out);
}

} // namespace apps
