// SPDX-License-Identifier: MIT
// "Export…": a download as a file for other tools, as a table in the clipboard, or opened by another program.
#pragma once

#include "backends/qt/beside_form.h"
#include "backends/qt/save_place.h"

#include <QComboBox>
#include <QListWidget>
#include <QTableWidget>

#include <functional>
#include <string>
#include <vector>

class QBoxLayout;

namespace backends::qt {

/// The first records of a download, with all of its columns as they are exported.
struct ExportPreview {
    std::string Why; ///< why there are none; empty on success
    std::vector<std::string> Columns;
    std::vector<std::vector<std::string>> Rows; ///< of cells; a row has one for each column
};

struct ExportChoice {
    std::string Format;
    std::vector<std::string> Columns; ///< names of those that are wanted; empty for all
    std::vector<std::string> LeftOut; ///< names of the others
};

/// What the dialog asks of the program. Nothing of it waits: what is made is given to a routine later.
struct ExportSource {
    struct Format {
        std::string Name;
        std::string Ending;
        std::string Words;
    };
    /// Called with why it failed, or an empty text and what is odd about the result.
    using Done = std::function<void(const std::string& why, const std::string& odd)>;

    std::vector<Format> Formats;
    std::function<std::string()> Download; ///< its name, and what to know of it; empty if none is selected or open
    std::function<void(std::function<void(const ExportPreview&)>)> Preview;
    std::function<void(const ExportChoice&, const std::string& path, Done)> Save;
    std::function<void(const ExportChoice&, Done)> Copy;
    std::function<void(const ExportChoice&, Done)> OpenIn;
    std::function<std::string(const std::string& ending)> Path; ///< where the file is proposed to be
    std::function<ExportChoice()> Last;                         ///< the choice of the last time
    std::function<void(const ExportChoice&)> Remember;
};

class ExportDialog final : public BesideForm {
public:
    /// `form`: the form's window, which must live longer.
    ExportDialog(ExportSource source, QWidget& form);

    /// Opens the dialog, or brings it to the front, with the download of now.
    void Open();

protected:
    bool TakesEscape() override { return Place_.TakeQuestionBack(); }

private:
    void MakeChoices(QBoxLayout& column);
    void MakeTables(QBoxLayout& column);
    void MakeFoot(QBoxLayout& column);
    void Show(const ExportPreview& preview);
    void ShowColumns();
    void ProposePath();
    void Save(const QString& path, bool replaces);
    void Run(const QString& what, const std::function<void(const ExportChoice&, ExportSource::Done)>& act,
             const QString& done);
    ExportChoice Choice() const;
    void SetWorking(bool working);

    ExportSource Source_;
    QLabel* Title_;
    QComboBox* Formats_;
    QListWidget* Columns_;
    QTableWidget* Preview_;
    QPushButton* Copy_;
    QPushButton* OpenIn_;
    SavePlace Place_;
    int Asked_ = 0; ///< previews so far: the answer to an earlier one is passed over
    bool IsWorking_ = false;
};

} // namespace backends::qt
