// SPDX-License-Identifier: MIT
// Where a window of the program's own saves a file: the path, and what became of it. It asks itself whether a file is
// to be replaced.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <functional>

namespace backends::qt {

/// Its widgets belong to the window, which puts them into its layout.
class SavePlace {
public:
    /// `title`: of the dialog that chooses a file. `state`: the object name of the words.
    SavePlace(QWidget& window, QString title, const char* state);

    /// Returns the row of the path, "Choose…" and "Save".
    QHBoxLayout* Row() { return Row_; }
    QPushButton& Save() { return *Save_; }
    QPushButton& Replace() { return *Replace_; } ///< shown while it is asked whether to replace a file
    QLabel& State() { return *State_; }

    void SetPath(const QString& path) { Path_->setText(path); }
    void Tell(const QString& what);
    void AskToReplace();
    /// Takes back the question whether to replace a file. Returns false if it is not asked.
    bool TakeQuestionBack();

    /// Called with a path that is not empty. `replaces`: a file of the name may be replaced.
    std::function<void(const QString& path, bool replaces)> Wanted;

private:
    void Choose();
    void Want(bool replaces);

    QWidget& Window_;
    QString Title_;
    QHBoxLayout* Row_;
    QLineEdit* Path_;
    QPushButton* Save_;
    QPushButton* Replace_;
    QLabel* State_;
};

} // namespace backends::qt
