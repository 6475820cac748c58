// SPDX-License-Identifier: MIT
#include "apps/quorin-export/export_command.h"

#include "apps/options/csv_options.h"
#include "apps/options/device_name.h"
#include "apps/options/device_options.h"
#include "apps/quorin-export/formats.h"
#include "apps/start/help.h"
#include "companion/values/moments.h"
#include "companion/values/quantity.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace exporter {

namespace {

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"desktop", "$XDG_DATA_HOME/quorin", "$XDG_CONFIG_HOME/quorin/settings.ini"}};
    std::string Format; ///< empty: by the name of the output
    std::string Units = "split";
    std::string Dates = "iso";
    std::string Decimal = "either";
    apps::CsvWords Csv;
    std::string Kind;
    std::string Size;
    std::string Range;
};

template <class Value>
struct Choice {
    const char* Word;
    Value Meaning;
};

/// Returns what a word means. One that is none of these is refused.
template <class Value, std::size_t Count>
Value Chosen(const char* option, const std::string& word, const Choice<Value> (&choices)[Count]) {
    std::string all;
    for (const Choice<Value>& choice : choices) {
        if (word == choice.Word)
            return choice.Meaning;
        all += (all.empty() ? "" : ", ") + std::string(choice.Word);
    }
    apps::Refuse(option, word, "is none of " + all);
}

constexpr Choice<exporting::Units> UnitChoices[] = {
    {"split", exporting::Units::Split}, {"header", exporting::Units::Header}, {"keep", exporting::Units::Keep}};
constexpr Choice<exporting::Dates> DateChoices[] = {{"iso", exporting::Dates::Iso}, {"keep", exporting::Dates::Keep}};
constexpr Choice<values::DecimalSign> DecimalChoices[] = {{"point", values::DecimalSign::Point},
                                                          {"comma", values::DecimalSign::Comma},
                                                          {"either", values::DecimalSign::Either}};

constexpr Choice<plotting::Kind> KindChoices[] = {{"line", plotting::Kind::Line},
                                                  {"points", plotting::Kind::Points},
                                                  {"histogram", plotting::Kind::Histogram},
                                                  {"control", plotting::Kind::Control}};

const FormatRow* FormatFrom(const std::string& name) {
    std::string all;
    for (const FormatRow& row : Formats()) {
        if (name == row.Name)
            return &row;
        all += (all.empty() ? "" : ", ") + std::string(row.Name);
    }
    apps::Refuse("--format", name, "is none of " + all);
}

/// Returns the format that a file's name ends like; csv for any other. A text is rarely a plot.
std::string FormatOfName(const std::string& path) {
    for (const FormatRow& row : Formats()) {
        const std::string ending = row.Ending;
        if (row.Picture != PictureForm::Text && path.size() > ending.size() &&
            path.compare(path.size() - ending.size(), ending.size(), ending) == 0)
            return row.Name;
    }
    return "csv";
}

/// What nothing is told apart in is CSV, whatever its name.
std::string FormatName(const Words& words, const Options& options) {
    if (!words.Format.empty())
        return words.Format;
    return options.Raw ? "csv" : FormatOfName(options.Output);
}

/// Reads "960x540".
void ReadSize(const std::string& text, PlotOptions& plot) {
    constexpr int Least = 10, Most = 20000;
    int length = 0;
    const bool isSize = std::sscanf(text.c_str(), "%5dx%5d%n", &plot.Width, &plot.Height, &length) == 2;
    if (!isSize || static_cast<std::size_t>(length) != text.size() || std::min(plot.Width, plot.Height) < Least ||
        std::max(plot.Width, plot.Height) > Most)
        apps::Refuse("--size", text, "is not of the form 960x540, of 10 to 20000 each");
}

/// Reads one end of a range; nothing for an empty text.
std::optional<double> EndOf(const std::string& range, std::string_view end) {
    if (end.empty())
        return std::nullopt;
    const bool isNumber = values::NumberLength(end, values::DecimalSign::Either) == end.size();
    const auto value = isNumber ? values::ValueOf(end) : std::nullopt;
    if (!value)
        apps::Refuse("--range", range, "\"" + std::string(end) + "\" is no number");
    return value;
}

