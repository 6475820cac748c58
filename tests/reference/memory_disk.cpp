// SPDX-License-Identifier: MIT
#include "tests/reference/memory_disk.h"

#include <algorithm>

namespace reference {

using namespace platform;

namespace {

/// With its trailing `\\`.
Text FolderOf(const Text& fullName) {
    return fullName.substr(0, fullName.rfind(u'\\') + 1);
}

Text WithBackslash(const Text& path) {
    return path.empty() || path.back() == u'\\' ? path : path + u'\\';
}

bool BeforeInBytes(const Text& a, const Text& b) {
    return modStringTools::ToBytes(a) < modStringTools::ToBytes(b);
}

/// Returns true for a path that leads out of the disk or is not valid.
bool IsRefused(const Text& path) {
    bool isFirst = true;
    for (TextView rest = path; !rest.empty() || isFirst; isFirst = false) {
        const TextView part = rest.substr(0, rest.find(u'\\'));
        const bool isRoot = isFirst && (part == u"." || (part.size() > 1 && part.back() == u':'));
        const bool isName = !isFirst && !part.empty() && part != u"." && part != u"..";
        if (!isRoot && !isName)
            return true;
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    }
    return false;
}

/// The most lines that one ReadLines returns: few, so that tests meet files of several blocks.
constexpr std::int64_t BlockOfLines = 3;

class MemoryStream final : public TextStream {
public:
    MemoryStream(MemoryDisk& disk, const Text& name, StreamMode mode)
        : Mode_(mode), File_(disk.Files[name]), HasWritten_(mode != StreamMode::Existing) {}
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    /// What was not saved by Close is lost.
    ~MemoryStream() override {
        if (IsClosed_ || !HasWritten_ || Mode_ == StreamMode::Scratch)
            return;
        File_->Bytes = File_->Saved.value_or("");
        ++File_->Changes;
    }

    std::int64_t Position() const override { return static_cast<std::int64_t>(Place_); }
    std::int64_t Size() const override { return static_cast<std::int64_t>(File_->Bytes.size()); }

    ErrorNumber Seek(std::int64_t offset, Origin origin) override {
        if (IsClosed_)
            return DeviceFailed;
        const std::int64_t place = (origin == Origin::End ? Size() : 0) + offset;
        Seen_ = File_->Changes;
        if (place < 0 || place > Size())
            return DeviceFailed;
        Place_ = static_cast<std::size_t>(place);
        return NoError;
    }

    ErrorNumber ReadLine(Text& line) override {
        constexpr std::string_view Mark = "\xEF\xBB\xBF";
        const bool atHead = Place_ == 0;
        std::string bytes;
        if (IsClosed_)
            return DeviceFailed;
        const bool isThere = Take(bytes);
        if (atHead && bytes.compare(0, Mark.size(), Mark) == 0)
            bytes.erase(0, Mark.size());
        std::replace(bytes.begin(), bytes.end(), '\0', ' ');
        line = modStringTools::FromBytes(bytes);
        return isThere ? NoError : FileNotFound;
    }

    ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) override {
        std::string line;
        for (passed = 0; !IsClosed_ && passed < most && Take(line); ++passed)
            continue;
        return IsClosed_ ? DeviceFailed : NoError;
    }

    ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) override {
        Taken_.clear();
        std::string line;
        for (taken = 0; taken < std::min(most, BlockOfLines) && Take(line); ++taken)
            Taken_ += line + EndOf(line);
        std::replace(Taken_.begin(), Taken_.end(), '\0', ' ');
        lines = Taken_;
        return NoError;
    }

    std::int64_t Revision() const override { return Seen_; }
    FileStamp Stamp() const override {
        const auto identity = reinterpret_cast<std::uintptr_t>(File_.get());
        return {identity, Size(), File_->Changes, File_->Changes};
    }

    ErrorNumber WriteLine(const Text& line) override {
        std::string bytes = modStringTools::ToBytes(line);
        for (const char none : {'\n', '\0'})
            std::replace(bytes.begin(), bytes.end(), none, ' ');
        return WriteLines(bytes + EndOf(bytes));
    }

    ErrorNumber WriteLines(std::string_view lines) override {
        if (IsClosed_)
            return DeviceFailed;
        std::string& all = File_->Bytes;
        std::string bytes(lines);
        all.resize(std::max(all.size(), Place_)); // another stream may have made the file shorter: NULs fill the gap
        if (Place_ == all.size() && !all.empty() && all.back() != '\n')
            bytes.insert(0, EndOf(all));
        all.replace(Place_, std::min(bytes.size(), all.size() - Place_), bytes);
        Place_ += bytes.size();
        ++File_->Changes;
        HasWritten_ = true;
        if (Mode_ == StreamMode::Scratch)
            File_->Saved = all;
        return NoError;
    }

    /// Always succeeds: the literal forms have no other program that could replace the file.
    ErrorNumber CheckName() override { return NoError; }

    ErrorNumber Close() override {
        if (!IsClosed_ && HasWritten_)
            File_->Saved = File_->Bytes;
        IsClosed_ = true;
        return NoError;
    }

private:
    static const char* EndOf(const std::string& line) { return !line.empty() && line.back() == '\r' ? "\r\n" : "\n"; }

    bool Take(std::string& line) {
        const std::string& all = File_->Bytes;
        line.clear();
        if (Place_ >= all.size())
            return false;
        const std::size_t end = all.find('\n', Place_);
        line = all.substr(Place_, end == std::string::npos ? end : end - Place_);
        Place_ += line.size() + (end == std::string::npos ? 0 : 1);
        if (end != std::string::npos && !line.empty() && line.back() == '\r')
            line.pop_back();
        return true;
    }

