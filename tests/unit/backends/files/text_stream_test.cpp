// SPDX-License-Identifier: MIT
// What is particular to the stream: blocks, other writers, a full disk. The suite of files tests lines.
#include "backends/files/text_stream.h"

#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/full_disk.h"
#include "tests/unit/backends/files/skipped_lines.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using namespace platform;
using backends::HostTextStream;

namespace {

class TextStreamTest : public testing::Test {
protected:
    std::unique_ptr<TextStream> Open(StreamMode mode = StreamMode::Existing) {
        std::unique_ptr<TextStream> stream;
        EXPECT_EQ(HostTextStream::Open(Finding("x.txt"), mode, stream), NoError);
        return stream;
    }
    HostTextStream::FindEntry Finding(const std::string& name) const {
        return [path = Root.Path(name)](backends::FileEntry& entry) { return EntryAt(path, entry); };
    }
    void Add(std::string_view bytes) { std::ofstream(Root.Path("x.txt"), std::ios::binary | std::ios::app) << bytes; }

    TemporaryRoot Root;
};

TEST_F(TextStreamTest, PutsALineTogetherWhereverABlockEnds) {
    for (const std::size_t first : {65530U, 65533U, 65534U, 65535U, 65536U, 65537U}) {
        Root.Put("x.txt", std::string(first, 'a') + "\r\n" + std::string(first, 'b') + "\nend");
        const auto stream = Open();
        Text line;
        ASSERT_EQ(stream->ReadLine(line), NoError);
        EXPECT_EQ(line, Text(first, u'a')) << first;
        ASSERT_EQ(stream->ReadLine(line), NoError);
        EXPECT_EQ(line, Text(first, u'b')) << first;
        EXPECT_EQ(Skipped(*stream, 5), 1) << first;
    }
}

TEST_F(TextStreamTest, ReadsALineThatIsLongerThanManyBlocks) {
    Root.Put("x.txt", "a\n" + std::string(1000000, 'x') + "\nb\n");
    const auto stream = Open();
    Text line;
    EXPECT_EQ(Skipped(*stream, 1), 1);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line.size(), 1000000U);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"b");
}

/// No row of a table is as long as this line. The files have holes, so they need no space on the disk.
TEST_F(TextStreamTest, RefusesALongLineAndNotALongFile) {
    constexpr std::uintmax_t Longest = 64U * 1024U * 1024U;
    Root.Put("x.txt", "a\n");
    std::filesystem::resize_file(Root.Path("x.txt"), 2 + Longest);
    std::int64_t passed = 0;
    EXPECT_EQ(Open()->SkipLines(10, passed), NoError);
    EXPECT_EQ(passed, 2);
    std::filesystem::resize_file(Root.Path("x.txt"), 2 + Longest + 1);
    EXPECT_EQ(Open()->SkipLines(1, passed), NoError);
    EXPECT_EQ(Open()->SkipLines(10, passed), TooLong);
    const auto stream = Open();
    Text line;
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(stream->ReadLine(line), TooLong);
    EXPECT_EQ(line, u"");
    std::string_view lines;
    EXPECT_EQ(stream->ReadLines(1, lines, passed), TooLong);

    std::ofstream(Root.Path("x.txt"), std::ios::in | std::ios::out).seekp(1U << 25U) << '\n';
    EXPECT_EQ(Open()->SkipLines(10, passed), NoError);
    EXPECT_EQ(passed, 3);
}

/// Reading, skipping and seeking in any order return the same lines as a split of the bytes.
TEST_F(TextStreamTest, AgreesWithTheLinesCutByHand) {
    std::mt19937 chance(7);
    std::string bytes;
    std::vector<std::int64_t> starts;
    for (int line = 0; line < 3000; ++line) {
        starts.push_back(static_cast<std::int64_t>(bytes.size()));
        bytes += std::string(chance() % 200, static_cast<char>('a' + line % 26)) + "\n";
    }
    starts.push_back(static_cast<std::int64_t>(bytes.size()));
    Root.Put("x.txt", bytes);
    const auto stream = Open();
    for (int turn = 0; turn < 5000; ++turn) {
        const std::size_t from = chance() % 3000;
        const std::size_t skip = std::min<std::size_t>(chance() % 700, 3000 - from);
        ASSERT_EQ(stream->Seek(starts[from], Origin::Start), NoError);
        ASSERT_EQ(Skipped(*stream, static_cast<std::int64_t>(skip)), static_cast<std::int64_t>(skip));
        ASSERT_EQ(stream->Position(), starts[from + skip]);
        Text line;
        const bool atEnd = from + skip == 3000;
        ASSERT_EQ(stream->ReadLine(line), atEnd ? FileNotFound : NoError);
        const auto length = atEnd ? 0 : starts[from + skip + 1] - starts[from + skip] - 1;
        ASSERT_EQ(line, Text(static_cast<std::size_t>(length), static_cast<char16_t>('a' + (from + skip) % 26)));
    }
}

