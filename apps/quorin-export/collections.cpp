// SPDX-License-Identifier: MIT
#include "apps/quorin-export/collections.h"

#include "backends/digest/sha256.h"
#include "exporting/database.h"
#include "exporting/workbook.h"

namespace exporter {

namespace {

class WorkbookCollection : public Collection {
public:
    explicit WorkbookCollection(const std::string& path) : Workbook_(path) {}
    std::size_t Passes() const override { return 1; }

    void Add(const Table& table, const exporting::TableView& view, const Options&,
             std::vector<std::string>& odd) override {
        const std::string& file = table.Source.File;
        const std::string& alias = table.Source.Alias;
        Workbook_.Add(view, alias.empty() ? file.substr(0, file.rfind('.')) : alias, odd);
    }
    std::string Finish() override { return Workbook_.Close(); }

private:
    exporting::Workbook Workbook_;
};

class DatabaseCollection : public Collection {
public:
    explicit DatabaseCollection(const std::string& path) : Database_(path) {}
    std::size_t Passes() const override { return 2; }

    void Add(const Table& table, const exporting::TableView& view, const Options& options,
             std::vector<std::string>& odd) override {
        backends::Sha256 digest;
        digest.Add(table.Bytes);
        Database_.Add(view, {table.Source.File, table.Source.Alias, table.Driver, options.Name, digest.Digits()}, odd);
    }
    std::string Finish() override { return Database_.Close(); }

private:
    exporting::Database Database_;
};

} // namespace

std::unique_ptr<Collection> CollectWorkbook(const std::string& path) {
    return std::make_unique<WorkbookCollection>(path);
}

std::unique_ptr<Collection> CollectDatabase(const std::string& path) {
    return std::make_unique<DatabaseCollection>(path);
}

} // namespace exporter
