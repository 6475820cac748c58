// SPDX-License-Identifier: MIT
// A device for the tests of one folder of the tree: the headless back-end with an empty root folder, prepared answers
// and actions of a technician, and a record of what the device did.
#pragma once

#include "backends/headless_input/headless_hand.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// Thrown when the program ends itself or can't continue.
using backends::ProgramOver;

/// A folder that is removed at the end of the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path Path() const { return Path_; }
    /// Returns the bytes of a file in the folder; empty if it does not exist.
    std::string Bytes(const std::string& name) const;
    /// Writes a file, and creates the folders above it.
    void Put(const std::string& name, const std::string& bytes) const;
    bool Has(const std::string& name) const { return std::filesystem::exists(Path_ / name); }

private:
    std::filesystem::path Path_;
};

struct ShownBox {
    Text Message;
    platform::BoxButtons Buttons = platform::BoxButtons::Ok;
    platform::BoxIcon Icon = platform::BoxIcon::None;
    Text Title;
};

/// What the device did, in order.
struct Record : backends::Watcher {
    std::vector<ShownBox> Boxes;
    std::vector<std::pair<std::int32_t, std::int32_t>> Tones; ///< hertz, milliseconds
    std::vector<Text> Status;                                 ///< texts of the strip; an empty one when it is hidden
    std::vector<std::int32_t> Grabbed, Released, Sent;
    std::vector<std::pair<Text, Text>> Unsaved;  ///< the name without folder of what could not be stored, and why
    std::vector<std::pair<Text, Text>> Warnings; ///< their short names and texts
    std::vector<std::string> KeyOrder; ///< the same three, such as "release 276", in the order in which they came
    std::function<void()> WhenACharacterIsSent; ///< called at that moment

    void BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon icon, const Text& title) override;
    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override { Tones.emplace_back(hertz, milliseconds); }
    void StatusShown(const Text& text) override { Status.push_back(text); }
    void StatusHidden() override { Status.emplace_back(); }
    void KeyGrabbed(std::int32_t keyCode) override;
    void KeyReleased(std::int32_t keyCode) override;
    void CharacterSent(std::int32_t character) override;
    void Warned(const Text& about, const Text& text) override { Warnings.emplace_back(about, text); }
    void NotSaved(const Text& file, const Text& why) override { Unsaved.emplace_back(file, why); }

    std::vector<Text> Messages() const; ///< of the boxes
};

class TestDevice final : backends::CommandSource {
public:
    /// Creates a root folder for this test and ignores that of the options. The modules' state is as at program start.
    explicit TestDevice(backends::DeviceOptions options = {});
    ~TestDevice() override;

    const TemporaryFolder Folder;
    Record Did;
    backends::HostDevice Host;
    backends::headless::HeadlessPlatform Platform;
    backends::headless::HeadlessHand Hand{Platform};

    platform::OwnerDrawGrid& Title() { return Platform.grdTitle; }
    platform::OwnerDrawGrid& Main() { return Platform.grdMain; }

    /// Prepares the answer to the next message box. A Yes-No question without a prepared answer is answered No and
    /// fails the test.
    void WillAnswer(platform::BoxAnswer answer) { Answers_.push_back(answer); }
    /// Runs the action once while the next box is open, before it is answered.
    void WhileABoxIsOpen(std::function<void()> action) { During_ = std::move(action); }
    /// Adds an action of the technician. One is performed each time the program waits for a prompt.
    void WillDo(std::function<void()> step) { Steps_.push_back(std::move(step)); }

    /// Sets what other programs do at each pause in which the program waits for them. A pause itself takes no time.
    void WhileItPauses(std::function<void()> action) { Meanwhile_ = std::move(action); }
    std::vector<std::int32_t> Pauses; ///< the length of each pause, in milliseconds

    /// Sets the time of the clock, such as 2007-03-05T09:30:00.
    void SetTime(const std::string& moment);
    void Tick(std::int64_t milliseconds) { Platform.loop.PassTime(milliseconds); }

private:
    void AboutToWait(int) override {}
    bool HasCommand() override { return Platform.boxes.Current() != nullptr || !Steps_.empty(); }
    bool Ended() override { return true; } ///< a prompt without an action left ends the program
    void TakeInput() override {}
    void RunCommand() override;
    void AnswerBox(backends::DeviceBoxes::OpenBox& box);

    std::deque<platform::BoxAnswer> Answers_;
    std::function<void()> During_, Meanwhile_;
    std::deque<std::function<void()>> Steps_;
};

/// Runs an action that must stop the program by a failure. Returns its message; fails the test if the program
/// continues.
Text FailureOf(const std::function<void()>& action);

/// Returns true if an action makes the program end itself.
bool EndsProgram(const std::function<void()>& action);

} // namespace support
