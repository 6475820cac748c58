// SPDX-License-Identifier: MIT
// A strip of buttons below the form that says what a simulated instrument sends.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QToolButton>
#include <QWidget>

#include <cstddef>
#include <functional>
#include <vector>

namespace backends::qt {

/// The buttons do not take the keyboard from the form: Alt with 1, 2 and so on presses them, in their order.
class InstrumentStrip final : public QWidget {
public:
    /// `kinds`: what the instrument measures, a button each. `width`: the pixels of a row of buttons, until the strip
    /// gets another width.
    InstrumentStrip(QWidget* parent, const std::vector<QString>& kinds, const QFont& font, int width);

    /// Sets the line above the buttons.
    void SetWords(const QString& words);
    /// Enables the buttons that send.
    void SetHeard(bool isHeard);
    /// Says whether the button of the cable pulls it or plugs it in.
    void SetPlugged(bool isPlugged);
    /// Shows the button that empties the data, enabled or not.
    void OfferAfresh(bool isEnabled);
    bool IsTicked() const { return Every_->isChecked(); }

    // Called when a person presses a button.
    std::function<void(std::size_t kind)> KindWanted;
    std::function<void()> AllWanted;
    std::function<void()> StrangerWanted;
    std::function<void()> CableWanted;
    std::function<void()> AfreshWanted;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* Button(const char* name, const QString& words, std::function<void()> pressed);
    void NumberButtons();
    bool IsNarrow(int width) const;
    std::vector<std::size_t> RowsFor(int width) const;
    void Lay(const std::vector<std::size_t>& rows);

    QLabel* Words_;
    std::vector<std::size_t> Rows_;         ///< the row of each button
    std::vector<QAbstractButton*> Buttons_; ///< in their order
    std::vector<QToolButton*> Senders_;
    QToolButton* Cable_;
    QCheckBox* Every_;
    QToolButton* Afresh_;
};

} // namespace backends::qt
