// SPDX-License-Identifier: MIT
#include "exporting/csv_reader.h"

#include <algorithm>

namespace exporting {

bool TakeCsvField(std::string_view csv, char delimiter, std::size_t& at, std::string& field) {
    field.clear();
    if (at == csv.size() || csv[at] != '"') {
        const char ends[] = {delimiter, '\r', '\n', '"'};
        const std::size_t end = std::min(csv.find_first_of(std::string_view(ends, sizeof ends), at), csv.size());
        field = csv.substr(at, end - at);
        at = end;
        return at == csv.size() || csv[at] != '"';
    }
    for (++at;;) {
        const std::size_t quote = csv.find('"', at);
        if (quote == std::string_view::npos)
            return false;
        field += csv.substr(at, quote - at);
        at = quote + 1;
        if (at == csv.size() || csv[at] != '"')
            return true;
        field += '"';
        ++at;
    }
}

CsvReader::CsvReader(std::string_view csv, char delimiter) : Csv_(csv), Delimiter_(delimiter) {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (Csv_.substr(0, Mark.size()) == Mark)
        At_ = Mark.size();
}

bool CsvReader::Next(std::vector<std::string>& fields) {
    do {
        fields.clear();
        if (At_ == Csv_.size() || HasFailed_)
            return false;
        const std::size_t begin = At_;
        Line_ = NextLine_;
        HasFailed_ = !TakeRow(fields);
        NextLine_ += static_cast<std::size_t>(std::count(Csv_.begin() + static_cast<std::ptrdiff_t>(begin),
                                                         Csv_.begin() + static_cast<std::ptrdiff_t>(At_), '\n'));
    } while (!HasFailed_ && fields.size() == 1 && fields.front().empty());
    return !HasFailed_;
}

bool CsvReader::TakeRow(std::vector<std::string>& fields) {
    for (;;) {
        fields.emplace_back();
        if (!TakeCsvField(Csv_, Delimiter_, At_, fields.back()))
            return false;
        if (At_ == Csv_.size())
            return true;
        if (Csv_[At_] == Delimiter_) {
            ++At_;
            continue;
        }
        const std::size_t ending = Csv_.substr(At_, 2) == "\r\n" ? 2 : Csv_[At_] == '\n' ? 1 : 0;
        At_ += ending;
        return ending > 0;
    }
}

} // namespace exporting
