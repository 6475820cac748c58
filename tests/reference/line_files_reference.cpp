// SPDX-License-Identifier: MIT
#include "tests/reference/line_files_reference.h"

#include "src/storage/volumes.h"

namespace reference {

using namespace platform;

namespace {

bool EndsInPdb(const Text& name) {
    return name.size() >= 4 && modStringTools::LowerCase(name.substr(name.size() - 4)) == u".pdb";
}

} // namespace

void LineFiles::OpenFile(FileHandle& handle, const Text& fullName, const Text& mode, const Text& fileType,
                         const Text& creator) {
    std::int16_t slot = 0;
    if (fileType != u"temp" || creator != u"temp") {
        slot = 1;
        while (slot < 6 && SlotState_.at(static_cast<std::size_t>(slot)) != 0)
            ++slot;
        if (slot == 6)
            return;
    }
    const std::size_t end = fullName.rfind(u'\\');
    ResetFileHandle(handle);
    if (end == Text::npos)
        return;
    handle.path = fullName.substr(0, end + 1);
    handle.name = fullName.substr(end + 1);
    handle.isDatabase = EndsInPdb(handle.name);
    if (handle.isDatabase)
        handle.name.erase(handle.name.size() - 4);
    handle.mode = mode;
    handle.slot = slot;
    handle.fileType = fileType;
    handle.creator = creator;
    if (handle.isDatabase)
        OpenDatabase(handle);
    else
        OpenText(handle);
    if (State(handle) == 0)
        ResetFileHandle(handle);
    else
        handle.valid = true;
}

void LineFiles::OpenDatabase(FileHandle& handle) {
    std::int32_t& state = State(handle);
    if (handle.mode == u"r")
        state = Databases_.Open(handle.name, DatabaseMode::Read).Id;
    if (handle.mode == u"a")
        state = Databases_.Open(handle.name, DatabaseMode::ReadWrite).Id;
    if (handle.mode == u"w")
        Databases_.Delete(handle.name);
    if (handle.mode != u"r" && state == 0) {
        state =
            Databases_
                .Create(handle.name, modFileSystem::PackCode(handle.fileType), modFileSystem::PackCode(handle.creator))
                .Id;
        handle.recordNumber = 0;
    }
}

void LineFiles::OpenText(FileHandle& handle) {
    auto& stream = SlotStream_.at(static_cast<std::size_t>(handle.slot));
    const Text fullName = handle.path + handle.name;
    stream.reset();
    if (handle.mode == u"w") {
        Files_.OpenStream(fullName, StreamMode::Create, stream);
        handle.nextLine = 1;
    } else {
        Files_.OpenStream(fullName, StreamMode::Existing, stream);
    }
    if (handle.mode == u"a") {
        if (!stream)
            Files_.OpenStream(fullName, StreamMode::Create, stream);
        handle.valid = true; // for the count
        handle.nextLine = FileLineCount(handle) + 1;
        stream->Seek(0, Origin::End);
    }
    State(handle) = stream ? -1 : 0;
}

void LineFiles::CloseFile(FileHandle& handle) {
    if (handle.valid) {
        if (handle.isDatabase)
            Databases_.Close(State(handle));
        else
            Stream(handle).Close();
        State(handle) = 0;
    }
    ResetFileHandle(handle);
}

void LineFiles::ResetFileHandle(FileHandle& handle) {
    handle.slot = 0;
    handle.isDatabase = false;
    handle.recordNumber = 0;
    handle.nextLine = 0;
    handle.valid = false;
    handle.name.clear();
    handle.path.clear();
    handle.mode.clear();
}

std::int32_t LineFiles::WriteFileLine(FileHandle& handle, const Text& text) {
    if (!handle.valid)
        return 0;
    if (handle.isDatabase) {
        handle.recordNumber = Databases_.RecordCount(State(handle)) + 1;
        if (handle.recordNumber == 1)
            Databases_.DeclareTable(State(handle), u"TEXT", u"LineNumber long, LineData String");
        Databases_.AddRecord(State(handle));
        Databases_.WriteRecord(State(handle), {handle.recordNumber, text});
        Databases_.Commit(State(handle));
    } else {
        Stream(handle).WriteLine(text);
        ++handle.nextLine;
    }
    return static_cast<std::int32_t>(text.size());
}

std::int32_t LineFiles::SeekFileLine(FileHandle& handle, std::int32_t line) {
    if (line < 1 || !handle.valid)
        return 0;
    if (handle.isDatabase) {
        const bool found = Databases_.FindRecord(State(handle), line) == NoError;
        handle.recordNumber = found ? Databases_.Position(State(handle)) + 1 : 0;
        handle.nextLine = handle.recordNumber;
        return handle.recordNumber;
    }
    TextStream& stream = Stream(handle);
    stream.Seek(0, Origin::Start);
    std::int32_t counter = 1;
    Text discarded;
    while (counter < line && stream.Position() < stream.Size()) {
        stream.ReadLine(discarded);
        ++counter;
    }
    if (stream.Position() == stream.Size())
        counter = 0;
    handle.nextLine = counter;
    return counter;
}

Text LineFiles::ReadFileLine(FileHandle& handle, std::int32_t& line) {
    if (line == -1)
        line = handle.nextLine;
    if (SeekFileLine(handle, line) == 0)
        return {};
    if (handle.isDatabase) {
        LineRecord record;
        if (Databases_.ReadRecord(State(handle), record) && record.LineNumber == line) {
            handle.nextLine = line + 1;
            return record.LineData;
        }
        handle.nextLine = 0;
        return {};
    }
    Text text;
    Stream(handle).ReadLine(text);
    handle.nextLine = line + 1;
    return text;
}

bool LineFiles::ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text) {
    if (SeekFileLine(handle, line) == 0)
        return false;
    if (!handle.isDatabase)
        return Rewrite(handle, Edit::Change, line, 0, text);
    LineRecord record;
    if (!Databases_.ReadRecord(State(handle), record) || record.LineNumber != line)
        return false;
    Databases_.BeginEdit(State(handle));
    Databases_.WriteRecord(State(handle), {line, text});
    Databases_.Commit(State(handle));
    return true;
}

