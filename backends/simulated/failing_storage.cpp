// SPDX-License-Identifier: MIT
#include "backends/simulated/failing_storage.h"

#include <algorithm>

namespace backends {

namespace {

class FailingStream final : public TextStream {
public:
    FailingStream(std::unique_ptr<TextStream> inner, DiskFaults& faults) : Inner_(std::move(inner)), Faults_(faults) {}

    std::int64_t Position() const override { return Inner_->Position(); }
    std::int64_t Size() const override { return Inner_->Size(); }
    ErrorNumber Seek(std::int64_t offset, Origin origin) override { return Inner_->Seek(offset, origin); }

    ErrorNumber ReadLine(Text& line) override {
        if (!Faults_.StrikeRead())
            return Inner_->ReadLine(line);
        line.clear();
        return DeviceFailed;
    }

    /// Skips half of the lines before the failure: the caller must not take the skipped lines for all lines.
    ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) override {
        if (!Faults_.StrikeRead())
            return Inner_->SkipLines(most, passed);
        const std::int64_t start = Inner_->Position();
        if (Inner_->SkipLines(most, passed) == NoError && Inner_->Seek(start, Origin::Start) == NoError)
            static_cast<void>(Inner_->SkipLines(passed / 2, passed));
        return DeviceFailed;
    }

    /// While an operation is to fail, lines are returned one at a time, so that each read and each write of a line can
    /// be the failing one.
    ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) override {
        if (!Faults_.StrikeRead())
            return Inner_->ReadLines(Faults_.Armed() ? std::min<std::int64_t>(most, 1) : most, lines, taken);
        lines = {};
        taken = 0;
        return DeviceFailed;
    }

    std::int64_t Revision() const override { return Inner_->Revision(); }
    FileStamp Stamp() const override { return Inner_->Stamp(); }

    ErrorNumber WriteLine(const Text& line) override { return Fails() ? DiskFull : Inner_->WriteLine(line); }

    ErrorNumber WriteLines(std::string_view lines) override { return Fails() ? DiskFull : Inner_->WriteLines(lines); }

    ErrorNumber CheckName() override { return Inner_->CheckName(); }

    /// If a line or the closing fails, the inner stream is not closed, which discards what was written.
    ErrorNumber Close() override {
        if (Wrote_ && Faults_.Strike())
            Broken_ = true;
        Wrote_ = false;
        return Broken_ ? DiskFull : Inner_->Close();
    }

private:
    bool Fails() {
        const bool fails = Faults_.Strike();
        Wrote_ = Wrote_ || !fails;
        Broken_ = Broken_ || fails;
        return fails;
    }

    std::unique_ptr<TextStream> Inner_;
    DiskFaults& Faults_;
    bool Wrote_ = false;
    bool Broken_ = false; ///< a line was not written
};

} // namespace

bool DiskFaults::Strikes(Count& count) const {
    if (Working)
        Working();
    if (count.Left == 0)
        return false;
    if (count.Good > 0) {
        --count.Good;
        return false;
    }
    if (count.Left > 0)
        --count.Left;
    return true;
}

ErrorNumber FailingFileSystem::OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) {
    const ErrorNumber error = Inner_.OpenFolder(path, false, folder);
    if (!create || error != FileNotFound)
        return error;
    return Faults_.Strike() ? DiskFull : Inner_.OpenFolder(path, true, folder);
}

ErrorNumber FailingFileSystem::OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    const bool fails = mode == StreamMode::Existing ? Faults_.StrikeRead() : Faults_.Strike();
    std::unique_ptr<TextStream> opened;
    const ErrorNumber failure = mode == StreamMode::Existing ? DeviceFailed : DiskFull;
    const ErrorNumber error = fails ? failure : Inner_.OpenStream(fullName, mode, opened);
    if (error == NoError)
        stream = std::make_unique<FailingStream>(std::move(opened), Faults_);
    return error;
}