/// Reads "0:20", "0:" or ":20".
plotting::ValueRange RangeOf(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || text.size() == 1)
        apps::Refuse("--range", text, "is not of the form MIN:MAX, of which one may be missing");
    const std::string_view all = text;
    const plotting::ValueRange range{EndOf(text, all.substr(0, colon)), EndOf(text, all.substr(colon + 1)), text};
    if (range.Low && range.High && *range.Low >= *range.High)
        apps::Refuse("--range", text, "MIN is not below MAX");
    return range;
}

void UnderstandPlot(const Words& words, Options& options) {
    PlotOptions& plot = options.Plot;
    plot.HasKind = !words.Kind.empty();
    if (plot.HasKind)
        plot.Request.Kind = Chosen("--kind", words.Kind, KindChoices);
    if (!words.Range.empty())
        plot.Request.Range = RangeOf(words.Range);
    if (!words.Size.empty())
        ReadSize(words.Size, plot);
    const auto form = options.Format->Picture;
    if (plot.Watch && form == PictureForm::Svg && options.Output.empty())
        apps::Refuse("--watch", options.Format->Name, "needs -o FILE, which is written again with each change");
    if (plot.Watch && (form == PictureForm::Png || form == PictureForm::Pdf))
        apps::Refuse("--watch", options.Format->Name, "is not written again and again: svg and text are");
}

void Understand(const Words& words, Options& options) {
    options.Device = apps::UnderstoodDevice(words.Device);
    apps::UseThoseOfTheWindow(options.Device);
    options.Format = FormatFrom(FormatName(words, options));
    options.Plan.Units = Chosen("--units", words.Units, UnitChoices);
    options.Plan.Dates = Chosen("--dates", words.Dates, DateChoices);
    options.Plan.Decimal = Chosen("--decimal", words.Decimal, DecimalChoices);
    if (!options.Plan.Zone.empty() && !values::IsZone(options.Plan.Zone))
        apps::Refuse("--zone", options.Plan.Zone, "is neither Z nor of the form +01:00");
    options.Csv.Delimiter = apps::DelimiterOf(words.Csv);
    options.Csv.LineEnd = apps::LineEndOf(words.Csv);
    if (options.Name.empty())
        options.Name = apps::NameOfDevice();
    UnderstandPlot(words, options);
}

void DescribePlot(CLI::App& app, Words& words, PlotOptions& plot) {
    app.add_option("--plot", plot.Request.Columns, "Plot these columns, in the formats svg, png, pdf and text")
        ->type_name("COLUMN...")
        ->default_str("those of the instrument");
    app.add_option("--by", plot.Request.By, "A line for each text in this column")
        ->type_name("COLUMN")
        ->default_str("none");
    app.add_option("--against", plot.Request.Against, "What lies on the horizontal axis: record, time or a column")
        ->type_name("COLUMN")
        ->default_str("record");
    app.add_option("--kind", words.Kind, "What is drawn")
        ->type_name("line|points|histogram|control")
        ->default_str("line");
    app.add_flag("--join", plot.Request.JoinsGaps, "A line goes on where values are missing")->default_str("off");
    app.add_option("--range", words.Range, "The values that are shown; MIN or MAX may be missing")
        ->type_name("MIN:MAX")
        ->default_str("all");
    app.add_option("--size", words.Size, "Size of the plot in pixels; of text: in columns and rows")
        ->type_name("WxH")
        ->default_str("960x540, or the terminal");
    app.add_flag("--watch", plot.Watch, "Draw the plot again when a table changes, until Ctrl+C")->default_str("off");
}

