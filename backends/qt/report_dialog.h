// SPDX-License-Identifier: MIT
// "Report a problem": what a person packs into one file, sees before it is saved, and saves where they choose.
#pragma once

#include "backends/qt/beside_form.h"
#include "backends/qt/save_place.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>

#include <functional>
#include <string>
#include <vector>

class QBoxLayout;

namespace backends::qt {

/// What the dialog asks of the program.
struct ReportSource {
    enum class Step { Done, Exists, Failed };
    struct Outcome {
        Step Result = Step::Done;
        std::string Why = {}; ///< of a failure
    };

    std::function<std::vector<std::string>()> Days; ///< the newest first
    /// Returns the file's content. `day`: one of Days; empty if there are none.
    std::function<std::string(const std::string& day, bool isWhole)> Text;
    std::function<Outcome(const std::string& path, const std::string& text, bool replaces)> Save;
    std::function<std::string()> Path; ///< where the file is proposed to be
};

class ReportDialog final : public BesideForm {
public:
    /// `form`: the form's window, which must live longer.
    ReportDialog(ReportSource source, QWidget& form);

    /// Opens the dialog, or brings it to the front with the text of now.
    void Open();
    /// Leaves out the words at its head in a room that is too low for them: the file says what is masked, too.
    void FitInto(const QSize& room);

protected:
    bool TakesEscape() override { return Place_.TakeQuestionBack(); }

private:
    void MakeChoices(QBoxLayout& column);
    void MakeFoot(QBoxLayout& column);
    void MakeText();
    void TakeChange(bool isChanged);
    std::string Shown() const;
    void Save(const QString& path, bool replaces);

    ReportSource Source_;
    std::string Report_; ///< as it was made; a person may have changed it
    QLabel* Words_;
    QComboBox* Days_;
    QCheckBox* Whole_;
    QPushButton* Undo_;
    QPlainTextEdit* Preview_;
    SavePlace Place_;
};

} // namespace backends::qt
