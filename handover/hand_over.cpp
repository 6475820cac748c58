// SPDX-License-Identifier: MIT
#include "handover/hand_over.h"

#include "backends/digest/sha256.h"
#include "backends/files/host_files.h"
#include "backends/files/left_files.h"
#include "backends/files/plain_file.h"
#include "handover/places.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <algorithm>
#include <cerrno>
#include <limits>

namespace handover {

using backends::NoError;
using backends::Sha256Of;

namespace {

bool IsDownload(const Source& source) {
    return source.Is == Kind::Download || source.Is == Kind::DownloadDatabase;
}

std::uint64_t NewRecords(const Source& source, const Content& content, const Receipt& receipt) {
    std::uint64_t fewest = content.Records;
    for (const HandedFile& each : receipt.Files()) {
        if (each.File != source.Name || each.Bytes > content.Bytes.size() || each.Records > content.Records)
            continue;
        if (Sha256Of(std::string_view(content.Bytes).substr(0, static_cast<std::size_t>(each.Bytes))) == each.Sha256)
            fewest = std::min(fewest, content.Records - each.Records);
    }
    return fewest;
}

/// One hand-over.
class Work {
public:
    Work(const Plan& plan, const Tell& tell) : Plan_(plan), Tell_(tell) {}

    Result Run() {
        Done_.WhyNot = Begin();
        if (!Done_.WhyNot.empty())
            return Done_;
        ReadRegister();
        const Listing all = Plan_.List();
        for (const std::string& problem : all.Problems)
            Fail({}, problem);
        for (const Source& source : all.Sources)
            if (source.Is != Kind::Register)
                ReadAndHand(source);
        for (const Known& each : Registers_) // last: no register names a download that is not there
            Hand(each.Of, each.Read);
        KeepReceipt(There_, Folder_ + "/" + ReceiptName);
        KeepReceipt(Here_, ReceiptHere());
        return Done_;
    }

private:
    struct Known {
        Source Of;
        Content Read;
    };

    std::string ReceiptHere() const { return Plan_.Root + "/" + ReceiptName; }

    std::string Begin() {
        std::string target;
        std::string root;
        if (!backends::IsFolder(Plan_.Target))
            return "There is no folder " + Plan_.Target + ": is the stick plugged in, the share connected?";
        if (backends::Canonical(Plan_.Target, target) != NoError || backends::Canonical(Plan_.Root, root) != NoError)
            return Plan_.Target + " or " + Plan_.Root + " can't be found.";
        Folder_ = target + "/" + FolderNameOf(Plan_.Device);
        if (IsBeneath(Folder_, root) || IsBeneath(root, Folder_))
            return Plan_.Target + " is a folder of the data itself: choose one outside of " + Plan_.Root + ".";
        if (const std::string why = Here_.Read(ReceiptHere()); !why.empty())
            return "The receipt " + ReceiptHere() + " can't be used: " + why + ".";
        const std::string there = Folder_ + "/" + ReceiptName;
        if (const std::string why = There_.Read(there); !why.empty())
            return "The receipt " + there + " can't be used: " + why + ".";
        Done_.OddLines = Here_.OddLines() + There_.OddLines();
        Day_ = Plan_.Time.substr(0, 10);
        backends::RemoveLeftFiles(Folder_, 2, backends::AnyAge); // of a hand-over that was killed
        return {};
    }

    /// Before the downloads: one that is begun meanwhile is in no register that is handed over without its file.
    void ReadRegister() {
        for (const Source& source : Plan_.List().Sources) {
            if (source.Is != Kind::Register)
                continue;
            Known known{source, {}};
            if (const std::string why = ReadContent(source, known.Read); why.empty())
                Registers_.push_back(std::move(known));
            else
                Fail(source.Name, "can't be read: " + why);
        }
    }

    void ReadAndHand(const Source& source) {
        Content content;
        if (const std::string why = ReadContent(source, content); why.empty())
            Hand(source, content);
        else
            Fail(source.Name, "can't be read: " + why);
    }

