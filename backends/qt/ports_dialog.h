// SPDX-License-Identifier: MIT
// The list of the machine's ports, in which a person chooses one.
#pragma once

#include "companion/ports/port_choice.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace backends::qt {

/// What the dialog asks of the program.
struct PortsOfMachine {
    std::function<std::vector<companion::PortRow>()> Survey; ///< opens and closes devices
    std::function<std::vector<std::string>()> Names;         ///< of what is plugged in; opens nothing
    std::function<void(const companion::PortChoice& choice)> Use;
    /// Returns what is wrong with an address that is typed, as a sentence; empty if it can be used.
    std::function<std::string(const std::string& address)> WhyNotUsable;
    /// Ends what a choice has pinned a number to, in this run and for later ones.
    std::function<void(std::int32_t number)> Forget;
    /// Counts what arrives at these devices until an empty list is given.
    std::function<void(const std::vector<std::string>& paths)> Listen;
    std::function<std::map<std::string, std::size_t>()> Heard; ///< since Listen
};

class PortsDialog final : public QWidget {
public:
    /// How long it is looked at which ports characters come in.
    static constexpr int ListeningTime = 3000; // milliseconds

    PortsDialog(PortsOfMachine machine, QWidget& form);

    /// Opens the dialog, which a choice closes, or brings it to the front.
    void Open();
    /// Lists the ports again.
    void Survey();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeAddressLine();
    void MakeButtonsOfPort();
    void MakeFoot();
    void LookForChanges();
    void ShowRows();
    void ShowDetails();
    void UseSelected();
    void JudgeAddress();
    void UseAddress();
    void ForgetSelected();
    void StartListening();
    void ShowHeard();
    void StopListening();
    int Proposed() const;
    int Selected() const;

    PortsOfMachine Machine_;
    std::vector<companion::PortRow> Rows_;
    std::vector<std::string> Names_; ///< at the last survey
    QTreeWidget* List_;
    QLabel* Details_;
    QString Said_; ///< what a pin that was forgotten has left; empty when another row is selected
    QLineEdit* Address_;
    QLabel* AddressTrouble_;
    QPushButton* UseAddress_;
    QPushButton* Copy_;
    QPushButton* Forget_;
    QPushButton* Listen_;
    QPushButton* Use_;
    QTimer* Changes_;
    QTimer* Hearing_;
    int HearingLeft_ = 0; ///< milliseconds
};

} // namespace backends::qt
