// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/lost_writes.h"

#include <algorithm>

namespace disk {

namespace {

constexpr std::size_t SectorSize = 512;

/// The first seeds have a meaning of their own.
enum : std::uint32_t { LosesAll, LosesNothing, LosesContents, LosesNames };

/// Does not use the library's distributions, so that a seed means the same damage in every build.
bool Happens(double chance, std::mt19937& random) {
    return static_cast<double>(random()) < chance * 4294967296.0;
}

std::size_t Below(std::size_t limit, std::mt19937& random) {
    return limit == 0 ? 0 : random() % limit;
}

double ChanceOfNames(std::uint32_t seed, std::mt19937& random) {
    if (seed <= LosesNames)
        return seed == LosesNothing || seed == LosesContents ? 1 : 0;
    return static_cast<double>(Below(11, random)) / 10;
}

double ChanceOfContents(std::uint32_t seed, std::mt19937& random) {
    if (seed <= LosesNames)
        return seed == LosesNothing || seed == LosesNames ? 1 : 0;
    return static_cast<double>(Below(11, random)) / 10;
}

bool HasItsFolder(const std::string& path, const std::set<std::string>& folders) {
    for (std::string folder = FolderOf(path); !folder.empty(); folder = FolderOf(folder)) {
        if (folders.count(folder) == 0)
            return false;
    }
    return true;
}

} // namespace

LostWrites::LostWrites(const Start& start, const std::vector<Step>& steps, std::size_t count) {
    Lasting_.Folders = start.Held.Folders;
    Lasting_.Files = start.Numbers;
    for (const auto& [path, number] : start.Numbers)
        Contents_[number].Lasting = start.Held.Files.at(path);
    for (std::size_t i = 0; i < count; ++i)
        Take(steps[i]);
}

void LostWrites::Take(const Step& step) {
    switch (step.What) {
    case Call::Open:
        Contents_[step.File]; // adds an empty file if it is new
        if (step.Made)
            Pending_.push_back({Call::Open, step.Path, {}, step.File});
        if (step.MadeEmpty)
            Contents_[step.File].Later.push_back({true, 0, {}});
        break;
    case Call::Write:
        Contents_[step.File].Later.push_back({false, step.Offset, step.Bytes});
        break;
    case Call::Truncate:
        Contents_[step.File].Later.push_back({true, step.Offset, {}});
        break;
    case Call::Sync: {
        Content& content = Contents_[step.File];
        for (const Change& change : content.Later)
            Apply(change, content.Lasting);
        content.Later.clear();
        break;
    }
    case Call::SyncFolder:
        TakeFolderSync(step.Path);
        break;
    case Call::Rename:
    case Call::Unlink:
    case Call::MakeFolder:
        Pending_.push_back({step.What, step.Path, step.To, step.File});
        break;
    }
}

void LostWrites::TakeFolderSync(const std::string& folder) {
    std::vector<NameChange> left;
    for (const NameChange& change : Pending_) {
        const bool from = FolderOf(change.Path) == folder;
        const bool to = change.What == Call::Rename && FolderOf(change.To) == folder;
        if (!from && !to) {
            left.push_back(change);
            continue;
        }
        Apply(change, Lasting_);
        if (!from) { // the new name is on the medium; the old one, in another folder, may come back
            Lasting_.Files[change.Path] = change.File;
            left.push_back({Call::Unlink, change.Path, {}, change.File});
        }
    }
    Pending_ = std::move(left);
}

void LostWrites::Apply(const NameChange& change, Names& names) {
    const auto drop = [&] {
        const auto found = names.Files.find(change.Path);
        if (found != names.Files.end() && found->second == change.File)
            names.Files.erase(found);
    };
    switch (change.What) {
    case Call::MakeFolder:
        names.Folders.insert(change.Path);
        break;
    case Call::Rename:
        drop();
        names.Files[change.To] = change.File;
        break;
    case Call::Unlink:
        drop();
        break;
    default:
        names.Files[change.Path] = change.File;
        break;
    }
}

void LostWrites::Apply(const Change& change, std::string& content) {
    const auto offset = static_cast<std::size_t>(change.Offset);
    if (change.IsTruncation) {
        content.resize(offset);
        return;
    }
    content.resize(std::max(content.size(), offset + change.Bytes.size()));
    content.replace(offset, change.Bytes.size(), change.Bytes);
}

/// Applies the beginning of a write, or some of the sectors that it touches.
void LostWrites::ApplyTorn(const Change& change, std::string& content, std::mt19937& random) {
    if (change.IsTruncation)
        return;
    if (Happens(0.5, random)) {
        Apply({false, change.Offset, change.Bytes.substr(0, Below(change.Bytes.size(), random))}, content);
        return;
    }
    for (std::size_t done = 0; done < change.Bytes.size();) {
        const std::size_t place = static_cast<std::size_t>(change.Offset) + done;
        const std::size_t length = std::min(SectorSize - place % SectorSize, change.Bytes.size() - done);
        if (Happens(0.5, random))
            Apply({false, static_cast<std::int64_t>(place), change.Bytes.substr(done, length)}, content);
        done += length;
    }
}

std::string LostWrites::DamagedContent(const Content& content, double chance, std::mt19937& random) const {
    std::string bytes = content.Lasting;
    std::vector<Change> changes = content.Later;
    const bool some = chance > 0 && chance < 1;
    for (std::size_t i = changes.size(); some && i > 1; --i)
        std::swap(changes[i - 1], changes[Below(i, random)]);
    for (const Change& change : changes) {
        if (!Happens(chance, random))
            continue;
        if (some && Happens(0.3, random))
            ApplyTorn(change, bytes, random);
        else
            Apply(change, bytes);
    }
    return bytes;
}

Tree LostWrites::Damaged(std::uint32_t seed) const {
    std::mt19937 random(seed);
    const double chanceOfNames = ChanceOfNames(seed, random);
    const double chanceOfContents = ChanceOfContents(seed, random);
    Names names = Lasting_;
    for (const NameChange& change : Pending_) {
        if (Happens(chanceOfNames, random))
            Apply(change, names);
    }
    Tree tree;
    for (const std::string& folder : names.Folders) {
        if (HasItsFolder(folder, names.Folders))
            tree.Folders.insert(folder);
    }
    for (const auto& [path, number] : names.Files) {
        if (HasItsFolder(path, tree.Folders))
            tree.Files[path] = DamagedContent(Contents_.at(number), chanceOfContents, random);
    }
    return tree;
}

} // namespace disk
