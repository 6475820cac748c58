// SPDX-License-Identifier: MIT
#include "tests/support/test_device.h"

#include "src/app/start_up.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace support {

namespace {

backends::DeviceOptions OnFolder(backends::DeviceOptions options, const TemporaryFolder& folder) {
    options.Root = folder.Path().string();
    if (options.StartMoment == 0)
        options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    return options;
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = (PlaceInMemory() / "quorin-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    Path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Path_, ignored);
}

std::string TemporaryFolder::Bytes(const std::string& name) const {
    std::ifstream in(Path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void TemporaryFolder::Put(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((Path_ / name).parent_path());
    std::ofstream(Path_ / name, std::ios::binary) << bytes;
}

void Record::BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon icon, const Text& title) {
    Boxes.push_back({text, buttons, icon, title});
}

void Record::KeyGrabbed(std::int32_t keyCode) {
    Grabbed.push_back(keyCode);
    KeyOrder.push_back("grab " + std::to_string(keyCode));
}

void Record::KeyReleased(std::int32_t keyCode) {
    Released.push_back(keyCode);
    KeyOrder.push_back("release " + std::to_string(keyCode));
}

void Record::CharacterSent(std::int32_t character) {
    Sent.push_back(character);
    KeyOrder.push_back("send " + std::to_string(character));
    if (WhenACharacterIsSent)
        WhenACharacterIsSent();
}

std::vector<Text> Record::Messages() const {
    std::vector<Text> messages;
    for (const ShownBox& box : Boxes)
        messages.push_back(box.Message);
    return messages;
}

TestDevice::TestDevice(backends::DeviceOptions options)
    : Host(OnFolder(std::move(options), Folder)), Platform(Host, *this, Did) {
    platform::Install(&Platform.record);
    modQuorin::ResetModules();
    Platform.runTime.Rest = [this](std::int32_t milliseconds) {
        Pauses.push_back(milliseconds);
        if (Meanwhile_)
            Meanwhile_();
    };
}

TestDevice::~TestDevice() {
    modQuorin::ResetModules();
}

void TestDevice::SetTime(const std::string& moment) {
    Platform.clock.StandAt(*backends::MomentFromText(moment));
}

void TestDevice::RunCommand() {
    if (auto* box = Platform.boxes.Current()) {
        AnswerBox(*box);
        return;
    }
    const std::function<void()> step = std::move(Steps_.front());
    Steps_.pop_front();
    step();
}

void TestDevice::AnswerBox(backends::DeviceBoxes::OpenBox& box) {
    if (During_) {
        const std::function<void()> action = std::move(During_);
        During_ = nullptr;
        action();
    }
    box.Answered = true;
    if (!Answers_.empty()) {
        box.Answer = Answers_.front();
        Answers_.pop_front();
    } else if (box.Buttons == platform::BoxButtons::YesNo) {
        box.Answer = platform::BoxAnswer::No;
        ADD_FAILURE() << "nobody was told to answer: " << modStringTools::ToBytes(box.Message);
    }
}

Text FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ProgramOver& over) {
        if (over.Why == ProgramOver::Reason::Failed)
            return over.Failure;
    }
    ADD_FAILURE() << "the program goes on";
    return {};
}

bool EndsProgram(const std::function<void()>& action) {
    try {
        action();
    } catch (const ProgramOver& over) {
        return over.Why == ProgramOver::Reason::Ended;
    }
    return false;
}

} // namespace support