ErrorNumber FailingFileSystem::MoveFile(const Text& source, const Text& destination) {
    return Faults_.Strike() ? DiskFull : Inner_.MoveFile(source, destination);
}

OpenedDatabase FailingDatabase::Keep(const OpenedDatabase& opened, const Text& name, DatabaseMode mode) {
    if (opened.Id == 0)
        return opened;
    DatabaseId id = 1;
    while (OpenOnes_.count(id) != 0)
        ++id;
    OpenOnes_[id] = {opened.Id, name, mode};
    return {id, NoError};
}

DatabaseId FailingDatabase::InnerId(DatabaseId database) const {
    const auto found = OpenOnes_.find(database);
    return found == OpenOnes_.end() ? 0 : found->second.Id;
}

OpenedDatabase FailingDatabase::Open(const Text& name, DatabaseMode mode) {
    return Faults_.StrikeRead() ? OpenedDatabase{0, DeviceFailed} : Keep(Inner_.Open(name, mode), name, mode);
}

OpenedDatabase FailingDatabase::Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) {
    return Faults_.Strike() ? OpenedDatabase{0, DiskFull}
                            : Keep(Inner_.Create(name, typeCode, creatorCode), name, DatabaseMode::ReadWrite);
}

void FailingDatabase::Close(DatabaseId database) {
    Inner_.Close(InnerId(database));
    OpenOnes_.erase(database);
}

ErrorNumber FailingDatabase::DeclareTable(DatabaseId database, const Text& name, const Text& definition) {
    return Faults_.Strike() ? DiskFull : Inner_.DeclareTable(InnerId(database), name, definition);
}

ErrorNumber FailingDatabase::AddRecord(DatabaseId database) {
    return Faults_.Strike() ? DiskFull : Inner_.AddRecord(InnerId(database));
}

ErrorNumber FailingDatabase::WriteRecord(DatabaseId database, const LineRecord& record) {
    return Faults_.Strike() ? DiskFull : Inner_.WriteRecord(InnerId(database), record);
}

ErrorNumber FailingDatabase::Commit(DatabaseId database) {
    return Faults_.Strike() ? DiskFull : Inner_.Commit(InnerId(database));
}

bool FailingDatabase::ReadRecord(DatabaseId database, LineRecord& record) {
    return Inner_.ReadRecord(InnerId(database), record);
}

ErrorNumber FailingDatabase::DeleteRecord(DatabaseId database) {
    return Faults_.Strike() ? DiskFull : Inner_.DeleteRecord(InnerId(database));
}

ErrorNumber FailingDatabase::ShiftRecords(DatabaseId database, std::int32_t position) {
    return Faults_.Strike() ? DiskFull : Inner_.ShiftRecords(InnerId(database), position);
}

ErrorNumber FailingDatabase::RenumberRecords(DatabaseId database) {
    return Faults_.Strike() ? DiskFull : Inner_.RenumberRecords(InnerId(database));
}

ErrorNumber FailingDatabase::FindRecord(DatabaseId database, std::int32_t lineNumber) {
    return Inner_.FindRecord(InnerId(database), lineNumber);
}

ErrorNumber FailingDatabase::EndBatch(DatabaseId database) {
    const auto found = OpenOnes_.find(database);
    if (found == OpenOnes_.end() || !Faults_.Strike())
        return Inner_.EndBatch(InnerId(database));
    // A batch whose end fails is discarded as a whole; closing the database in the middle of the batch does that.
    OpenOne& opened = found->second;
    Inner_.Close(opened.Id);
    opened.Id = Inner_.Open(opened.Name, opened.Mode).Id;
    return DiskFull;
}

Text FailingDatabase::FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) {
    return Inner_.FirstDatabase(typeCode, creatorCode);
}

Text FailingSettings::Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const {
    return Inner_.Get(application, section, key, byDefault);
}

ErrorNumber FailingSettings::Save(const Text& application, const Text& section, const Text& key, const Text& value) {
    return Faults_.Strike() ? DiskFull : Inner_.Save(application, section, key, value);
}

} // namespace backends