bool LineFiles::DeleteFileLine(FileHandle& handle, std::int32_t line) {
    if (SeekFileLine(handle, line) == 0)
        return false;
    if (!handle.isDatabase)
        return Rewrite(handle, Edit::Delete, line, 0, u"");
    LineRecord record;
    if (!Databases_.ReadRecord(State(handle), record) || record.LineNumber != line)
        return false;
    if (Databases_.DeleteRecord(State(handle)) != NoError)
        return false;
    RenumberDatabaseLines(handle);
    return true;
}

bool LineFiles::InsertFileLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text) {
    if (SeekFileLine(handle, line) == 0)
        return false;
    if (!handle.isDatabase)
        return Rewrite(handle, Edit::Insert, line, position, text);
    return InsertRecord(handle, position == 2 ? line + 1 : line, text);
}

bool LineFiles::InsertRecord(FileHandle& handle, std::int32_t target, const Text& text) {
    const DatabaseId id = State(handle);
    Databases_.AddRecord(id);
    Databases_.WriteRecord(id, {0, u""});
    Databases_.Commit(id);
    Databases_.MoveLast(id);
    for (std::int32_t number = Databases_.RecordCount(id); number >= target + 1; --number) {
        LineRecord record;
        Databases_.MovePrevious(id);
        if (!Databases_.ReadRecord(id, record))
            return false;
        ++record.LineNumber;
        Databases_.MoveNext(id);
        Databases_.BeginEdit(id);
        Databases_.WriteRecord(id, record);
        Databases_.Commit(id);
        Databases_.MovePrevious(id);
    }
    Databases_.BeginEdit(id);
    Databases_.WriteRecord(id, {target, text});
    Databases_.Commit(id);
    return true;
}

void LineFiles::RenumberDatabaseLines(FileHandle& handle) {
    const DatabaseId id = State(handle);
    std::int32_t number = 1;
    Databases_.MoveFirst(id);
    while (!Databases_.AtEnd(id)) {
        LineRecord record;
        if (Databases_.ReadRecord(id, record) && record.LineNumber != number) {
            Databases_.BeginEdit(id);
            record.LineNumber = number;
            Databases_.WriteRecord(id, record);
            Databases_.Commit(id);
        }
        ++number;
        Databases_.MoveNext(id);
    }
}

std::int32_t LineFiles::FileLineCount(FileHandle& handle) {
    if (!handle.valid)
        return 0;
    if (handle.isDatabase)
        return Databases_.RecordCount(State(handle));
    TextStream& stream = Stream(handle);
    stream.Seek(0, Origin::Start);
    std::int32_t count = 0;
    Text discarded;
    for (; stream.Position() < stream.Size(); ++count)
        stream.ReadLine(discarded);
    handle.nextLine = count + 1;
    return count;
}

bool LineFiles::Rewrite(FileHandle& handle, Edit edit, std::int32_t line, std::int32_t position, const Text& text) {
    const std::int32_t count = FileLineCount(handle);
    if (SeekFileLine(handle, 1) != 1)
        return false;
    OpenTempFile();
    if (!TempFile_.valid)
        return false;
    for (std::int32_t number = 1; number <= count; ++number) {
        std::int32_t next = -1;
        const Text old = ReadFileLine(handle, next);
        const bool here = number == line;
        if (here && (edit == Edit::Change || (edit == Edit::Insert && position == 1)))
            WriteFileLine(TempFile_, text);
        if (!here || edit == Edit::Insert)
            WriteFileLine(TempFile_, old);
        if (here && edit == Edit::Insert && position == 2)
            WriteFileLine(TempFile_, text);
    }
    const std::int32_t expected = count + (edit == Edit::Insert ? 1 : edit == Edit::Delete ? -1 : 0);
    if (FileLineCount(TempFile_) != expected) {
        CloseFile(TempFile_);
        return false;
    }
    ReplaceWithTempFile(handle);
    return true;
}

void LineFiles::OpenTempFile() {
    Chance_.Seed(Seconds_);
    Text name;
    do {
        CloseFile(TempFile_);
        name = Folder_;
        for (int digit = 0; digit < 8; ++digit)
            name += static_cast<char16_t>(u'0' + static_cast<int>(Chance_.Next() * 10));
        name += u".txt";
        OpenFile(TempFile_, name, u"r", u"temp", u"temp");
    } while (TempFile_.valid);
    OpenFile(TempFile_, name, u"w", u"temp", u"temp");
}

void LineFiles::ReplaceWithTempFile(FileHandle& handle) {
    const FileHandle old = handle;
    const Text scratch = TempFile_.path + TempFile_.name;
    CloseFile(TempFile_);
    CloseFile(handle);
    Files_.CopyFile(scratch, old.path + old.name);
    Files_.DeleteFile(scratch);
    OpenFile(handle, old.path + old.name, u"a", old.fileType, old.creator);
    SeekFileLine(handle, old.nextLine);
}

bool LineFiles::DeleteFile(const Text& fullName) {
    FileHandle handle;
    OpenFile(handle, fullName, u"r", u"", u"");
    if (!handle.valid)
        return false;
    const FileHandle found = handle;
    CloseFile(handle);
    if (found.isDatabase)
        return Databases_.Delete(found.name) == NoError;
    return Files_.DeleteFile(found.path + found.name) == NoError;
}

} // namespace reference
