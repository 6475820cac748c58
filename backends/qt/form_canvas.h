// SPDX-License-Identifier: MIT
// The widget of the form, and the one place that knows how many pixels of the window a pixel of the form takes. The
// form itself computes in its own pixels, whatever the scale.
#pragma once

#include "src/view/platform/controls.h"

#include <QFont>
#include <QWidget>

#include <functional>
#include <vector>

namespace backends::qt {

using namespace platform;

class FormCanvas final : public QWidget {
public:
    /// `ground`: the widget that it lies on, in the middle. `usual`: the scale at which the desktop's font fits the
    /// form.
    FormCanvas(QWidget* ground, double scale, double usual);

    double Scale() const { return Scale_; }
    /// Places and draws the form and its controls again.
    void SetScale(double scale);
    /// Calls `follow` after each change of the scale.
    void Follow(std::function<void()> follow) { Followers_.push_back(std::move(follow)); }

    /// Puts the form on the ground. `pixels`: its box, in its own pixels.
    void Place(const Box& pixels);
    /// Returns the size that the ground has room for, in pixels of the form.
    QSize Room() const;

    /// Return a length, a box and a font of the form as they are in the window.
    int Shown(double pixels) const;
    QRect Shown(const Box& box) const;
    QFont Shown(QFont font) const;
    /// Returns the font of what the form sets no font for: the desktop's, or a larger one if the form is enlarged.
    QFont DesktopFont() const;
    /// Returns the pixel of the form that a place of a control belongs to.
    QPoint OfForm(QPoint place) const;

protected:
    bool eventFilter(QObject* ground, QEvent* event) override;

private:
    void PutInTheMiddle();

    QWidget& Ground_;
    double Scale_;
    double Usual_;
    Box Pixels_;
    std::vector<std::function<void()>> Followers_;
};

} // namespace backends::qt
