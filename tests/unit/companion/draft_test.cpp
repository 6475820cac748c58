// SPDX-License-Identifier: MIT
#include "companion/draft.h"

#include "src/storage/settings.h"
#include "tests/support/program.h"

namespace companion {
namespace {

using testing::HasSubstr;

Draft Example() {
    Draft draft;
    draft.Root = {2049, 1234567890123, "/home/cleo/Mo\xC3\xA4\nisture"};
    draft.Time = u"2026-11-22 20:30:05";
    draft.File = u"qrn0002.txt";
    draft.FullName = u"Main:\\Quorin\\qrn0002.txt";
    draft.Header = u"Site|Moisture|Remark";
    draft.Register = u"Meter|qrn0002.txt|20261122|";
    draft.Row = 4;
    draft.Line = u"Loft||old";
    draft.Texts = {u"Loft", u"14.1 %", u"two\r\nlines, 100 %41"};
    return draft;
}

TEST(FileOfADraft, IsReadAsItWasWritten) {
    Draft draft = Example();
    EXPECT_EQ(DraftFrom(BytesOf(draft)), draft);
    draft.Texts.push_back(modStringTools::FromBytes("no UTF-8: \xff\xfe"));
    draft.Texts.emplace_back();
    EXPECT_EQ(DraftFrom(BytesOf(draft)), draft);
}

TEST(FileOfADraft, IsLinesThatAPersonCanRead) {
    EXPECT_THAT(BytesOf(Example()), HasSubstr("file qrn0002.txt\n"));
    EXPECT_THAT(BytesOf(Example()), HasSubstr("text two%0d%0alines, 100 %2541\n"));
}

TEST(FileOfADraft, IsNoDraftOnceItIsCutOrChanged) {
    const std::string whole = BytesOf(Example());
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(DraftFrom(whole.substr(0, size))) << size << " bytes";
    EXPECT_FALSE(DraftFrom("quorin-draft 2\n" + whole.substr(15)));
    const std::string open = whole.substr(0, whole.size() - 4);
    EXPECT_TRUE(DraftFrom(open + "end\n"));
    for (const char* line : {"unknown x", "row x", "text %4", "noblank", ""})
        EXPECT_FALSE(DraftFrom(open + line + "\nend\n")) << line;
}

TEST(RootOfADraft, IsAlsoKnownByItsPath) {
    const Draft draft = Example();
    EXPECT_TRUE(IsOf(draft, draft.Root));
    EXPECT_TRUE(IsOf(draft, {2049, 1234567890123, "/elsewhere"})) << "it was moved";
    EXPECT_TRUE(IsOf(draft, {7, 1234567890123, draft.Root.Path})) << "the system was started anew";
    EXPECT_TRUE(IsOf(draft, {2049, 5, draft.Root.Path}))
        << "a card was put in anew, and its folders have other numbers";
    EXPECT_FALSE(IsOf(draft, {7, 1234567890123, "/elsewhere"}));
}

TEST(WordsOfADraft, NameItsTimeAndItsRecord) {
    Draft draft = Example();
    EXPECT_EQ(WordsOf(draft, u"2026-11-22 21:00:00"), u"A record of 20:30 was not saved: qrn0002.txt, record 4.");
    EXPECT_EQ(WordsOf(draft, u"2026-11-23 08:00:00"),
              u"A record of 2026-11-22 20:30 was not saved: qrn0002.txt, record 4.");
    draft.Row = 0;
    EXPECT_EQ(WordsOf(draft, draft.Time), u"A record of 20:30 was not saved: qrn0002.txt.");
}

/// A download of two records, and a draft of the second one. The form has not been started.
class DraftOfARecord : public testing::Test {
protected:
    DraftOfARecord() {
        Device.Platform.Serve();
        Device.Folder.Put("Quorin/qrnctrl.txt", Register);
        Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft||old\n");
        modQuorin::SetFilePaths();
        Content = Example();
        Content.FullName = modQuorin::Paths.ControlFile;
        Content.FullName.replace(Content.FullName.rfind(u'\\') + 1, Text::npos, u"qrn0002.txt");
        Content.Row = 2;
        Content.Texts = {u"Loft", u"14.1 %", u"old"};
    }
    std::string File() { return Device.Folder.Bytes("Quorin/qrn0002.txt"); }
    void ExpectRefusal(const std::string& why) {
        const std::string before = File();
        EXPECT_EQ(modStringTools::ToBytes(StateOf(Content).WhyNot), why);
        EXPECT_EQ(modStringTools::ToBytes(PutBack(Content)), why);
        EXPECT_EQ(File(), before);
    }

