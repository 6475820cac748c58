// SPDX-License-Identifier: MIT
// Random operations on a line file, compared with a plain list of lines that performs each step literally.
#include "src/storage/line_files.h"

#include "src/storage/settings.h"
#include "tests/reference/agreement.h"
#include "tests/support/test_device.h"
#include "tests/unit/src/storage/line_kinds.h"

#include <gtest/gtest.h>

#include <random>

namespace modFileSystem {
namespace {

/// What the operations on a file of these lines must return. Every seek starts at the first line.
struct LiteralLines {
    bool IsDatabase;
    std::vector<Text> Lines;
    std::int32_t NextLine = 0;

    std::int32_t Count() {
        const auto count = static_cast<std::int32_t>(Lines.size());
        if (!IsDatabase)
            NextLine = count + 1;
        return count;
    }
    std::int32_t Seek(std::int32_t line) {
        if (line < 1)
            return 0;
        std::int32_t counter = 1;
        std::size_t position = 0;
        while (counter < line && position < Lines.size()) {
            ++position;
            ++counter;
        }
        if (position == Lines.size())
            counter = 0;
        NextLine = counter;
        return counter;
    }
    Text Read(std::int32_t& line) {
        if (line == -1)
            line = NextLine;
        if (Seek(line) == 0)
            return {};
        NextLine = line + 1;
        return Lines[static_cast<std::size_t>(line) - 1];
    }
    std::int32_t Write(const Text& text) {
        Lines.push_back(text);
        if (!IsDatabase)
            ++NextLine;
        return static_cast<std::int32_t>(text.size());
    }
    void ReopenAfterRewrite(std::int32_t line, std::int32_t count) {
        // The rewrite has read all lines, so the position that is sought again is past the old end.
        if (IsDatabase) {
            NextLine = line;
            return;
        }
        NextLine = count + 1;
        Seek(NextLine);
    }
    bool Change(std::int32_t line, const Text& text) {
        if (Seek(line) == 0)
            return false;
        Lines[static_cast<std::size_t>(line) - 1] = text;
        ReopenAfterRewrite(line, static_cast<std::int32_t>(Lines.size()));
        return true;
    }
    bool Delete(std::int32_t line) {
        if (Seek(line) == 0)
            return false;
        const auto count = static_cast<std::int32_t>(Lines.size());
        Lines.erase(Lines.begin() + line - 1);
        ReopenAfterRewrite(line, count);
        return true;
    }
    bool Insert(std::int32_t line, std::int32_t position, const Text& text) {
        if (Seek(line) == 0)
            return false;
        const auto count = static_cast<std::int32_t>(Lines.size());
        Lines.insert(Lines.begin() + (position == 2 ? line : line - 1), text);
        ReopenAfterRewrite(line, count);
        return true;
    }
};

class LineWalk : public testing::TestWithParam<LineKind> {};

TEST_P(LineWalk, GivesWhatTheStepsGive) {
    support::TestDevice device;
    modQuorin::SetFilePaths();
    const auto cases = static_cast<int>(reference::CasesOf(4000));
    std::mt19937 chance(7);
    const auto below = [&chance](std::uint32_t limit) { return static_cast<std::int32_t>(chance() % limit); };
    FileHandle file;
    OpenFile(file, GetParam().File, u"w", u"TEXT", u"QVRN");
    LiteralLines literal{file.isDatabase, {}, file.nextLine};
    const Text texts[] = {u"", u"a", u"longer text", u"\r", u"x\r", Text(1, 0xDCFF)};
    for (int step = 0; step < cases; ++step) {
        SCOPED_TRACE(step);
        std::int32_t line = below(12) - 2;
        std::int32_t sameLine = line;
        const Text text = texts[below(6)];
        const std::int32_t position = 1 + below(2);
        switch (below(literal.Lines.size() > 10 ? 8 : 7)) {
        case 0:
            ASSERT_EQ(SeekFileLine(file, line), literal.Seek(sameLine));
            break;
        case 1:
        case 2:
            line = sameLine = below(3) == 0 ? line : -1;
            ASSERT_EQ(ReadFileLine(file, line), literal.Read(sameLine));
            ASSERT_EQ(line, sameLine);
            break;
        case 3:
            ASSERT_EQ(FileLineCount(file), literal.Count());
            WriteFileLine(file, text); // the count has moved the stream to its end
            literal.Write(text);
            break;
        case 4:
            ASSERT_EQ(ChangeFileLine(file, line, text), literal.Change(sameLine, text));
            break;
        case 5:
            ASSERT_EQ(InsertFileLine(file, line, InsertPosition{position}, text),
                      literal.Insert(sameLine, position, text));
            break;
        case 6:
            ASSERT_EQ(FileLineCount(file), literal.Count());
            break;
        default:
            ASSERT_EQ(DeleteFileLine(file, line), literal.Delete(sameLine));
        }
        if (!file.isDatabase) {
            ASSERT_EQ(file.nextLine, literal.NextLine);
        }
    }
    CloseFile(file);
}

INSTANTIATE_TEST_SUITE_P(On, LineWalk, testing::ValuesIn(LineKinds), KindName);

} // namespace
} // namespace modFileSystem
