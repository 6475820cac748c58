// SPDX-License-Identifier: MIT
#include "apps/hand_over/archive_run.h"

#include "apps/hand_over/hand_over_run.h"
#include "backends/files/path_map.h"
#include "handover/archive_out.h"
#include "handover/taking_in.h"
#include "journal/journal_lines.h"
#include "src/drivers/downloads.h"
#include "src/drivers/registry.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/platform/device_traits.h"

#include <iostream>

namespace apps {

using handover::Difference;
using handover::ExportedFile;
using handover::Fate;
using handover::TakenFile;
using modStringTools::FromBytes;
using modStringTools::ToBytes;
using start::ExitStatus;

namespace {

using Json = journal::Line;
using journal::TextOf;

void Tell(const ArchiveWish& wish, const std::string& words) {
    if (wish.Errors != nullptr)
        *wish.Errors << words << "\n";
    else
        std::cerr << wish.Program << ": " << words << "\n";
}

std::string LineOf(const ExportedFile& file, bool isForPeople) {
    if (isForPeople)
        return file.Name + ": " + std::to_string(file.Bytes) + " bytes";
    return TextOf({{"file", file.Name}, {"bytes", file.Bytes}, {"records", file.Records}, {"sha256", file.Sha256}});
}

std::string LineOf(const handover::ExportResult& result, const ArchiveWish& wish) {
    std::uint64_t records = 0;
    for (const ExportedFile& file : result.Files)
        records += file.Records;
    if (wish.IsForPeople)
        return std::to_string(result.Files.size()) + " files with " + std::to_string(records) + " records are in " +
               wish.Zip + ".";
    return TextOf(
        {{"exported", result.Files.size()}, {"records", records}, {"bytes", result.Bytes}, {"zip", wish.Zip}});
}

std::string WordOf(Fate fate) {
    switch (fate) {
    case Fate::New:
        return "new";
    case Fate::Grown:
        return "grown";
    case Fate::There:
        return "there";
    case Fate::Left:
        return "left";
    case Fate::Failed:
        break;
    }
    return "failed";
}

std::string SentenceOf(const TakenFile& file) {
    switch (file.Is) {
    case Fate::New:
        return "is taken in";
    case Fate::Grown:
        return "has grown";
    case Fate::There:
        return "is there already";
    case Fate::Left:
        return "differs, and stays as it is here";
    case Fate::Failed:
        break;
    }
    return "is not taken in";
}

std::string LineOf(const TakenFile& file, bool isForPeople) {
    if (!isForPeople)
        return TextOf({{"file", file.File}, {"as", file.As}, {"fate", WordOf(file.Is)}, {"records", file.Records}});
    return file.File + " " + SentenceOf(file) + (file.As == file.File ? "" : ", as " + file.As) +
           (file.Records > 0 ? ": " + std::to_string(file.Records) + " new records" : "");
}

std::string LineOf(const Difference& difference, bool isForPeople) {
    if (!isForPeople) {
        Json object = {{"differs", difference.File}, {"record", difference.Record}};
        object["here"] = difference.Here ? Json(*difference.Here) : Json(nullptr);
        object["zip"] = difference.InZip;
        return TextOf(object);
    }
    return difference.File + ", record " + std::to_string(difference.Record) +
           " differs\n  here: " + difference.Here.value_or("(none)") + "\n  zip:  " + difference.InZip;
}

std::string LineOf(const handover::TakeResult& result, const ArchiveWish& wish) {
    if (!wish.IsForPeople)
        return TextOf({{"taken", result.Taken},
                       {"there_already", result.There},
                       {"left", result.Left},
                       {"failed", result.Failed},
                       {"records", result.Records},
                       {"differing", result.Differing},
                       {"zip", wish.Zip}});
    return std::to_string(result.Taken) + " files of " + wish.Zip + " taken in, " + std::to_string(result.There) +
           " were there already, " + std::to_string(result.Left) + " differ and were left, " +
           std::to_string(result.Failed) + " failed; " + std::to_string(result.Records) + " records are new, " +
           std::to_string(result.Differing) + " differ.";
}

/// Makes the device ready, and returns where its files are.
handover::Taker TakerOf(const ArchiveWish& wish, backends::BackEnd& device) {
    device.Serve();
    modQuorin::SetFilePaths();
    handover::Taker taker;
    const Text data = modFileSystem::GetDataPath(u"");
    std::string beneath;
    if (!platform::Traits().IsMemory(data) && backends::RelativePath(data, beneath) == platform::NoError)
        taker.Data = wish.Root + "/" + beneath;
    taker.Databases = wish.Root + "/Databases";
    taker.Journal = wish.Journal;
    taker.NextDownload = [] { return ToBytes(modQuorin::NextDownload()); };
    taker.AddDownload = [](const handover::RegisterRow& row) {
        return modQuorin::TakeUpDownload(
            {FromBytes(row.Driver), FromBytes(row.File), FromBytes(row.Alias), FromBytes(row.Date)});
    };
    taker.AddDriver = [](const std::string& name, const std::string& inf) {
        return modQuorin::TakeUpDriver(FromBytes(name), FromBytes(inf));
    };
    return taker;
}

ExitStatus ExportNow(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out) {
    device.Serve();
    modQuorin::SetFilePaths();
    const handover::ExportResult result = handover::ExportZip(
        {.Zip = wish.Zip, .Root = wish.Root, .List = [&] { return FilesOf(wish.Root, wish.Journal, Packages::With); }});
    if (!result.WhyNot.empty()) {
        Tell(wish, "nothing is exported. " + result.WhyNot);
        return ExitStatus::NotStarted;
    }
    for (const std::string& why : result.Failed)
        Tell(wish, why);
    if (!result.Failed.empty()) {
        Tell(wish, "nothing is exported: there is no " + wish.Zip + ".");
        return ExitStatus::Failure;
    }
    for (const ExportedFile& file : result.Files)
        out << LineOf(file, wish.IsForPeople) << "\n";
    out << LineOf(result, wish) << std::endl;
    return ExitStatus::Ended;
}

ExitStatus ImportNow(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out) {
    const handover::TakeListener listener{
        .Taken =
            [&](const TakenFile& file) {
                out << LineOf(file, wish.IsForPeople) << "\n";
                if (!file.Why.empty())
                    Tell(wish, file.File + " is not taken in: " + file.Why);
            },
        .Differs = [&](const Difference& difference) { out << LineOf(difference, wish.IsForPeople) << "\n"; }};
    const handover::TakeResult result = handover::TakeIn(
        wish.Zip, [&] { return TakerOf(wish, device); }, listener);
    if (!result.WhyNot.empty()) {
        Tell(wish, "nothing is taken in. " + result.WhyNot);
        return ExitStatus::NotStarted;
    }
    out << LineOf(result, wish) << std::endl;
    if (result.Failed > 0) {
        Tell(wish, "not everything is taken in. Run it again once that is mended: what is there is whole.");
        return ExitStatus::Failure;
    }
    if (result.Differing > 0)
        Tell(wish, std::to_string(result.Differing) + " records differ from those here, which stay: keep " + wish.Zip +
                       " until you have compared them.");
    return result.Differing > 0 || result.Left > 0 ? ExitStatus::Odd : ExitStatus::Ended;
}

/// Runs a step; the device stops the program where the data folder or a table can't be opened.
template <class Step>
ExitStatus Guarded(const ArchiveWish& wish, Step step) {
    try {
        return step();
    } catch (const backends::ProgramOver& over) {
        Tell(wish, ToBytes(over.Failure));
        return ExitStatus::Failure;
    }
}

} // namespace

ExitStatus ExportZip(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out) {
    return Guarded(wish, [&] { return ExportNow(wish, device, out); });
}

ExitStatus ImportZip(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out) {
    return Guarded(wish, [&] { return ImportNow(wish, device, out); });
}

} // namespace apps
