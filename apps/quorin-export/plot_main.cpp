// SPDX-License-Identifier: MIT
#include "apps/quorin-export/plot_main.h"

#include "apps/download_files/plot_file.h"
#include "apps/quorin-export/converter.h"
#include "apps/quorin-export/formats.h"
#include "apps/quorin-export/output.h"
#include "apps/quorin-export/overwriting.h"
#include "apps/quorin-export/sources.h"
#include "apps/quorin-export/terminal.h"
#include "apps/quorin-export/watching.h"
#include "plotting/chart.h"
#include "plotting/svg.h"
#include "plotting/text_picture.h"

#include <iostream>

namespace exporter {

using start::ExitStatus;

namespace {

void Tell(const std::string& what) {
    std::cerr << "quorin-export: " << what << "\n";
}

class Plot {
public:
    explicit Plot(const Options& options) : Options_(options), Tables_(options) {}

    ExitStatus Run() {
        if (!Options_.Plot.Watch)
            return DrawOnce();
        Watching watching;
        if (const std::string why = FindPaths(); !why.empty())
            return NotStarted(why);
        for (bool isFirst = true;; isFirst = false) {
            watching.Note(Paths_);
            const ExitStatus status = DrawOnce();
            if (isFirst && status != ExitStatus::Ended && status != ExitStatus::Odd)
                return status;
            if (!std::cout.flush()) // nobody reads any more
                return ExitStatus::Ended;
            HasTold_ = true;
            if (!watching.WaitForChange())
                return ExitStatus::Ended;
        }
    }

private:
    bool IsText() const { return Options_.Format->Picture == PictureForm::Text; }

    static ExitStatus NotStarted(const std::string& why) {
        Tell(why);
        return ExitStatus::NotStarted;
    }

    /// Finds the files of the tables, which are looked at for changes.
    std::string FindPaths() {
        for (const std::string& name : Options_.Sources) {
            Table table;
            if (std::string why = Tables_.Read(name, table); !why.empty())
                return why;
            if (table.Path.empty())
                return table.Source.File + " is no file of its own, so --watch can't see it change.";
            Paths_.push_back(table.Path);
        }
        return {};
    }

    ExitStatus DrawOnce() {
        plotting::SeriesReader reader(Options_.Plot.Request, Options_.Plan.Decimal, Options_.Sources.size() > 1);
        Problems_.clear();
        for (const std::string& name : Options_.Sources)
            if (const std::string why = Take(name, reader); !why.empty())
                return NotStarted(why);
        if (const std::string why = reader.Finish(); !why.empty())
            return NotStarted(why);
        plotting::Data data = reader.Data();
        if (!HasTold_)
            TellAll(data, reader.Odd());
        const ExitStatus status = Write(data);
        const bool isOdd = status == ExitStatus::Ended && !reader.Odd().empty();
        return isOdd ? ExitStatus::Odd : status;
    }

    /// Returns why a table can't be shown, or an empty text.
    std::string Take(const std::string& name, plotting::SeriesReader& reader) {
        Table table;
        if (std::string why = Tables_.Read(name, table); !why.empty())
            return why;
        if (std::string why = WhyNotOver(Options_.Output, table.Path, Options_); !why.empty())
            return "can't write " + Options_.Output + ": " + why;
        if (!table.Note.empty())
            Problems_.push_back(table.Source.File + ": " + table.Note);
        companion::ValueLimits limits;
        const std::vector<std::string> wrong = Tables_.ReadLimits(table, limits);
        Problems_.insert(Problems_.end(), wrong.begin(), wrong.end());
        return reader.Read(PlottedSource(table, limits));
    }

    void TellAll(const plotting::Data& data, const std::vector<std::string>& odd) const {
        for (const std::string& problem : Problems_)
            Tell(problem);
        for (const std::string& note : data.Notes)
            Tell(data.Title + ", " + note);
        for (const std::string& line : odd)
            Tell(line);
    }

    plotting::Look LookFor(const plotting::Data& data, plotting::Kind kind) const {
        const PlotOptions& plot = Options_.Plot;
        if (IsText()) {
            const TerminalSize size = plot.Width > 0 ? TerminalSize{plot.Width, plot.Height} : SizeOfTerminal();
            return plotting::CellLook(size.Columns, size.Rows);
        }
        const plotting::Spot usual = plotting::UsualSize(data, kind);
        return plot.Width > 0 ? plotting::PixelLook(plot.Width, plot.Height) : plotting::PixelLook(usual.X, usual.Y);
    }

    ExitStatus Write(const plotting::Data& data) {
        const plotting::Kind kind = Options_.Plot.HasKind ? Options_.Plot.Request.Kind : plotting::UsualKind(data);
        const plotting::Look look = LookFor(data, kind);
        if (const std::string why = plotting::WhyNotDrawn(data, kind, look); !why.empty())
            return NotStarted(why);
        const plotting::Scene scene = plotting::Draw(data, kind, look);
        if (IsText())
            return Put(
                ForTerminal(plotting::TextOf(scene, IsUtf8() ? plotting::Letters::Unicode : plotting::Letters::Ascii)));
        if (Options_.Format->Picture == PictureForm::Svg)
            return Put(plotting::SvgOf(scene));
        const Converted converted = Convert(plotting::SvgOf(scene), Options_.Format->Name);
        if (converted.Why.empty())
            return Put(converted.Bytes);
        Tell(converted.Why);
        return converted.IsMissing ? ExitStatus::NotStarted : ExitStatus::Failure;
    }

    /// In a terminal that is watched each picture takes the place of the one before.
    std::string ForTerminal(std::string text) const {
        if (!Options_.Plot.Watch || !Options_.Output.empty() || !IsTerminal())
            return text;
        std::string drawn = "\x1b[H";
        for (const char character : text)
            drawn += character == '\n' ? std::string("\x1b[K\n") : std::string(1, character);
        return drawn + "\x1b[J";
    }

    ExitStatus Put(const std::string& bytes) {
        Output output;
        std::string why = output.Open(Options_.Output);
        if (why.empty()) {
            output.Write(bytes);
            why = output.Finish();
        }
        if (why.empty())
            return ExitStatus::Ended;
        Tell("can't write " + Options_.Output + ": " + why);
        return ExitStatus::Failure;
    }

    const Options& Options_;
    Tables Tables_;
    std::vector<std::string> Paths_;
    std::vector<std::string> Problems_; ///< of drivers and limits
    bool HasTold_ = false;
};

} // namespace

ExitStatus PlotMain(const Options& options) {
    return Plot(options).Run();
}

} // namespace exporter
