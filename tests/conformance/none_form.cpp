// SPDX-License-Identifier: MIT
// Runs the suites on the empty back-end that it must pass: controls and cells keep what they are set to, and nothing is
// stored. The other suites are left out because it raises no event, measures no text and takes no input.
#include "backends/none/none_platform.h"
#include "tests/conformance/form_suites.h"
#include "tests/conformance/storage_suites.h"

namespace conformance {

namespace {

class NoneForm final : public FormUnderTest {
public:
    NoneForm() { Install(&Platform_.Record()); }
    NoneForm(const NoneForm&) = delete;
    NoneForm& operator=(const NoneForm&) = delete;
    ~NoneForm() override { Install(nullptr); }

    Platform& Record() override { return Platform_.Record(); }

private:
    backends::none::NonePlatform Platform_;
};

std::unique_ptr<FormUnderTest> MadeNone() {
    return std::make_unique<NoneForm>();
}

const FormFactory None = {"none", MadeNone};

class NoneStorage final : public StorageUnderTest {
public:
    FileSystem& Files() override { return Platform_.Record().fileSystem; }
    RecordDatabase& Databases() override { return Platform_.Record().recordDatabase; }
    Settings& SettingsStore() override { return Platform_.Record().settings; }

    void Put(const Text&, const std::string&) override { ADD_FAILURE() << "nothing is stored"; }
    std::string Bytes(const Text&) override { return "no such file"; }
    void Remove(const Text&) override {}
    bool Has(const Text&) override { return false; }
    void MakeFolder(const Text&) override { ADD_FAILURE() << "nothing is stored"; }
    bool HasFolder(const Text&) override { return false; }
    std::size_t Entries(const Text&) override { return 0; }

private:
    backends::none::NonePlatform Platform_;
};

std::unique_ptr<StorageUnderTest> MadeStorage() {
    return std::make_unique<NoneStorage>();
}

const StorageFactory NoStorage = {"none", MadeStorage};

} // namespace

QUORIN_RUN_QUIET_FORM_SUITES(OnNone, None);
INSTANTIATE_TEST_SUITE_P(OnNone, EmptyStorageSuite, testing::Values(NoStorage));

} // namespace conformance