    const std::string Register = "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261121|\nMeter|qrn0002.txt|20261122|\n";
    const std::string Header = "Site|Moisture|Remark\n";
    support::TestDevice Device;
    Draft Content;
};

TEST_F(DraftOfARecord, IsPutBackIntoItsRecord) {
    EXPECT_EQ(StateOf(Content).WhyNot, u"");
    EXPECT_FALSE(StateOf(Content).IsSaved);
    EXPECT_EQ(PutBack(Content), u"");
    EXPECT_EQ(File(), Header + "a|1|x\nLoft|14.1 %|old\n");
}

TEST_F(DraftOfARecord, IsKnownToBeSavedAlready) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft|14.1 %|old\n");
    EXPECT_TRUE(StateOf(Content).IsSaved);
}

TEST_F(DraftOfARecord, IsNotSavedAsLongAsTheFileHasNoFieldForIt) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft\n");
    Content.Line = u"Loft";
    EXPECT_FALSE(StateOf(Content).IsSaved);
}

TEST_F(DraftOfARecord, IsNotPutIntoARecordThatHasChanged) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft||new\n");
    ExpectRefusal("the record has changed");
}

TEST_F(DraftOfARecord, IsNotPutBeyondTheLastRecord) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "Loft||old\n");
    ExpectRefusal("the record has changed");
}

TEST_F(DraftOfARecord, IsNotPutIntoOtherColumns) {
    Device.Folder.Put("Quorin/qrn0002.txt", "Site|Moisture|Note\na|1|x\nLoft||old\n");
    ExpectRefusal("qrn0002.txt has other columns");
}

TEST_F(DraftOfARecord, IsNotPutIntoADownloadThatGotItsNumber) {
    Device.Folder.Put("Quorin/qrnctrl.txt",
                      "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261121|\nOther|qrn0002.txt|20261123|\n");
    ExpectRefusal("the list of downloads has changed");
}

TEST_F(DraftOfARecord, IsNotPutIntoAFileThatIsGone) {
    std::filesystem::remove(Device.Folder.Path() / "Quorin/qrn0002.txt");
    ExpectRefusal("qrn0002.txt is not there");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrn0002.txt"));
}

TEST_F(DraftOfARecord, IsNotPutIntoADownloadWithAnotherName) {
    Device.Folder.Put("Quorin/qrnctrl.txt",
                      "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261121|\nMeter|qrn0002.txt|20261122|Cellar\n");
    ExpectRefusal("the list of downloads has changed");
}

TEST_F(DraftOfARecord, DoesNotStopTheProgramWhereAFileCanNotBeRead) {
    Device.Host.faults.FailNextReads(-1);
    EXPECT_NE(StateOf(Content).WhyNot, u"");
    EXPECT_NE(PutBack(Content), u"");
}

TEST_F(DraftOfARecord, KeepsTheFieldsThatNoColumnHas) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft||old|more\n");
    Content.Line = u"Loft||old|more";
    EXPECT_EQ(StateOf(Content).WhyNot, u"");
    EXPECT_EQ(PutBack(Content), u"");
    EXPECT_EQ(File(), Header + "a|1|x\nLoft|14.1 %|old|more\n");
    EXPECT_TRUE(StateOf(Content).IsSaved);
}

TEST_F(DraftOfARecord, IsNotPutWhereTheFileHadNoRecord) {
    Content.Row = 0;
    ExpectRefusal("it has no record in the file");
}

TEST_F(DraftOfARecord, IsNotPutIntoARowThatLacksItsFields) {
    Device.Folder.Put("Quorin/qrn0002.txt", Header + "a|1|x\nLoft\n");
    Content.Line = u"Loft";
    ExpectRefusal("the record has no field Moisture Remark");
}

TEST_F(DraftOfARecord, SaysWhyTheDiskRefusesIt) {
    Device.Host.faults.FailNext(-1);
    EXPECT_NE(PutBack(Content), u"");
    EXPECT_EQ(File(), Header + "a|1|x\nLoft||old\n");
}

TEST_F(DraftOfARecord, HasItsFieldsBesideThoseOfTheFile) {
    const auto fields = FieldsOf(Content);
    ASSERT_EQ(fields.size(), 3U);
    EXPECT_EQ(fields[1].Name, u"Moisture");
    EXPECT_EQ(fields[1].Shown, u"14.1 %");
    EXPECT_EQ(fields[1].Saved, u"");
    EXPECT_EQ(fields[2].Saved, u"old");
}

} // namespace
} // namespace companion
