// SPDX-License-Identifier: MIT
// The help: pages of Markdown with links between them, in a window of its own beside the form's.
#pragma once

#include "backends/qt/beside_form.h"
#include "companion/help_pages.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

class QBoxLayout;

namespace backends::qt {

/// Shows pages that it is given, and nothing else: no file is read, and nothing is asked of a network.
class PageBrowser final : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    /// Returns the text of a page; empty if there is none of this name.
    std::function<QString(const QString& name)> TextOf;
    /// Returns the name of the page that is shown.
    QString PageName() const;
    /// Shows a page. One that is shown already is loaded again.
    void ShowPage(const QString& name);
    /// Scrolls to the heading that a link names (companion::NameOfHeading).
    void GoToHeading(const QString& name);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
};

class HelpDialog final : public BesideForm {
public:
    using Pages = std::function<std::vector<companion::HelpPage>()>;

    /// `pages` is called whenever the help is opened. `form`: the form's window, which must live longer.
    HelpDialog(Pages pages, QWidget& form);

    /// Opens the help at a page, or shows that page in the open window.
    void Open(const std::string& page);
    /// The same, but closes the help if it has the keyboard.
    void Toggle(const std::string& page);

    std::function<void()> ReportWanted; ///< called for "Report a problem…"

private:
    void MakeHead(QBoxLayout& column);
    void MakeFoot(QBoxLayout& column);
    void TakePages();
    QString TextOf(const QString& name) const;
    bool HasWords(int page);
    void PageShown(const QUrl& page);
    void FindSoon();
    void FindFirst();
    bool FindFrom(int place);
    void FindInOtherPages();
    void FindNext();
    void ShowFound();

    Pages Pages_;
    std::vector<companion::HelpPage> Shown_;
    std::vector<QString> Texts_; ///< theirs, as a person sees them; empty until the first search
    PageBrowser* Browser_;
    QPushButton* Back_;
    QComboBox* Titles_;
    QLineEdit* Words_;
    QPushButton* Next_;
    QLabel* Found_;
    QTimer* Standing_; ///< runs out when a person has stopped typing
};

} // namespace backends::qt
