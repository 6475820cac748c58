// SPDX-License-Identifier: MIT
#include "backends/files/text_stream.h"
#include "tests/reference/course.h"
#include "tests/reference/storage_comparison.h"
#include "tests/reference/storage_device.h"

#include <fstream>
#include <iterator>

namespace reference {

namespace {

using namespace platform;

const char* const Pieces[] = {"", "a", "\n", "\r", "\r\n", "\r\r\n", "\xFF", "\xC3\xA4", "\xE2\x82", "some text\n"};
const Text Texts[] = {u"", u"a", u"\r", u"x\r", u"a\nb", Text(1, 0xDCE2), u"€"};

std::string SomeBytes(Choices& choices) {
    std::string bytes;
    if (choices.OneIn(64)) // a block and a little more or less
        bytes.assign(65500 + choices.Below(60), choices.OneIn(2) ? '\n' : 'x');
    for (std::uint32_t left = choices.Below(choices.OneIn(8) ? 400 : 12); left > 0; --left)
        bytes += choices.Of(Pieces);
    return bytes;
}

class Case {
public:
    explicit Case(Choices& choices)
        : Chosen_(choices),
          Path_((StorageDevice::Fresh(StorageDevice::Kind::InMemory).Folder() / "stream.txt").string()), Files_(Disk_) {
    }

    std::string Run() {
        const std::string bytes = SomeBytes(Chosen_);
        std::ofstream(Path_, std::ios::binary) << bytes;
        Disk_.Put(u".\\x", bytes);
        SoFar_.Note("[" + bytes + "]");
        const auto find = [this](backends::FileEntry& entry) { return backends::EntryAt(Path_, entry); };
        backends::HostTextStream::Open(find, StreamMode::Existing, Stream_);
        Files_.OpenStream(u".\\x", StreamMode::Existing, Literal_);
        for (std::uint32_t left = 1 + Chosen_.Below(8); left > 0 && SoFar_.Agrees(); --left)
            Step();
        Stream_->Close();
        std::ifstream written(Path_, std::ios::binary);
        SoFar_.Expect({std::istreambuf_iterator<char>(written), {}}, Disk_.Files[u".\\x"]->Bytes);
        return SoFar_.Difference();
    }

private:
    void Step() {
        const std::uint32_t what = Chosen_.Below(6);
        const std::int64_t most = Chosen_.OneIn(3) ? Chosen_.Below(1000) : Chosen_.Below(4);
        const Text text = Chosen_.Of(Texts);
        const std::int64_t place = Chosen_.Below(static_cast<std::uint32_t>(Literal_->Size()) + 2);
        const Origin origin = Chosen_.OneIn(3) ? Origin::End : Origin::Start;
        SoFar_.Note("step " + std::to_string(what) + ", most " + std::to_string(most) + ", place " +
                    std::to_string(place) + ", [" + modStringTools::ToBytes(text) + "]");
        std::string product;
        std::string literal;
        Literal_->Seek(Literal_->Position(), Origin::Start);
        switch (what) {
        case 0:
            product = std::to_string(NumberOf(Stream_->Seek(origin == Origin::End ? -place : place, origin)));
            literal = std::to_string(NumberOf(Literal_->Seek(origin == Origin::End ? -place : place, origin)));
            break;
        case 1:
            product = Line(*Stream_);
            literal = Line(*Literal_);
            break;
        case 2:
            product = Skipped(*Stream_, most);
            literal = Skipped(*Literal_, most);
            break;
        case 3:
            product = std::to_string(NumberOf(Stream_->WriteLine(text)));
            literal = std::to_string(NumberOf(Literal_->WriteLine(text)));
            break;
        default:
            Take(most, product, literal);
        }
        for (auto [of, to] : {std::pair(Stream_.get(), &product), std::pair(Literal_.get(), &literal)})
            *to += " at " + std::to_string(of->Position()) + " of " + std::to_string(of->Size());
        SoFar_.Expect(product, literal);
    }

    static std::string Line(TextStream& stream) {
        Text line;
        const ErrorNumber error = stream.ReadLine(line);
        return std::to_string(NumberOf(error)) + modStringTools::ToBytes(line);
    }

    static std::string Skipped(TextStream& stream, std::int64_t most) {
        std::int64_t passed = 0;
        const ErrorNumber error = stream.SkipLines(most, passed);
        return std::to_string(NumberOf(error)) + " " + std::to_string(passed);
    }

    /// ReadLines may return any number of lines up to `most`, but at least one if there is one. The literal form reads
    /// and writes as many, one by one.
    void Take(std::int64_t most, std::string& product, std::string& literal) {
        std::string_view lines;
        std::int64_t taken = 0;
        const ErrorNumber error = Stream_->ReadLines(most, lines, taken);
        product = std::to_string(NumberOf(error)) + (taken <= most ? "" : "too many") + std::string(lines);
        literal = "0";
        const bool isMore = most > 0 && Literal_->Position() < Literal_->Size();
        if (isMore && taken == 0)
            literal += " there is a line";
        MemoryDisk scratch;
        MemoryFiles files(scratch);
        std::unique_ptr<TextStream> copy;
        files.OpenStream(u".\\s", StreamMode::Create, copy);
        for (std::int64_t i = 0; i < taken; ++i) {
            Text line;
            Literal_->ReadLine(line);
            copy->WriteLine(line);
        }
        literal += scratch.Files[u".\\s"]->Bytes;
        if (taken == 0 || !Chosen_.OneIn(4))
            return;
        Stream_->WriteLines(lines);
        Literal_->WriteLines(scratch.Files[u".\\s"]->Bytes);
    }

    Choices& Chosen_;
    std::string Path_;
    MemoryDisk Disk_;
    MemoryFiles Files_;
    std::unique_ptr<TextStream> Stream_;
    std::unique_ptr<TextStream> Literal_;
    Course SoFar_;
};

} // namespace

std::string CompareStreams(Choices& choices) {
    return Case(choices).Run();
}

} // namespace reference
