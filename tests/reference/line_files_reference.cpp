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
        while (slot < 6 && SlotState.at(static_cast<std::size_t>(slot)) != 0)
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
        state = Databases.Open(handle.name, DatabaseMode::Read).Id;
    if (handle.mode == u"a")
        state = Databases.Open(handle.name, DatabaseMode::ReadWrite).Id;
    if (handle.mode == u"w")
        Databases.Delete(handle.name);
    if (handle.mode != u"r" && state == 0) {
        state =
            Databases
                .Create(handle.name, modFileSystem::PackCode(handle.fileType), modFileSystem::PackCode(handle.creator))
                .Id;
        handle.recordNumber = 0;
    }
}

void LineFiles::OpenText(FileHandle& handle) {
    auto& stream = SlotStream.at(static_cast<std::size_t>(handle.slot));
    const Text fullName = handle.path + handle.name;
    stream.reset();
    if (handle.mode == u"w") {
        Files.OpenStream(fullName, StreamMode::Create, stream);
        handle.nextLine = 1;
    } else {
        Files.OpenStream(fullName, StreamMode::Existing, stream);
    }
    if (handle.mode == u"a") {
        if (!stream)
            Files.OpenStream(fullName, StreamMode::Create, stream);
        handle.valid = true; // for the count
        handle.nextLine = FileLineCount(handle) + 1;
        stream->Seek(0, Origin::End);
    }
    State(handle) = stream ? -1 : 0;
}

void LineFiles::CloseFile(FileHandle& handle) {
    if (handle.valid) {
        if (handle.isDatabase)
            Databases.Close(State(handle));
        else
            SlotStream.at(static_cast<std::size_t>(handle.slot)).reset();
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
        handle.recordNumber = Databases.RecordCount(State(handle)) + 1;
        Databases.AddRecord(State(handle));
        Databases.WriteRecord(State(handle), {handle.recordNumber, text});
        Databases.Commit(State(handle));
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
        const bool found = Databases.FindRecord(State(handle), line) == NoError;
        handle.recordNumber = found ? Databases.Position(State(handle)) + 1 : 0;
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
        if (Databases.ReadRecord(State(handle), record) && record.LineNumber == line) {
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
    if (!Databases.ReadRecord(State(handle), record) || record.LineNumber != line)
        return false;
    Databases.BeginEdit(State(handle));
    Databases.WriteRecord(State(handle), {line, text});
    Databases.Commit(State(handle));
    return true;
}

bool LineFiles::DeleteFileLine(FileHandle& handle, std::int32_t line) {
    if (SeekFileLine(handle, line) == 0)
        return false;
    if (!handle.isDatabase)
        return Rewrite(handle, Edit::Delete, line, 0, u"");
    LineRecord record;
    if (!Databases.ReadRecord(State(handle), record) || record.LineNumber != line)
        return false;
    if (Databases.DeleteRecord(State(handle)) != NoError)
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
    Databases.AddRecord(id);
    Databases.WriteRecord(id, {0, u""});
    Databases.Commit(id);
    Databases.MoveLast(id);
    for (std::int32_t number = Databases.RecordCount(id); number >= target + 1; --number) {
        LineRecord record;
        Databases.MovePrevious(id);
        if (!Databases.ReadRecord(id, record))
            return false;
        ++record.LineNumber;
        Databases.MoveNext(id);
        Databases.BeginEdit(id);
        Databases.WriteRecord(id, record);
        Databases.Commit(id);
        Databases.MovePrevious(id);
    }
    Databases.BeginEdit(id);
    Databases.WriteRecord(id, {target, text});
    Databases.Commit(id);
    return true;
}

void LineFiles::RenumberDatabaseLines(FileHandle& handle) {
    const DatabaseId id = State(handle);
    std::int32_t number = 1;
    Databases.MoveFirst(id);
    while (!Databases.AtEnd(id)) {
        LineRecord record;
        if (Databases.ReadRecord(id, record) && record.LineNumber != number) {
            Databases.BeginEdit(id);
            record.LineNumber = number;
            Databases.WriteRecord(id, record);
            Databases.Commit(id);
        }
        ++number;
        Databases.MoveNext(id);
    }
}

std::int32_t LineFiles::FileLineCount(FileHandle& handle) {
    if (!handle.valid)
        return 0;
    if (handle.isDatabase)
        return Databases.RecordCount(State(handle));
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
    if (!TempFile.valid)
        return false;
    for (std::int32_t number = 1; number <= count; ++number) {
        std::int32_t next = -1;
        const Text old = ReadFileLine(handle, next);
        const bool here = number == line;
        if (here && (edit == Edit::Change || (edit == Edit::Insert && position == 1)))
            WriteFileLine(TempFile, text);
        if (!here || edit == Edit::Insert)
            WriteFileLine(TempFile, old);
        if (here && edit == Edit::Insert && position == 2)
            WriteFileLine(TempFile, text);
    }
    const std::int32_t expected = count + (edit == Edit::Insert ? 1 : edit == Edit::Delete ? -1 : 0);
    if (FileLineCount(TempFile) != expected) {
        CloseFile(TempFile);
        return false;
    }
    ReplaceWithTempFile(handle);
    return true;
}

void LineFiles::OpenTempFile() {
    Chance.Seed(Seconds);
    Text name;
    do {
        CloseFile(TempFile);
        name = Folder;
        for (int digit = 0; digit < 8; ++digit)
            name += static_cast<char16_t>(u'0' + static_cast<int>(Chance.Next() * 10));
        name += u".txt";
        OpenFile(TempFile, name, u"r", u"temp", u"temp");
    } while (TempFile.valid);
    OpenFile(TempFile, name, u"w", u"temp", u"temp");
}

void LineFiles::ReplaceWithTempFile(FileHandle& handle) {
    const FileHandle old = handle;
    const Text scratch = TempFile.path + TempFile.name;
    CloseFile(TempFile);
    CloseFile(handle);
    Files.CopyFile(scratch, old.path + old.name);
    Files.DeleteFile(scratch);
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
        return Databases.Delete(found.name) == NoError;
    return Files.DeleteFile(found.path + found.name) == NoError;
}

} // namespace reference
