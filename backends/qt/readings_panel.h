// SPDX-License-Identifier: MIT
// The panel of readings: a window of its own beside the form's, so that the form keeps its size and its focus.
#pragma once

#include "backends/qt/readings_model.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QWidget>

#include <cstddef>
#include <functional>
#include <optional>

namespace backends::qt {

class ReadingsPanel final : public QWidget {
public:
    /// `form`: the form's window, beside which the panel opens. It must live as long as the panel is used. The panel
    /// has no parent, because a message box blocks its parent and all windows that belong to it. `isAsked` returns true
    /// if a message box is open.
    ReadingsPanel(companion::ReadingTable& table, QWidget& form, std::function<bool()> isAsked);

    /// Opens the panel. Closes it if it has the keyboard.
    void Toggle();
    /// Opens the panel and leaves the keyboard to the window that has it.
    void OpenAside();
    /// Called when the panel was opened by Toggle, or was closed.
    std::function<void(bool isOpen)> OpenChanged;
    /// Shows what has happened since the last call. Does nothing while the panel is closed.
    void TakeUp();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void MakeHead(QBoxLayout& column);
    void MakeTable();
    void MakeFoot(QBoxLayout& column);
    void PutBesideForm();
    void Select(int row);
    void Filter();
    void Copy();
    void TakeAgain();
    void ShowRecord();
    void ShowState();
    std::size_t SelectedRows() const;
    std::optional<std::size_t> OnlySelected() const;
    Text AgainRefusal() const;

    companion::ReadingTable& Table_;
    QWidget& Form_;
    std::function<bool()> IsAsked_;
    ReadingsModel Model_;
    QLineEdit* Words_;
    QComboBox* Verdicts_;
    QLabel* Count_;
    QTableView* View_;
    QLabel* RecordTitle_;
    QPlainTextEdit* Record_;
    QPushButton* Again_;
    QPushButton* Copy_;
    QLabel* State_;
    QElapsedTimer LastTaken_;    ///< the second half of a double click takes nothing
    bool WasHandedOver_ = false; ///< the selected one
    bool WasPlaced_ = false;
};

} // namespace backends::qt