    StreamMode Mode_;
    std::shared_ptr<MemoryFile> File_;
    bool HasWritten_; ///< also true for a new file
    bool IsClosed_ = false;
    std::size_t Place_ = 0;
    std::int64_t Seen_ = 0;
    std::string Taken_;
};

class MemoryFolder final : public Folder {
public:
    MemoryFolder(const MemoryDisk& disk, const Text& path) {
        for (const auto& [name, file] : disk.Files) {
            if (FolderOf(name) == path && file->Saved)
                Names_.push_back(name);
        }
        std::sort(Names_.begin(), Names_.end(), BeforeInBytes);
    }

    Text FirstFile(std::int32_t) override {
        Next_ = 0;
        return NextFile();
    }
    Text NextFile() override { return Next_ < Names_.size() ? Names_[Next_++] : Text(); }
    ErrorNumber WalkError() const override { return NoError; }

private:
    std::vector<Text> Names_;
    std::size_t Next_ = 0;
};

} // namespace

void MemoryDisk::Put(const Text& fullName, const std::string& bytes) {
    MakeFolders(FolderOf(fullName));
    auto& file = Files[fullName];
    if (!file)
        file = std::make_shared<MemoryFile>();
    *file = {bytes, bytes, file->Changes + 1};
}

void MemoryDisk::MakeFolders(const Text& path) {
    for (std::size_t end = path.find(u'\\'); end != Text::npos; end = path.find(u'\\', end + 1))
        Folders.insert(path.substr(0, end + 1));
}

bool MemoryDisk::Has(const Text& fullName) const {
    const auto found = Files.find(fullName);
    return found != Files.end() && found->second->Saved;
}

std::string MemoryDisk::SavedBytes(const Text& fullName) const {
    return Has(fullName) ? *Files.at(fullName)->Saved : "no such file";
}

bool MemoryDisk::IsFolder(const Text& path) const {
    const Text folder = WithBackslash(path);
    return folder == u".\\" || Folders.count(folder) != 0;
}

std::string MemoryDisk::Shown() const {
    std::string all;
    for (const auto& [name, file] : Files)
        all += file->Saved ? modStringTools::ToBytes(name) + ":\n" + *file->Saved + "\n" : std::string();
    for (const auto& [name, lines] : Databases) {
        all += modStringTools::ToBytes(name) + " of " + std::to_string(lines->TypeCode) + "," +
               std::to_string(lines->CreatorCode) + ":\n";
        for (const LineRecord& record : lines->Records)
            all += std::to_string(record.LineNumber) + " " + modStringTools::ToBytes(record.LineData) + "\n";
    }
    return all;
}

ErrorNumber MemoryFiles::OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) {
    if (IsRefused(path))
        return PathRefused;
    const Text wanted = WithBackslash(path);
    const Text volume = wanted.substr(0, wanted.find(u'\\') + 1);
    const bool isFile = Disk_.Has(wanted.substr(0, wanted.size() - 1));
    if (create && Disk_.IsFolder(volume) && !isFile)
        Disk_.MakeFolders(wanted);
    if (!Disk_.IsFolder(wanted))
        return FileNotFound;
    folder = std::make_unique<MemoryFolder>(Disk_, wanted);
    return NoError;
}

ErrorNumber MemoryFiles::OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    if (IsRefused(fullName) || Disk_.IsFolder(fullName) || fullName.back() == u'\\')
        return PathRefused;
    if (mode == StreamMode::Existing ? !Disk_.Has(fullName) : !Disk_.IsFolder(FolderOf(fullName)))
        return FileNotFound;
    auto& file = Disk_.Files[fullName];
    if (!file)
        file = std::make_shared<MemoryFile>();
    if (mode != StreamMode::Existing) {
        file->Bytes.clear();
        ++file->Changes;
    }
    stream = std::make_unique<MemoryStream>(Disk_, fullName, mode);
    return stream->Seek(0, Origin::Start);
}

ErrorNumber MemoryFiles::CopyFile(const Text& source, const Text& destination) {
    if (!Disk_.Has(source))
        return FileNotFound;
    const std::string bytes = *Disk_.Files[source]->Saved;
    Disk_.Files[destination] = std::make_shared<MemoryFile>(MemoryFile{bytes, bytes, 0});
    return NoError;
}

ErrorNumber MemoryFiles::MoveFile(const Text& source, const Text& destination) {
    for (const Text& name : {source, destination}) {
        if (IsRefused(name) || Disk_.IsFolder(name))
            return PathRefused;
    }
    if (!Disk_.Has(source) || !Disk_.IsFolder(FolderOf(destination)))
        return FileNotFound;
    const std::shared_ptr<MemoryFile> moved = Disk_.Files[source];
    Disk_.Files.erase(source);
    Disk_.Files[destination] = moved;
    return NoError;
}

ErrorNumber MemoryFiles::DeleteFile(const Text& fullName) {
    if (IsRefused(fullName))
        return PathRefused;
    if (!Disk_.Has(fullName))
        return FileNotFound;
    Disk_.Files.erase(fullName);
    return NoError;
}

// --- settings --------------------------------------------------------------------------------------------------------

namespace {

/// The store ignores case.
Text KeyOf(const Text& application, const Text& section, const Text& key) {
    return modStringTools::LowerCase(application + u"\n" + section + u"\n" + key);
}

} // namespace

Text MemorySettings::Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const {
    const auto found = Values_.find(KeyOf(application, section, key));
    return found != Values_.end() ? found->second : byDefault;
}

ErrorNumber MemorySettings::Save(const Text& application, const Text& section, const Text& key, const Text& value) {
    Values_[KeyOf(application, section, key)] = value;
    return NoError;
}

} // namespace reference
