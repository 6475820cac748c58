// SPDX-License-Identifier: MIT
#include "tests/reference/course.h"
#include "tests/reference/line_files_reference.h"
#include "tests/reference/storage_comparison.h"
#include "tests/reference/storage_device.h"

namespace reference {

namespace {

using Kind = StorageDevice::Kind;

const char* const Pieces[] = {"", "a", "\n", "b|", "\r", "\r\n", "\n\n", "\xFF", "\xC3\xA4", "\xC3", "long line\n"};
const Text Texts[] = {u"", u"a", u"b|c", u"\r", u"x\r", u"\n", u"a\nb", Text(1, 0xDCC3), u"ä", u"a longer text"};
const Text Names[] = {u".\\Quorin\\a.txt", u".\\Quorin\\b.txt", u".\\Quorin\\a.pdb", u"none"};

std::string SomeBytes(Choices& choices) {
    std::string bytes;
    for (std::uint32_t left = choices.Below(20); left > 0; --left)
        bytes += choices.Of(Pieces);
    return bytes;
}

std::string Number(std::int64_t number) {
    return std::string(1, ' ') + std::to_string(number);
}

std::string Shown(const FileHandle& handle) {
    std::string shown = Number(handle.slot) + Number(handle.isDatabase) + Number(handle.recordNumber) +
                        Number(handle.nextLine) + Number(handle.valid);
    for (const Text& text : {handle.path, handle.name, handle.mode, handle.fileType, handle.creator})
        shown.append(" ").append(modStringTools::ToBytes(text));
    return shown;
}

/// Both forms, side by side.
class Case {
public:
    Case(Choices& choices, Kind kind)
        : Chosen(choices), OnDisk(kind == Kind::OnDisk), Device(StorageDevice::Fresh(kind)),
          Literal(Disk, Numbers, 0, u".\\Quorin\\") {}

    std::string Run() {
        for (const Text& name : {Names[0], Names[1]}) {
            if (Chosen.OneIn(3))
                continue;
            const std::string bytes = SomeBytes(Chosen);
            SoFar.Note(modStringTools::ToBytes(name) + " = [" + bytes + "]");
            Device.Put(name, bytes);
            Disk.Put(name, bytes);
        }
        Open(0);
        for (std::uint32_t left = 1 + Chosen.Below(7); left > 0 && SoFar.Agrees(); --left)
            Step();
        for (int which : {0, 1}) {
            modFileSystem::CloseFile(Handles[which]);
            Literal.CloseFile(LiteralHandles[which]);
        }
        SoFar.Expect(Device.Shown(), Disk.Shown());
        return SoFar.Difference();
    }

private:
    /// On a real disk two handles stand on two files: what a file's time can't tell is no matter of the forms.
    Text Name(int which) {
        if (OnDisk)
            return Chosen.OneIn(6) ? Names[2 + which] : Names[which];
        return Chosen.OneIn(2) ? Names[0] : Chosen.Of(Names);
    }

    void Open(int which) {
        const Text name = Name(which);
        const Text modes[] = {u"a", u"w", u"r"};
        // Who opens a database for reading must not write to it.
        const Text& mode = modes[Chosen.Below(name == Names[2] ? 2 : 3)];
        SoFar.Note("open " + std::to_string(which) + " " + modStringTools::ToBytes(name + u" " + mode));
        modFileSystem::CloseFile(Handles[which]);
        Literal.CloseFile(LiteralHandles[which]);
        modFileSystem::OpenFile(Handles[which], name, mode, u"TEXT", u"QVRN");
        Literal.OpenFile(LiteralHandles[which], name, mode, u"TEXT", u"QVRN");
        if (name == Names[2] && Handles[which].valid && LiteralHandles[which].valid)
            Fill(which);
        SoFar.Expect(Shown(Handles[which]), Shown(LiteralHandles[which]));
    }