TEST_F(TextStreamTest, TakesEveryLineWhereverABlockEnds) {
    for (const std::size_t first : {65530U, 65534U, 65535U, 65536U, 65537U, 200000U}) {
        Root.Put("x.txt", "a\n" + std::string(first, 'x') + "\r\nb\nend");
        const auto stream = Open();
        std::string all;
        std::string_view lines;
        for (std::int64_t taken = 1; taken > 0; all += lines)
            ASSERT_EQ(stream->ReadLines(9, lines, taken), NoError);
        EXPECT_EQ(all, "a\n" + std::string(first, 'x') + "\nb\nend\n") << first;
    }
}

/// Two streams of this program on one file: one reads at once what the other writes, without waiting for the file's
/// time to change.
TEST_F(TextStreamTest, SeesAtOnceWhatThisProgramWritesInTheSameFile) {
    Root.Put("x.txt", "one\ntwo\nthree\n");
    const auto reader = Open();
    const auto writer = Open(StreamMode::Scratch);
    Root.Put("x.txt", "one\ntwo\nthree\n");
    Text line;
    for (const char16_t* next : {u"TWO", u"THREE"}) {
        ASSERT_EQ(reader->ReadLine(line), NoError);
        ASSERT_EQ(writer->Seek(reader->Position(), Origin::Start), NoError);
        ASSERT_EQ(writer->WriteLine(next), NoError);
        ASSERT_EQ(writer->WriteLine(u"more"), NoError); // the time of a file may stay the same, but its size changes
        ASSERT_EQ(reader->Seek(reader->Position(), Origin::Start), NoError);
        ASSERT_EQ(reader->ReadLine(line), NoError);
        EXPECT_EQ(line, next);
    }
}

TEST_F(TextStreamTest, GoesOnReadingWhatAnotherWriterChangesATickLater) {
    Root.Put("x.txt", "one\ntwo\n");
    const auto stream = Open();
    Text line;
    ASSERT_EQ(stream->ReadLine(line), NoError);
    Root.Put("x.txt", "one\nsix\nmore\n");
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    ASSERT_EQ(stream->Seek(stream->Position(), Origin::Start), NoError);
    ASSERT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"six");
}

TEST_F(TextStreamTest, WritesTheLinesThatAFullDiskHasRoomFor) {
    Root.Put("from.txt", "one\ntwo\nthree\n");
    std::unique_ptr<TextStream> from;
    ASSERT_EQ(HostTextStream::Open(Finding("from.txt"), StreamMode::Existing, from), NoError);
    std::string_view lines;
    std::int64_t taken = 0;
    ASSERT_EQ(from->ReadLines(3, lines, taken), NoError);
    const auto stream = Open(StreamMode::Scratch);
    {
        const FullDisk full(10);
        EXPECT_EQ(stream->WriteLines(lines), DiskFull);
    }
    EXPECT_EQ(Root.Bytes("x.txt"), "one\ntwo\n");
    EXPECT_EQ(stream->Position(), 8);
}

TEST_F(TextStreamTest, SeesFromTheNextSeekOnWhatAnotherWriterChanged) {
    Root.Put("x.txt", "one\n");
    const auto stream = Open();
    Text line;
    ASSERT_EQ(stream->ReadLine(line), NoError);
    Root.Put("x.txt", "two\n");
    const auto time = std::filesystem::last_write_time(Root.Path("x.txt"));
    std::filesystem::last_write_time(Root.Path("x.txt"), time + std::chrono::seconds(1));
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    ASSERT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"two");
}

TEST_F(TextStreamTest, EndsWhereAnotherWriterCutTheFile) {
    Root.Put("x.txt", std::string(200000, 'x') + "\nlast\n");
    const auto stream = Open();
    std::filesystem::resize_file(Root.Path("x.txt"), 10);
    Text line;
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, Text(10, u'x'));
    EXPECT_EQ(stream->ReadLine(line), FileNotFound);
    EXPECT_EQ(stream->Position(), stream->Size());
}

TEST_F(TextStreamTest, LeavesNoHalfLineOnAFullDisk) {
    Root.Put("x.txt", "one\n");
    const auto stream = Open();
    ASSERT_EQ(stream->Seek(0, Origin::End), NoError);
    {
        const FullDisk full(10);
        EXPECT_EQ(stream->WriteLine(u"does not fit any more"), DiskFull);
        EXPECT_EQ(stream->Position(), 4);
        EXPECT_EQ(stream->Size(), 4);
    }
    EXPECT_EQ(stream->WriteLine(u"two"), NoError);
    EXPECT_EQ(stream->Close(), DiskFull) << "a line is missing";
    EXPECT_EQ(Root.Bytes("x.txt"), "one\n");
    EXPECT_EQ(Root.Entries(), 1) << "something was left beside it";
}

TEST_F(TextStreamTest, KeepsOneBlockOfAFileOfAHundredMegabytes) {
    Root.Put("x.txt", "one\n");
    for (const std::uintmax_t size : {50'000'000U, 100'000'000U}) { // holes: zero bytes without a line end
        std::filesystem::resize_file(Root.Path("x.txt"), size);
        Add("\n");
    }
    Add("last\n");
    const auto stream = Open();
    EXPECT_EQ(Skipped(*stream, 3), 3);
    EXPECT_EQ(stream->Position(), 100'000'001);
    Text line;
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"last");
}

} // namespace
