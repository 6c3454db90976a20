// The help window: contents, search and the pages of the guide.
#pragma once

#include "commands/menus.h"
#include "widgets/help_pages.h"

#include <QDialog>
#include <QPointer>

class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace korvane {

class HelpBrowser;

/// Shows the guide and the theory. Modeless, and a child of the screen that is active, so that it
/// can be read while a modal screen is open.
class HelpViewer : public QDialog {
    Q_OBJECT

  public:
    explicit HelpViewer(QWidget* parent);

    void showContents();
    void showSearch();
    /// Opens the guide at a heading, which stands in one page alone.
    void showSection(const QString& section);
    /// Opens a page at one of its headings; an empty heading is its top.
    void openPage(int page, const QString& section);
    /// Opens a page at a place of its text.
    void openAt(int page, int position);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// A place that was read.
    struct Place {
        int page = -1;
        int position = 0;
    };

    void createContents();
    void createSearch();
    void fillContents();
    void search(const QString& words);
    QWidget* createReader();
    void stepHits(int step);
    void goTo(Place place);
    void showPlace(Place place);
    void loadPage();
    void follow(const QString& link);
    void scrollTo(int position);
    void goBack();

    std::vector<HelpPage> pages_;
    Place place_;
    std::vector<Place> before_; ///< the way back, the last place at its end
    QTreeWidget* contents_;
    QLineEdit* words_;
    QListWidget* hits_;
    HelpBrowser* browser_;
    qreal pictureWidth_ = 0; ///< of the shown page's pictures
    QPushButton* back_;
    QTabWidget* tabs_;
};

/// The one help window of the program and the screen that it belongs to.
class HelpService : public QObject {
    Q_OBJECT

  public:
    /// Shows contents, search or the section of the active window, over that window.
    void show(QWidget* active, Help what);
    /// Moves an open help window to a modal screen that has opened, which would block it otherwise.
    void follow(QWidget* screen);
    /// Closes the help window, if there is one.
    void quit();

  private:
    void moveTo(QWidget* parent);

    QPointer<HelpViewer> viewer_;
};

} // namespace korvane
