// SPDX-License-Identifier: MIT
// A device that has nothing: no key, no port, no sound, no storage, and a clock that stands still.
#pragma once

#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

namespace backends::none {

using namespace platform;

/// Fonts of one size. A real font server measures: a larger size is higher, a line end has no width, and one at the end
/// of a text begins no line.
class NoneFonts final : public FontServer {
public:
    FontHandle GetFont(const Text&, std::int32_t, std::int32_t) override { return 1; }
    std::int32_t FontHeight(FontHandle) override { return 10; }
    TextSize MeasureLine(FontHandle font, const Text&, std::int32_t, std::int32_t length) override {
        return {length * 5, FontHeight(font)};
    }
    TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t) override {
        return MeasureLine(font, text, 0, static_cast<std::int32_t>(text.size()));
    }
    Text FirstFontName() override { return {}; }
    Text NextFontName() override { return {}; }
};

class NoneSystem final : public SystemObject {
public:
    std::int32_t DeviceType() const override { return NumberOf(DeviceKind::Other); }
    Text VersionText() const override { return u"0"; }
    Text UserName() const override { return u"nobody"; }
    Box WorkArea() const override { return {0, 0, 240, 320}; }
    std::int32_t ScreenDimension() const override { return 320; }
};

/// A device whose keys need not be grabbed may leave this empty.
class NoneKeys final : public HardwareKeys {
public:
    void Grab(std::int32_t) override {}
    void Release(std::int32_t) override {}
    void SendCharacter(std::int32_t) override {}
};

/// A port that can't be opened. A real one raises serConnection_Receive.
class NonePort final : public SerialPort {
public:
    void SetPortId(std::int32_t) override {}
    void SetLineSettings(const Text&) override {}
    void SetReceiveThreshold(std::int32_t) override {}
    bool PortOpen() const override { return false; }
    ErrorNumber SetPortOpen(bool open) override { return open ? NotAvailable : NoError; }
    std::int32_t InBufferCount() const override { return 0; }
    Text ReadInput() override { return {}; }
    PortEvent LastEvent() const override { return PortEvent::CharactersReceived; }
};

class NoneConnections final : public ConnectionService {
public:
    ErrorNumber Open(const Text&, std::unique_ptr<Connection>&) override { return NotAvailable; }
};

/// A device without sound may leave this empty, but for the object.
class NoneTones final : public ToneMaker {
public:
    class Silence final : public Tone {
        void Play(std::int32_t) override {}
    };
    std::unique_ptr<Tone> MakeTone(std::int32_t, std::int32_t) override { return std::make_unique<Silence>(); }
};

/// Answers itself, on the safe side. A real one waits in a loop in which timers, the port and the form go on.
class NoneBox final : public MessageBox {
public:
    BoxAnswer Show(const Text&, BoxButtons buttons, BoxIcon, const Text&) override {
        return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    }
};

class NoneSettings final : public Settings {
public:
    Text Get(const Text&, const Text&, const Text&, const Text& byDefault) const override { return byDefault; }
    ErrorNumber Save(const Text&, const Text&, const Text&, const Text&) override { return NotAvailable; }
};

/// Must run: the application reads it for every record.
class NoneClock final : public Clock {
public:
    DateTime Now() const override { return {.Date = {2000, 1, 1}}; }
    float TimeOfDay() const override { return 0; }
    std::int64_t SteadySeconds() const override { return 0; }
};

class NoneRandom final : public Random {
public:
    void Seed(std::int32_t) override {}
    double Next() override { return 0; }
};

/// The loop has nothing to wait for. EndProgram and RuntimeFailure must not return; a back-end that lives in a larger
/// program unwinds from them by an exception of its own.
class NoneRunTime final : public RunTime {
public:
    void DoEvents() override {}
    void WaitEvents() override {}
    void Pause(std::int32_t) override {}
    [[noreturn]] void EndProgram() override;
    [[noreturn]] void RuntimeFailure(const Text& text) override; ///< the message goes to standard error
};