    void Fill(int which) {
        for (std::uint32_t left = Chosen.Below(6); left > 0; --left) {
            const Text& text = Chosen.Of(Texts);
            SoFar.Note("write [" + modStringTools::ToBytes(text) + "]");
            modFileSystem::WriteFileLine(Handles[which], text);
            Literal.WriteFileLine(LiteralHandles[which], text);
        }
    }

    void Step() {
        const int which = Chosen.OneIn(3) ? 1 : 0;
        const std::uint32_t what = Chosen.Below(10);
        if (what == 9)
            return Open(which);
        Line = Chosen.OneIn(4) ? static_cast<std::int32_t>(Chosen.Below(9)) - 2
                               : 1 + static_cast<std::int32_t>(Chosen.Below(6));
        Position = Chosen.OneIn(8) ? 3 : 1 + static_cast<std::int32_t>(Chosen.Below(2));
        Words = Chosen.Of(Texts);
        SoFar.Note("step " + std::to_string(what) + " on " + std::to_string(which) + ", line" + Number(Line) +
                   ", position" + Number(Position) + ", [" + modStringTools::ToBytes(Words) + "]");
        if (OnDisk && what == 8) { // on a real disk a file that is open gets its text when it is closed, deleted or not
            modFileSystem::CloseFile(Handles[0]);
            Literal.CloseFile(LiteralHandles[0]);
        }
        const std::string product = Product(Handles[which], what);
        const std::string literal = ByTheLetter(LiteralHandles[which], what);
        SoFar.Expect(product + Shown(Handles[which]), literal + Shown(LiteralHandles[which]));
    }

    std::string Product(FileHandle& handle, std::uint32_t what) {
        using namespace modFileSystem;
        std::int32_t line = what == 1 ? -1 : Line;
        switch (what) {
        case 0:
            return Number(SeekFileLine(handle, line));
        case 1:
        case 2: {
            const Text text = ReadFileLine(handle, line);
            return Number(line) + modStringTools::ToBytes(text);
        }
        case 3:
            return Number(WriteFileLine(handle, Words));
        case 4:
            return Number(FileLineCount(handle));
        case 5:
            return Number(ChangeFileLine(handle, line, Words));
        case 6:
            return Number(DeleteFileLine(handle, line));
        case 7:
            return Number(InsertFileLine(handle, line, modFileSystem::InsertPosition{Position}, Words));
        default:
            return Position == 3 ? Number(DeleteFile(Names[0])) : std::string();
        }
    }

    std::string ByTheLetter(FileHandle& handle, std::uint32_t what) {
        std::int32_t line = what == 1 ? -1 : Line;
        switch (what) {
        case 0:
            return Number(Literal.SeekFileLine(handle, line));
        case 1:
        case 2: {
            const Text text = Literal.ReadFileLine(handle, line);
            return Number(line) + modStringTools::ToBytes(text);
        }
        case 3:
            return Number(Literal.WriteFileLine(handle, Words));
        case 4:
            return Number(Literal.FileLineCount(handle));
        case 5:
            return Number(Literal.ChangeFileLine(handle, line, Words));
        case 6:
            return Number(Literal.DeleteFileLine(handle, line));
        case 7:
            return Number(Literal.InsertFileLine(handle, line, Position, Words));
        default:
            return Position == 3 ? Number(Literal.DeleteFile(Names[0])) : std::string();
        }
    }

    Choices& Chosen;
    bool OnDisk;
    StorageDevice& Device;
    MemoryDisk Disk;
    QuickNumbers Numbers;
    LineFiles Literal;
    FileHandle Handles[2];
    FileHandle LiteralHandles[2];
    std::int32_t Line = 0;
    std::int32_t Position = 0;
    Text Words;
    Course SoFar;
};

} // namespace

std::string CompareLineFiles(Choices& choices) {
    return Case(choices, Kind::InMemory).Run();
}

std::string CompareLineFilesOnDisk(Choices& choices) {
    return Case(choices, Kind::OnDisk).Run();
}

} // namespace reference
