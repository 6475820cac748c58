// SPDX-License-Identifier: MIT
#include "exporting/workbook.h"

#include "exporting/exact_numbers.h"
#include "exporting/sheet_text.h"
#include "exporting/zip_check.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <locale.h>
#include <map>
#include <xlsxwriter.h>

namespace exporting {

namespace {

constexpr std::size_t MostNamed = 20;                  // cut cells: a table of them would be told cell by cell
constexpr std::string_view FirstDay = "1900-03-01";    // before it, spreadsheets differ by a day
constexpr std::int64_t LargestSheet = 4'000'000'000LL; // bytes: a ZIP file of the old form has no more in one document
constexpr std::size_t LeastWidth = 10, MostWidth = 40; // of a column, in characters
constexpr std::size_t Padding = 2;                     // of a cell, likewise

/// The number in two or four digits of a date or time.
int Digits(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    std::from_chars(text.data() + at, text.data() + at + count, number);
    return number;
}

lxw_datetime DayOf(std::string_view isoDate) {
    return {Digits(isoDate, 0, 4), Digits(isoDate, 5, 2), Digits(isoDate, 8, 2), 0, 0, 0};
}

/// Returns the part of a day that is over at "09:30" or "09:30:05".
double PartOfDay(std::string_view isoTime) {
    constexpr double SecondsOfDay = 86400;
    const int seconds = isoTime.size() > 5 ? Digits(isoTime, 6, 2) : 0;
    return (Digits(isoTime, 0, 2) * 3600 + Digits(isoTime, 3, 2) * 60 + seconds) / SecondsOfDay;
}

/// While it exists, this thread writes numbers with a full stop: the library writes them as the locale does.
class PointInNumbers {
public:
    PointInNumbers() : Plain_(::newlocale(LC_ALL_MASK, "C", nullptr)), Before_(::uselocale(Plain_)) {}
    PointInNumbers(const PointInNumbers&) = delete;
    PointInNumbers& operator=(const PointInNumbers&) = delete;
    ~PointInNumbers() {
        ::uselocale(Before_);
        ::freelocale(Plain_);
    }

private:
    locale_t Plain_;
    locale_t Before_;
};

std::string Counted(std::size_t count, const char* one, const char* several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

} // namespace

struct Workbook::Book {
    std::string Path;
    SheetLimits Limits;
    lxw_workbook* File = nullptr;
    lxw_format* Bold = nullptr;
    std::map<std::string, lxw_format*> Formats; ///< by what they show
    std::vector<std::string> Names;             ///< of the sheets
    std::vector<lxw_worksheet*> Sheets;
    std::string WhyNot; ///< empty while the workbook can be written

    lxw_format* Format(const std::string& shown) {
        lxw_format*& format = Formats[shown];
        if (format == nullptr) {
            format = workbook_add_format(File);
            format_set_num_format(format, shown.c_str());
        }
        return format;
    }
};

/// One table on its way into the workbook.
class Workbook::Sheet {
public:
    Sheet(Book& book, const TableView& view, std::string name, std::vector<std::string>& odd)
        : Book_(book), Columns_(view.Columns()), Name_(std::move(name)),
          Width_(std::min(Columns_.size(), book.Limits.Columns)), Odd_(odd) {
        Begin();
    }

    void Row(const std::vector<Cell>& cells) {
        if (RowOfSheet_ == Book_.Limits.Rows)
            Begin();
        ++Record_;
        HasReplaced_ = false;
        for (Column_ = 0; Sheet_ != nullptr && Column_ < Width_; ++Column_)
            if (!cells[Column_].Text.empty())
                Put(cells[Column_]);
        ReplacedRows_ += HasReplaced_ ? 1 : 0;
        ++RowOfSheet_;
    }

    void Finish() {
        SetWidths();
        TellOdd();
    }

private:
    void TellOdd() {
        if (Columns_.size() > Width_)
            Odd_.push_back(std::to_string(Columns_.size()) + " columns, of which a sheet holds " +
                           std::to_string(Width_) + ": the others are left out");
        if (Cut_ > MostNamed)
            Odd_.push_back("and " + Counted(Cut_ - MostNamed, "more cell is cut", "more cells are cut"));
        if (ReplacedRows_ > 0)
            Odd_.push_back(Counted(ReplacedRows_, "row has bytes that are", "rows have bytes that are") +
                           " no UTF-8: U+FFFD stands for them");
        if (LongNumbers_ > 0)
            Odd_.push_back(Counted(LongNumbers_, "number has", "numbers have") +
                           " more digits than a spreadsheet keeps, or is too large: kept as text");
        if (EarlyDates_ > 0)
            Odd_.push_back(Counted(EarlyDates_, "date is", "dates are") +
                           " before 1900-03-01, where spreadsheets count otherwise: kept as text");
    }

    void Begin() {
        SetWidths();
        Sheet_ =
            Book_.WhyNot.empty() ? workbook_add_worksheet(Book_.File, SheetName(Name_, Book_.Names).c_str()) : nullptr;
        if (Sheet_ == nullptr) {
            Book_.WhyNot = "no file for the rows of a sheet can be made beside it";
            return;
        }
        Book_.Sheets.push_back(Sheet_);
        worksheet_freeze_panes(Sheet_, 1, 0);
        RowOfSheet_ = 0;
        for (Column_ = 0; Column_ < Width_; ++Column_) {
            PutText(Columns_[Column_].Name, Book_.Bold);
            Widths_.push_back(std::clamp(Columns_[Column_].Name.size() + Padding, LeastWidth, MostWidth));
        }
        RowOfSheet_ = 1;
    }

