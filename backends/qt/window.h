// SPDX-License-Identifier: MIT
// The program's window: the menus, the form, the keys of a device that has its menus or actions on keys, and the
// window's own status area, which is not part of the form.
#pragma once

#include "backends/qt/form_canvas.h"
#include "backends/qt/notice_list.h"
#include "backends/qt/window_menu.h"
#include "backends/simulated/device_profiles.h"
#include "companion/link_line.h"
#include "companion/notices.h"
#include "src/view/platform/controls.h"

#include <QAction>
#include <QBoxLayout>
#include <QFontMetrics>
#include <QLabel>
#include <QSpacerItem>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <vector>

namespace backends::qt {

using namespace platform;

/// The area of the form. It has the form's size; in a resizable window, its size determines the form's.
class Surface final : public QWidget {
public:
    Surface(QWidget* parent, double scale);

    /// Sets the preferred size, in pixels of the form.
    void SetWish(QSize size);
    void SetScale(double scale);
    QSize sizeHint() const override { return Wish_ * Scale_; }

    std::function<void()> Resized;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QSize Wish_;
    double Scale_;
};

class Window final : public QWidget {
public:
    /// `scale`: pixels of the window for a pixel of the form. `usual`: the one at which menus have the desktop's size.
    explicit Window(double scale, double usual = 1);

    double Scale() const { return FormWidget_->Scale(); }
    /// Shows the form at a scale, or at the largest step below it that the screen has room for. What is not part of the
    /// form keeps its size, except the menus and keys.
    void SetScale(double scale);
    Surface& Screen() { return *Ground_; }
    /// The form itself; the controls are its children.
    FormCanvas& FormWidget() { return *FormWidget_; }
    QBoxLayout& Head() { return *HeadRow_; }
    QBoxLayout& Foot() { return *FootRow_; }
    /// Puts a bar above all other parts, for as long as the bar exists.
    void PutAbove(QWidget& bar) { Column_->insertWidget(0, &bar); }
    /// Puts a bar between the form with its keys and the status area, for as long as the bar exists. The form keeps its
    /// size as far as the screen has room.
    void PutBelow(QWidget& bar);
    /// Returns the width that such a bar has in a window of fixed size: that of the form, unless the screen is so low
    /// that the bar stands beside the form.
    int WidthBelow() const;

    /// Shows a strip of buttons, one for each key.
    void ShowKeys(const std::vector<DeviceKey>& keys);
    /// True once LetSize was called.
    bool IsResizable() const { return IsOneLine_; }
    /// Fixes the window at the size that its parts need. The link's line has room for two lines, whatever it says: a
    /// window that changes its height moves its keys away under the pen. The list of notices has a state that is
    /// longer.
    void HoldSize();
    /// Makes the window resizable. The status area then keeps its height: otherwise each text would change the form's
    /// height.
    void LetSize();
    /// Gives the window the size that its parts ask for, as far as the screen has room for it and its frame.
    void Fit();

    /// Sets the status area's line on the state of the link and the last reading. A screen reader says it if it is
    /// news.
    void SetLinkLine(const companion::LinkLine& line);
    /// Flashes that line for two seconds.
    void FlashLink();
    /// Shows a few words in place of that line for five seconds: what a key has led to, and nothing else shows.
    void Say(const QString& words);
    /// Sets the current notices. The line shows the worst one, and how many warnings and losses there are besides it;
    /// Shift+F4 or a click on that number, or on the "…" beside a single text that is cut, opens the list of all. A
    /// mere note or hint is shown in the line only if the window is resizable. A screen reader says each new one. The
    /// offers of the notice in the line are buttons beside it, as far as there is room, and rows in the list.
    void SetNotices(const companion::Notices& notices);
    /// Called when a long operation continues, or has ended.
    void SetWorking(bool working);
    /// Called when that operation starts or stops waiting for another program.
    void SetWaiting(bool waiting);
    /// The window's menu, at the end of the link's line.
    WindowMenu& Menu() { return *Menu_; }
    /// The actions of the keys that the window has itself, for its menu.
    QAction& ReadingsAction() { return *Readings_; }
    QAction& NoticesAction() { return *AllNotices_; }
    QAction& HelpAction() { return *Help_; }
    /// Opens the help, as Ctrl+F1 does.
    void WantHelp() {
        if (HelpWanted)
            HelpWanted();
    }
    QString LinkLine() const { return QString::fromStdString(LinkLine_.Text); }

