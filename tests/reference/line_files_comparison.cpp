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
        : Chosen_(choices), OnDisk_(kind == Kind::OnDisk), Device_(StorageDevice::Fresh(kind)),
          Literal_(Disk_, Numbers_, 0, u".\\Quorin\\") {}

    std::string Run() {
        for (const Text& name : {Names[0], Names[1]}) {
            if (Chosen_.OneIn(3))
                continue;
            const std::string bytes = SomeBytes(Chosen_);
            SoFar_.Note(modStringTools::ToBytes(name) + " = [" + bytes + "]");
            Device_.Put(name, bytes);
            Disk_.Put(name, bytes);
        }
        Open(0);
        for (std::uint32_t left = 1 + Chosen_.Below(7); left > 0 && SoFar_.Agrees(); --left)
            Step();
        for (int which : {0, 1}) {
            modFileSystem::CloseFile(Handles_[which]);
            Literal_.CloseFile(LiteralHandles_[which]);
        }
        SoFar_.Expect(Device_.Shown(), Disk_.Shown());
        return SoFar_.Difference();
    }

private:
    /// Returns a name for a handle. On a real disk the two handles never have the same file: a change that the file's
    /// time does not show is not what these cases compare.
    Text Name(int which) {
        if (OnDisk_)
            return Chosen_.OneIn(6) ? Names[2 + which] : Names[which];
        return Chosen_.OneIn(2) ? Names[0] : Chosen_.Of(Names);
    }

    void Open(int which) {
        const Text name = Name(which);
        const Text modes[] = {u"a", u"w", u"r"};
        // A database that is opened for reading must not be written to.
        const Text& mode = modes[Chosen_.Below(name == Names[2] ? 2 : 3)];
        SoFar_.Note("open " + std::to_string(which) + " " + modStringTools::ToBytes(name + u" " + mode));
        modFileSystem::CloseFile(Handles_[which]);
        Literal_.CloseFile(LiteralHandles_[which]);
        modFileSystem::OpenFile(Handles_[which], name, mode, u"TEXT", u"QVRN");
        Literal_.OpenFile(LiteralHandles_[which], name, mode, u"TEXT", u"QVRN");
        if (name == Names[2] && Handles_[which].valid && LiteralHandles_[which].valid)
            Fill(which);
        SoFar_.Expect(Shown(Handles_[which]), Shown(LiteralHandles_[which]));
    }

    void Fill(int which) {
        for (std::uint32_t left = Chosen_.Below(6); left > 0; --left) {
            const Text& text = Chosen_.Of(Texts);
            SoFar_.Note("write [" + modStringTools::ToBytes(text) + "]");
            modFileSystem::WriteFileLine(Handles_[which], text);
            Literal_.WriteFileLine(LiteralHandles_[which], text);
        }
    }

    void Step() {
        const int which = Chosen_.OneIn(3) ? 1 : 0;
        const std::uint32_t what = Chosen_.Below(10);
        if (what == 9)
            return Open(which);
        Line_ = Chosen_.OneIn(4) ? static_cast<std::int32_t>(Chosen_.Below(9)) - 2
                                 : 1 + static_cast<std::int32_t>(Chosen_.Below(6));
        Position_ = Chosen_.OneIn(8) ? 3 : 1 + static_cast<std::int32_t>(Chosen_.Below(2));
        Words_ = Chosen_.Of(Texts);
        SoFar_.Note("step " + std::to_string(what) + " on " + std::to_string(which) + ", line" + Number(Line_) +
                    ", position" + Number(Position_) + ", [" + modStringTools::ToBytes(Words_) + "]");
        if (OnDisk_ &&
            what == 8) { // on a real disk a file that is open gets its text when it is closed, deleted or not
            modFileSystem::CloseFile(Handles_[0]);
            Literal_.CloseFile(LiteralHandles_[0]);
        }
        const std::string product = Product(Handles_[which], what);
        const std::string literal = ByTheLetter(LiteralHandles_[which], what);
        SoFar_.Expect(product + Shown(Handles_[which]), literal + Shown(LiteralHandles_[which]));
    }

    std::string Product(FileHandle& handle, std::uint32_t what) {
        using namespace modFileSystem;
        std::int32_t line = what == 1 ? -1 : Line_;
        switch (what) {
        case 0:
            return Number(SeekFileLine(handle, line));
        case 1:
        case 2: {
            const Text text = ReadFileLine(handle, line);
            return Number(line) + modStringTools::ToBytes(text);
        }
        case 3:
            return Number(WriteFileLine(handle, Words_));
        case 4:
            return Number(FileLineCount(handle));
        case 5:
            return Number(ChangeFileLine(handle, line, Words_));
        case 6:
            return Number(DeleteFileLine(handle, line));
        case 7:
            return Number(InsertFileLine(handle, line, modFileSystem::InsertPosition{Position_}, Words_));
        default:
            return Position_ == 3 ? Number(DeleteFile(Names[0])) : std::string();
        }
    }

    std::string ByTheLetter(FileHandle& handle, std::uint32_t what) {
        std::int32_t line = what == 1 ? -1 : Line_;
        switch (what) {
        case 0:
            return Number(Literal_.SeekFileLine(handle, line));
        case 1:
        case 2: {
            const Text text = Literal_.ReadFileLine(handle, line);
            return Number(line) + modStringTools::ToBytes(text);
        }
        case 3:
            return Number(Literal_.WriteFileLine(handle, Words_));
        case 4:
            return Number(Literal_.FileLineCount(handle));
        case 5:
            return Number(Literal_.ChangeFileLine(handle, line, Words_));
        case 6:
            return Number(Literal_.DeleteFileLine(handle, line));
        case 7:
            return Number(Literal_.InsertFileLine(handle, line, Position_, Words_));
        default:
            return Position_ == 3 ? Number(Literal_.DeleteFile(Names[0])) : std::string();
        }
    }

    Choices& Chosen_;
    bool OnDisk_;
    StorageDevice& Device_;
    MemoryDisk Disk_;
    QuickNumbers Numbers_;
    LineFiles Literal_;
    FileHandle Handles_[2];
    FileHandle LiteralHandles_[2];
    std::int32_t Line_ = 0;
    std::int32_t Position_ = 0;
    Text Words_;
    Course SoFar_;
};

} // namespace

std::string CompareLineFiles(Choices& choices) {
    return Case(choices, Kind::InMemory).Run();
}

std::string CompareLineFilesOnDisk(Choices& choices) {
    return Case(choices, Kind::OnDisk).Run();
}

} // namespace reference
