// SPDX-License-Identifier: MIT
#include "handover/file_taker.h"

#include "backends/digest/sha256.h"
#include "backends/files/host_files.h"
#include "backends/files/plain_file.h"
#include "handover/archive_names.h"
#include "handover/content.h"
#include "handover/keyed_rows.h"
#include "handover/places.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <cerrno>
#include <limits>

namespace handover {

std::string FileTaker::PathOf(const std::string& name) const {
    const Area area = AreaOf(name);
    const std::string& folder = area == Area::Databases ? Here_.Databases
                                : area == Area::Journal ? Here_.Journal
                                                        : Here_.Data;
    return folder + "/" + LeafOf(name);
}

HereFile FileTaker::ReadHere(const std::string& name) const {
    backends::PlainFile file = backends::ReadPlainFile(PathOf(name), std::numeric_limits<std::size_t>::max(),
                                                       backends::Links::Refuse, backends::Mark::Keep);
    if (file.Error == ENOENT)
        return {};
    return {true, std::move(file.Bytes), file.Why.empty() ? "" : PathOf(name) + " can't be read: " + file.Why};
}

void FileTaker::Write(TakenFile file, const std::string& bytes) {
    const std::string path = PathOf(file.As);
    const auto error = backends::MakeFolders(backends::FolderOf(path));
    const std::string why =
        error == backends::NoError ? WriteWhole(path, bytes) : modStringTools::ToBytes(platform::ErrorText(error));
    if (!why.empty())
        file = {.File = file.File, .As = file.As, .Is = Fate::Failed, .Why = path + " can't be written: " + why};
    Tell(file);
}

void FileTaker::Tell(const TakenFile& file) {
    if (file.Is == Fate::New || file.Is == Fate::Grown)
        ++Done_.Taken;
    else
        ++(file.Is == Fate::There ? Done_.There : file.Is == Fate::Left ? Done_.Left : Done_.Failed);
    if (file.Is == Fate::Left || file.Is == Fate::Failed)
        Left_.insert(file.File);
    Done_.Records += file.Records;
    Listener_.Taken(file);
}

void FileTaker::Tell(const Difference& difference) {
    ++Done_.Differing;
    Listener_.Differs(difference);
}

bool FileTaker::TellUnreadable(const HereFile& here, TakenFile file) {
    if (here.Why.empty())
        return false;
    file.Is = Fate::Failed;
    file.Why = here.Why;
    Tell(file);
    return true;
}

void FileTaker::Take(const std::string& name, const std::string& bytes) {
    switch (AreaOf(name)) {
    case Area::Journal:
        return TakeJournal(name, bytes);
    case Area::Databases:
        return TakeDatabase(name, bytes);
    case Area::Data:
        return TakeLines(name, name, bytes, Growth::Refused);
    }
}

void FileTaker::TakeLines(const std::string& name, const std::string& as, const std::string& bytes, Growth growth) {
    TakenFile file{.File = name, .As = as};
    const HereFile here = ReadHere(as);
    if (TellUnreadable(here, file))
        return;
    const Merged merged = Merge(as, here.Bytes, bytes, growth);
    for (const Difference& each : merged.Differences)
        Tell(each);
    const bool hasDifferences = !merged.Differences.empty();
    if (hasDifferences)
        Left_.insert(name);
    if (here.Exists && merged.New == 0) {
        file.Is = hasDifferences ? Fate::Left : Fate::There;
        return Tell(file);
    }
    file.Is = here.Exists ? Fate::Grown : Fate::New;
    if (growth == Growth::Allowed && merged.New > 0)
        file.Records = merged.New - (here.Bytes.empty() ? 1 : 0); // the header is no record
    Write(file, merged.Bytes);
}

/// A line database is taken as a whole: two states of it are not put together.
void FileTaker::TakeDatabase(const std::string& name, const std::string& bytes) {
    TakenFile file{.File = name, .As = name};
    const HereFile here = ReadHere(name);
    if (TellUnreadable(here, file))
        return;
    if (!here.Exists) {
        file.Is = Fate::New;
        return Write(file, bytes);
    }
    if (here.Bytes != bytes) {
        file.Is = Fate::Left;
        Tell(Difference{name, 0, "sha256 " + backends::Sha256Of(here.Bytes), "sha256 " + backends::Sha256Of(bytes)});
    }
    Tell(file);
}

void FileTaker::TakeJournal(const std::string& name, const std::string& bytes) {
    TakenFile file{.File = name, .As = name};
    if (Here_.Journal.empty()) {
        file.Is = Fate::Left;
        file.Why = "there is no folder for a journal: --journal names one";
        return Tell(file);
    }
    for (int number = 1; number < MostNames; ++number) {
        file.As = NumberedName(name, number);
        const HereFile here = ReadHere(file.As);
        if (TellUnreadable(here, file))
            return;
        if (here.Exists && here.Bytes.starts_with(bytes))
            return Tell(file);
        if (here.Exists && !bytes.starts_with(here.Bytes))
            continue; // another day of this name: the new one is put beside it
        file.Is = here.Exists ? Fate::Grown : Fate::New;
        return Write(file, bytes);
    }
    file.Is = Fate::Failed;
    file.Why = "there are too many files of this name";
    Tell(file);
}

} // namespace handover