    std::function<void()> Rescaled;       ///< called after the scale, or the desktop's font, has changed
    std::function<void()> ReadingsWanted; ///< called for F4, also in a message box, and for a click on the link's line
    std::function<void()> HelpWanted;     ///< called for Ctrl+F1, also in a message box, and for "?" outside of a field
    std::function<void()> PortsWanted;    ///< called for the button beside a link that is off or down
    std::function<void(const Text& about)> NoticeTapped; ///< called when the user chooses a notice
    std::function<void(const Text& offer)> OfferTaken;   ///< called when the user chooses an offer of a notice, by name
    std::function<void()> CloseRequested;
    std::function<void(std::int32_t code)> KeyPressed; ///< called for a key of the strip
    std::function<void(std::int32_t code)> KeyReleased;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void TakeScale(double scale);
    bool FitsTheScreen() const;
    void StayOnTheScreen();
    void LayKeys();
    void Arrange();
    void Lay(QBoxLayout::Direction direction);
    bool IsSideBySide() const;
    int WidthOfRest() const;
    void HoldLineHeights();
    QFont KeyFont() const;
    QLabel* StatusLabel(const char* name);
    QString Fitted(const QLabel& label, const QString& text) const;
    void Put(QLabel& label, const QString& text);
    std::vector<companion::Notice> Listed() const;
    void MakeNoticeLine(QBoxLayout& column);
    void MakeLinkLine(QBoxLayout& column);
    QAction* MakeAction(const char* name, const QKeySequence& keys, void (Window::*act)());
    void WantReadings();
    void TapNotice(const Text& about);
    void TakeOffer(const Text& offer);
    int ShowOffers();
    QToolButton* OfferButton(const companion::Offer& offer);
    int WidthBesideNotice() const;
    int WidthBesideLink() const;
    void TapLine();
    void OpenNotices();
    void ShowState();
    QString NewsSince(const std::vector<companion::Notice>& before) const;
    bool IsDark() const;
    QString LinkLook() const;
    void ShowAlarm();
    void ShowMore(bool isCut);
    int KeysInARow(const std::vector<DeviceKey>& keys, const QFontMetrics& metrics) const;

    QBoxLayout* Halves_; ///< the form, and what stands below or beside it
    QBoxLayout* Column_;
    QBoxLayout* Rest_;
    QSpacerItem* Breadth_; ///< the width of Rest_ beside the form
    QBoxLayout* HeadRow_;
    Surface* Ground_;
    FormCanvas* FormWidget_;
    QBoxLayout* FootRow_;
    QWidget* Strip_;
    QLabel* Link_;
    WindowMenu* Menu_;
    QAction* Readings_;
    QAction* AllNotices_;
    QAction* Help_;
    QToolButton* Ports_;
    QLabel* Alarm_;
    QBoxLayout* Offers_;
    std::vector<companion::Offer> Offered_; ///< those that have a button
    QToolButton* More_;                     ///< opens the list; shown if there is more to read than the line shows
    NoticeList* List_ = nullptr;
    std::vector<DeviceKey> Keys_;
    companion::LinkLine LinkLine_;
    QTimer* Saying_; ///< runs while Said_ is shown
    QString Said_;
    QTimer* Flashing_;
    int FlashesLeft_ = 0;                     ///< half flashes; the line is inverted in every other one
    std::vector<companion::Notice> Standing_; ///< the worst one first
    int Behind_ = 0;                          ///< warnings and losses besides the one that is shown
    bool IsOneLine_ = false;                  ///< text that does not fit is cut, and a tooltip has it whole
    bool IsHeld_ = false;                     ///< the window has a fixed size, and the link's line a fixed height
    bool IsWorking_ = false;
    bool IsWaiting_ = false;
};

/// The form among the platform operations. Its box is in twips, 15 to the pixel: 1440 to the inch, 96 pixels to the
/// inch.
class QtForm final : public Form {
public:
    explicit QtForm(FormCanvas& form) : FormWidget_(form) {}

    Box Bounds() const override { return Twips_; }
    void SetBounds(const Box& twips) override;
    Box ClientArea() const override; ///< the whole form: there is no frame
    float TwipsPerPixelX() const override { return TwipsPerPixel; }
    float TwipsPerPixelY() const override { return TwipsPerPixel; }

private:
    FormCanvas& FormWidget_;
    Box Twips_;
};

} // namespace backends::qt