    void Hand(const Source& source, const Content& content) {
        FileResult result;
        result.File = {.Time = Plan_.Time,
                       .Device = Plan_.Device,
                       .Target = Plan_.Target,
                       .File = source.Name,
                       .As = {},
                       .Bytes = content.Bytes.size(),
                       .Records = IsDownload(source) ? content.Records : 0,
                       .Sha256 = Sha256Of(content.Bytes)};
        if (const HandedFile* const there = There_.Find(source.Name, result.File.Sha256))
            result.File.As = there->As;
        else if (const std::string why = Copy(source.Name, content.Bytes, result); !why.empty())
            return Fail(source.Name, why);
        if (IsDownload(source))
            Done_.Records += NewRecords(source, content, Here_);
        There_.DropReplacedBy(result.File);
        There_.Add(result.File);
        Here_.Add(result.File);
        ++(result.Copied ? Done_.Copied : Done_.Same);
        Tell_(result);
    }

    /// Finds the name that loses nothing: one that is free, or that of a file which the new one begins with.
    std::string Copy(const std::string& name, const std::string& bytes, FileResult& result) {
        for (int number = 1; number < MostNames; ++number) {
            result.File.As = Day_ + "/" + NumberedName(name, number);
            const std::string path = Folder_ + "/" + result.File.As;
            const backends::PlainFile there = backends::ReadPlainFile(path, std::numeric_limits<std::size_t>::max(),
                                                                      backends::Links::Refuse, backends::Mark::Keep);
            if (!there.Why.empty() && there.Error != ENOENT)
                return path + " can't be read: " + there.Why;
            if (there.Error != ENOENT && there.Bytes == bytes)
                return {};
            if (there.Error != ENOENT && bytes.compare(0, there.Bytes.size(), there.Bytes) != 0)
                continue;
            return Write(path, bytes, result);
        }
        return "there are too many files of this name";
    }

    std::string Write(const std::string& path, const std::string& bytes, FileResult& result) {
        const auto error = backends::MakeFolders(backends::FolderOf(path));
        std::string why =
            error == NoError ? WriteWhole(path, bytes) : modStringTools::ToBytes(platform::ErrorText(error));
        result.Copied = why.empty();
        return why.empty() ? why : path + " can't be written: " + why;
    }

    void KeepReceipt(const Receipt& receipt, const std::string& path) {
        if (receipt.Files().empty())
            return;
        if (const std::string why = receipt.Write(path); !why.empty())
            Fail(ReceiptName, path + " can't be written: " + why + "; what is there is whole");
    }

    void Fail(const std::string& name, const std::string& why) {
        FileResult result;
        result.File.File = name;
        result.Why = why;
        ++Done_.Failed;
        Tell_(result);
    }

    const Plan& Plan_;
    const Tell& Tell_;
    Result Done_;
    std::string Folder_; ///< of the device, at the target
    std::string Day_;
    Receipt Here_;
    Receipt There_;
    std::vector<Known> Registers_;
};

} // namespace

Result HandOver(const Plan& plan, const Tell& tell) {
    return Work(plan, tell).Run();
}

std::uint64_t RecordsNotHandedOver(const std::vector<Source>& sources, const Receipt& receipt) {
    std::uint64_t records = 0;
    for (const Source& source : sources) {
        Content content;
        if (IsDownload(source) && ReadContent(source, content).empty())
            records += NewRecords(source, content, receipt);
    }
    return records;
}

std::string FolderNameOf(const std::string& device) {
    std::size_t length = std::min<std::size_t>(device.size(), 100); // of 255 bytes, which most file systems have
    while (length < device.size() && (static_cast<unsigned char>(device[length]) & 0xC0U) == 0x80U)
        --length; // not within a character
    std::string name = device.substr(0, length);
    for (char& each : name)
        if (static_cast<unsigned char>(each) < ' ' ||
            std::string_view("/\\:*?\"<>|\x7f").find(each) != std::string_view::npos)
            each = '_';
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) // some file systems drop these
        name.pop_back();
    if (!name.empty() && name.front() == '.')
        name.front() = '_';
    return name.empty() ? "device" : name;
}

} // namespace handover
