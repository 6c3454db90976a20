// The controls of the data entry: places in twips, explicit colours.
#pragma once

#include <QColor>

class QFrame;
class QLabel;
class QPushButton;
class QRadioButton;
class QString;
class QWidget;

namespace korvane {

/// A place on the parent, in twips.
struct Place {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Back colours of the panels behind section buttons: entries 15 and 11 of the sixteen colours.
inline constexpr QColor NoDataColour(255, 255, 255);
inline constexpr QColor DataColour(85, 255, 255);

/// Text colours that are told; both stand on light ground whatever the desktop's theme.
inline constexpr QColor RequiredColour(192, 0, 0);
inline constexpr QColor PlainColour(0, 0, 0);
inline constexpr QColor GroundColour(240, 240, 240);
inline constexpr QColor WarningGround(255, 236, 200); ///< behind a warning in RequiredColour

void place(QWidget* widget, const Place& where);

/// A plain text that wraps: above what it labels, centred at its lower edge, or beside it.
enum class LabelSide { Above, Beside };
QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text, const Place& where,
                  LabelSide side = LabelSide::Above);

/// Puts a label to another place, with letters as large as fit there.
void placeLabel(QLabel* label, const Place& where);

/// A title panel: black on light ground, raised.
QLabel* makeTitle(QWidget* parent, const QString& name, const QString& text, const Place& where);

/// A button that only a click, a mnemonic, Space or Enter on itself pushes.
QPushButton* makeButton(QWidget* parent, const QString& name, const QString& caption,
                        const Place& where);

QRadioButton* makeOption(QWidget* parent, const QString& name, const QString& caption,
                         const Place& where);

/// A frame with its title inside along the upper edge (a label named after the frame with
/// "_title"); no title where the text is empty.
QFrame* makeGroup(QWidget* parent, const QString& name, const QString& title, const Place& where);

/// A panel behind a section button. Its colour tells to the eye, and the description of the button
/// to the ear, that data are available.
QFrame* makePanel(QWidget* parent, const QString& name, const Place& where);
void highlight(QFrame* panel, bool dataAvailable);

/// Ground and text of a control, whatever the theme.
void paintGround(QWidget* widget, const QColor& ground, const QColor& text);

} // namespace korvane