void Describe(CLI::App& app, Words& words, Options& options) {
    app.add_option("SOURCE", options.Sources, "A download, its alias, or the path of a table (with a /)")
        ->type_name("")
        ->default_str("list the downloads");
    app.add_option("--format", words.Format, FormatHelp())->type_name("FORMAT")->default_str("that of -o, else csv");
    app.add_option("-o,--output", options.Output, "Write this file; several sources as csv: into this folder")
        ->type_name("FILE")
        ->default_str("standard output");
    app.add_option("--driver", options.Driver, "Read the columns of this driver")
        ->type_name("NAME")
        ->default_str("that of the download");
    app.add_option("--units", words.Units, "split: a column for the unit; header: in the name; keep: as it is")
        ->type_name("split|header|keep")
        ->default_str("split");
    app.add_option("--column", options.Plan.Columns,
                   "Write this column, by its name in the export; repeatable, in order")
        ->type_name("NAME")
        ->default_str("all")
        ->allow_extra_args(false);
    app.add_option("--numbers", options.Plan.Measured, "Tell this column's numbers and units apart, too; repeatable")
        ->type_name("COLUMN")
        ->take_last()
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->default_str("those of the instrument");
    app.add_option("--decimal", words.Decimal, "Decimal sign of the table")
        ->type_name("point|comma|either")
        ->default_str("either");
    app.add_option("--dates", words.Dates, "iso: 2026-11-21; keep: as it is")
        ->type_name("iso|keep")
        ->default_str("iso");
    app.add_option("--zone", options.Plan.Zone, "Put this behind each time: Z or +01:00")
        ->type_name("ZONE")
        ->default_str("none");
    app.add_flag("--hidden", options.Plan.Hidden, "With the columns that the form does not show")->default_str("off");
    app.add_flag("--alias", options.Plan.Alias, "With a column of the download's alias")->default_str("off");
    app.add_flag("--record", options.Plan.Record, "With a column of the record's number")->default_str("off");
    CLI::Option* const raw =
        app.add_flag("--raw", options.Raw, "CSV of every field as it stands, with nothing told apart");
    raw->default_str("off");
    apps::AddCsvOptions(app, words.Csv, "End of the lines of CSV");
    app.add_flag("--decimal-comma", options.Csv.DecimalComma, "Write numbers of CSV with a comma")->default_str("off");
    app.add_flag("--bom", options.Csv.Mark, "Begin CSV with a byte-order mark, for spreadsheets")->default_str("off");
    app.add_option("--name", options.Name, "Name of this device, in the formats long and sqlite")
        ->type_name("NAME")
        ->default_str("that of the machine");
    DescribePlot(app, words, options.Plot);
    for (const char* other :
         {"--format", "--column",  "--units",  "--numbers",       "--decimal", "--dates", "--zone",
          "--hidden", "--alias",   "--record", "--decimal-comma", "--bom",     "--name",  "--plot",
          "--by",     "--against", "--kind",   "--join",          "--range",   "--size",  "--watch"})
        raw->excludes(app.get_option(other));
    apps::AddDeviceOptions(app, words.Device);
}

} // namespace

apps::Reading ReadOptions(int count, const char* const* words, Options& options) {
    CLI::App app("Writes downloads of Quorin for other tools.\n\n"
                 "  quorin-export qrn0001.txt -o climate.csv    numbers, units and dates in columns of their own\n"
                 "  quorin-export \"North wall\" --format jsonl   a JSON object a record",
                 "quorin-export");
    Words said;
    app.set_version_flag("--version", apps::VersionText("quorin-export"));
    Describe(app, said, options);
    app.footer(
        "The columns of a driver have the names of its CSVNAME, else FIELDNAME; '|3' is the third of the\n"
        "table. Beside each CSV file its description is written, FILE.datapackage.json, but not with --raw.\n\n" +
        start::ExitStatusHelp());
    start::ShowOneLineEach(app);
    return apps::ReadCommandLine(app, count, words, [&] {
        Understand(said, options);
        for (const char* name : {"--plot", "--by", "--against", "--kind", "--join", "--range", "--size", "--watch"})
            if (app.get_option(name)->count() > 0 && !options.Format->Picture)
                apps::Refuse("--format", options.Format->Name,
                             "is no plot: " + std::string(name) + " goes with --format svg, png, pdf or text");
    });
}

} // namespace exporter