    /// A number that is wider than its column would be shown as "###".
    void SetWidths() {
        for (Column_ = 0; Sheet_ != nullptr && Column_ < Width_; ++Column_)
            worksheet_set_column(Sheet_, Place(), Place(), static_cast<double>(Widths_[Column_]), nullptr);
        Widths_.clear();
    }

    void Put(const Cell& cell) {
        switch (cell.Type) {
        case CellType::Number:
            return PutNumber(cell.Text);
        case CellType::Date:
            return PutDate(cell.Text);
        case CellType::Time:
            return PutTime(cell.Text);
        default:
            return PutText(cell.Text);
        }
    }

    void PutNumber(std::string_view number) {
        const auto value = ExactDouble(number);
        const auto format = NumberFormatOf(number);
        if (!value || !format) {
            ++LongNumbers_;
            return PutText(number);
        }
        worksheet_write_number(Sheet_, Line(), Place(), *value, Book_.Format(*format));
        Widths_[Column_] = std::max(Widths_[Column_], number.size() + Padding);
    }

    void PutDate(std::string_view date) {
        if (date < FirstDay) {
            ++EarlyDates_;
            return PutText(date);
        }
        lxw_datetime day = DayOf(date);
        worksheet_write_datetime(Sheet_, Line(), Place(), &day, Book_.Format("yyyy-mm-dd"));
    }

    void PutTime(std::string_view time) {
        constexpr std::size_t Minutes = 5; // "09:30"
        constexpr std::size_t Seconds = 8;
        const bool hasZone = time.size() != Minutes && time.size() != Seconds;
        if (hasZone) // a spreadsheet has none
            return PutText(time);
        worksheet_write_number(Sheet_, Line(), Place(), PartOfDay(time),
                               Book_.Format(time.size() == Minutes ? "hh:mm" : "hh:mm:ss"));
    }

    void PutText(std::string_view text, lxw_format* format = nullptr) {
        const SheetText made = TextOfCell(text, Book_.Limits.Characters);
        HasReplaced_ = HasReplaced_ || made.IsReplaced;
        if (made.IsCut && ++Cut_ <= MostNamed)
            Odd_.push_back((Record_ == 0 ? "header" : "record " + std::to_string(Record_)) + ", column " +
                           std::to_string(Column_ + 1) + ": longer than the " +
                           std::to_string(Book_.Limits.Characters) + " characters of a cell: the rest is left out");
        worksheet_write_string(Sheet_, Line(), Place(), made.Text.c_str(), format);
    }

    lxw_row_t Line() const { return static_cast<lxw_row_t>(RowOfSheet_); }
    lxw_col_t Place() const { return static_cast<lxw_col_t>(Column_); }

    Book& Book_;
    const std::vector<OutColumn>& Columns_;
    std::string Name_;
    std::size_t Width_; ///< columns
    std::vector<std::string>& Odd_;
    lxw_worksheet* Sheet_ = nullptr;  ///< the last one; none if it can't be made
    std::vector<std::size_t> Widths_; ///< of its columns, in characters
    std::size_t RowOfSheet_ = 0;
    std::size_t Column_ = 0;
    std::size_t Record_ = 0; ///< from 1; 0 for the header
    bool HasReplaced_ = false;
    std::size_t Cut_ = 0, ReplacedRows_ = 0, LongNumbers_ = 0, EarlyDates_ = 0;
};

Workbook::Workbook(const std::string& path, const SheetLimits& limits) : Book_(std::make_unique<Book>()) {
    Book_->Path = path;
    Book_->Limits = limits;
    std::string folder = path.substr(0, path.rfind('/'));
    lxw_workbook_options options = {LXW_TRUE, folder.data(), LXW_FALSE};
    Book_->File = workbook_new_opt(path.c_str(), &options);
    if (Book_->File == nullptr) {
        Book_->WhyNot = "there is no memory for it";
        return;
    }
    Book_->Bold = workbook_add_format(Book_->File);
    format_set_bold(Book_->Bold);
}

Workbook::~Workbook() {
    if (Book_->File != nullptr)
        lxw_workbook_free(Book_->File);
}

void Workbook::Add(const TableView& view, const std::string& name, std::vector<std::string>& odd) {
    if (!Book_->WhyNot.empty())
        return;
    const PointInNumbers plain;
    Sheet sheet(*Book_, view, name, odd);
    view.ForEachRow([&](const std::vector<Cell>& cells) { sheet.Row(cells); });
    sheet.Finish();
}

std::string Workbook::Close() {
    if (!Book_->WhyNot.empty())
        return Book_->WhyNot;
    const PointInNumbers plain;
    for (lxw_worksheet* const sheet : Book_->Sheets) { // the library does not look at the errors of its files
        if (std::fflush(sheet->optimize_tmpfile) != 0 || std::ferror(sheet->optimize_tmpfile) != 0)
            return "its rows can't be written beside it: is the disk full?";
        if (::ftello(sheet->optimize_tmpfile) > LargestSheet)
            return "a sheet would have more than 4 GB";
    }
    const lxw_error error = workbook_close(Book_->File);
    Book_->File = nullptr;
    if (error != LXW_NO_ERROR)
        return lxw_strerror(error);
    return IsWholeZipOfXml(Book_->Path) ? "" : "it could not be written whole: is the disk full?";
}

} // namespace exporting