class NoneVolumes final : public Volumes {
public:
    Text First() override { return {}; }
    Text Next() override { return {}; }
    ErrorNumber Space(const Text&, std::int32_t&) override { return NotAvailable; }
};

/// Nothing is there, and nothing can be made. A real one keeps every name beneath one folder.
class NoneFiles final : public FileSystem {
public:
    ErrorNumber OpenFolder(const Text&, bool, std::unique_ptr<Folder>&) override { return FileNotFound; }
    ErrorNumber OpenStream(const Text&, StreamMode, std::unique_ptr<TextStream>&) override { return FileNotFound; }
    ErrorNumber MoveFile(const Text&, const Text&) override { return FileNotFound; }
    ErrorNumber DeleteFile(const Text&) override { return FileNotFound; }
};

/// A device whose traits keep no table in memory (IsMemory) may leave this empty.
class NoneDatabases final : public RecordDatabase {
public:
    OpenedDatabase Open(const Text&, DatabaseMode) override { return {0, FileNotFound}; }
    OpenedDatabase Create(const Text&, std::int32_t, std::int32_t) override { return {0, NotAvailable}; }
    ErrorNumber Delete(const Text&) override { return FileNotFound; }
    void Close(DatabaseId) override {}
    std::int32_t RecordCount(DatabaseId) override { return 0; }
    ErrorNumber DeclareTable(DatabaseId, const Text&, const Text&) override { return NotAvailable; }
    ErrorNumber AddRecord(DatabaseId) override { return NotAvailable; }
    ErrorNumber BeginEdit(DatabaseId) override { return NotAvailable; }
    ErrorNumber WriteRecord(DatabaseId, const LineRecord&) override { return NotAvailable; }
    ErrorNumber Commit(DatabaseId) override { return NotAvailable; }
    bool ReadRecord(DatabaseId, LineRecord&) override { return false; }
    ErrorNumber DeleteRecord(DatabaseId) override { return NotAvailable; }
    ErrorNumber ShiftRecords(DatabaseId, std::int32_t) override { return NotAvailable; }
    ErrorNumber RenumberRecords(DatabaseId) override { return NotAvailable; }
    ErrorNumber FindRecord(DatabaseId, std::int32_t) override { return RowNotFound; }
    std::int32_t Position(DatabaseId) override { return -1; }
    ErrorNumber BeginReading(DatabaseId) override { return NoError; }
    void EndReading(DatabaseId) override {}
    ErrorNumber BeginBatch(DatabaseId) override { return NotAvailable; }
    ErrorNumber EndBatch(DatabaseId) override { return NotAvailable; }
    Text FirstDatabase(std::int32_t, std::int32_t) override { return {}; }
    Text NextDatabase() override { return {}; }
    const std::vector<Unlisted>& UnreadDatabases() const override { return Unread_; }

private:
    std::vector<Unlisted> Unread_;
};

/// A real one shows all of this where a person looks; FormOnlooker of backends/loop does so for every back-end.
class NoneOnlooker final : public Onlooker, public SaveWatcher {
public:
    void NotSaved(const Text&, const Text&) override {}
    void RecordOpened(const OpenedRecord&) override {}
    void ReadingLost(const LostReading&) override {}
    void ReadingWithoutValue(const Text&) override {}
    void ReadingWaits(const DateTime&) override {}
    void FolderReplaced(const Text&, const Text&, ErrorNumber) override {}
    void ListIncomplete(const std::vector<Unlisted>&) override {}
    void DeliveryStays(const Text&, ErrorNumber) override {}
    void DeliveryKept(const Text&, ErrorNumber) override {}
    void MailboxClear() override {}
};

/// A back-end that does not tell anybody what becomes of a reading may leave this empty.
class NoneReadingLog final : public ReadingLog {
public:
    void TextReceived(TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const Verdict&) override {}
    void RowChanged(const RowChange&) override {}
};

} // namespace backends::none
