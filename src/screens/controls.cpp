#include "screens/controls.h"

#include "widgets/geometry.h"

#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

namespace korvane {

namespace {

constexpr double TitleTop = 30;     // twips
constexpr double TitleHeight = 270; // twips, one line

/// A caption as it is drawn: without the blanks that once placed its words, and with a unit such as
/// (FT/FT) on one line.
QString drawnText(const QString& text) {
    static const QString keepTogether("/\u2060"); // a word joiner
    return text.simplified().replace('/', keepTogether);
}

/// A label that draws its text so.
class Caption : public QLabel {
  public:
    using QLabel::QLabel;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        drawFrame(&painter);
        style()->drawItemText(&painter, contentsRect(),
                              static_cast<int>(alignment()) | Qt::TextWordWrap, palette(),
                              isEnabled(), drawnText(text()), foregroundRole());
    }
};

/// A button whose focus is seen at a glance, on panels of any colour.
class Button : public QPushButton {
  public:
    using QPushButton::QPushButton;

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPushButton::paintEvent(event);
        if (hasFocus()) {
            constexpr int inside = 4; // pixels from the edge, clear of the toolkit's own frame
            QPainter painter(this);
            painter.setPen(QPen(palette().color(QPalette::ButtonText), 2));
            painter.drawRect(rect().adjusted(inside, inside, -inside, -inside));
        }
    }
};

/// An option that Tab reaches whether its group has the focus or not.
class Option : public QRadioButton {
  public:
    using QRadioButton::QRadioButton;

  protected:
    void focusInEvent(QFocusEvent* event) override {
        QRadioButton::focusInEvent(event); // takes Tab from the other options of the group
        for (auto* option : parentWidget()->findChildren<QRadioButton*>()) {
            option->setFocusPolicy(Qt::StrongFocus);
        }
    }
};

QLabel* plainLabel(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new Caption(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

/// Letters as large as usual where the text has room, else smaller down to two thirds.
void fitLetters(QLabel* label) {
    QFont letters = label->parentWidget()->font();
    const double smallest = letters.pointSizeF() * 2 / 3;
    const QSize room = label->contentsRect().size();
    const auto fits = [&] {
        const QRect needed = QFontMetrics(letters).boundingRect(
            QRect(0, 0, room.width(), 0), Qt::TextWordWrap, drawnText(label->text()));
        return needed.width() <= room.width() && needed.height() <= room.height();
    };
    while (!fits() && letters.pointSizeF() > smallest) {
        letters.setPointSizeF(letters.pointSizeF() - 0.25);
    }
    label->setFont(letters);
}

} // namespace

void place(QWidget* widget, const Place& where) {
    place(widget, where.left, where.top, where.width, where.height);
}

void paintGround(QWidget* widget, const QColor& ground, const QColor& text) {
    QPalette colours = widget->palette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button, QPalette::Base}) {
        colours.setColor(role, ground);
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        colours.setColor(role, text);
    }
    widget->setPalette(colours);
    widget->setAutoFillBackground(true);
}

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text, const Place& where,
                  LabelSide side) {
    QLabel* label = plainLabel(parent, name, text);
    label->setAlignment(side == LabelSide::Above ? Qt::AlignHCenter | Qt::AlignBottom
                                                 : Qt::AlignLeft | Qt::AlignVCenter);
    placeLabel(label, where);
    return label;
}

void placeLabel(QLabel* label, const Place& where) {
    place(label, where);
    fitLetters(label);
}

QLabel* makeTitle(QWidget* parent, const QString& name, const QString& text, const Place& where) {
    QLabel* label = plainLabel(parent, name, text);
    label->setAlignment(Qt::AlignCenter);
    label->setFrameStyle(QFrame::Panel | QFrame::Raised);
    label->setLineWidth(2);
    paintGround(label, GroundColour, PlainColour);
    place(label, where);
    return label;
}

QPushButton* makeButton(QWidget* parent, const QString& name, const QString& caption,
                        const Place& where) {
    auto* button = new Button(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    place(button, where);
    return button;
}

QRadioButton* makeOption(QWidget* parent, const QString& name, const QString& caption,
                         const Place& where) {
    auto* option = new Option(caption, parent);
    option->setObjectName(name);
    place(option, where);
    return option;
}

QFrame* makeGroup(QWidget* parent, const QString& name, const QString& title, const Place& where) {
    auto* frame = new QFrame(parent);
    frame->setObjectName(name);
    frame->setAccessibleName(title);
    frame->setFrameStyle(QFrame::Box | QFrame::Sunken);
    place(frame, where);
    if (!title.isEmpty()) {
        QLabel* label = plainLabel(frame, name + "_title", title);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        place(label, TitleTop, TitleTop, where.width - 2 * TitleTop, TitleHeight);
        const int needed = label->heightForWidth(label->width());
        label->resize(label->width(), qMax(label->height(), needed));
    }
    return frame;
}

QFrame* makePanel(QWidget* parent, const QString& name, const Place& where) {
    auto* panel = new QFrame(parent);
    panel->setObjectName(name);
    panel->setFrameStyle(QFrame::Panel | QFrame::Raised);
    place(panel, where);
    highlight(panel, false);
    return panel;
}

void highlight(QFrame* panel, bool dataAvailable) {
    paintGround(panel, dataAvailable ? DataColour : NoDataColour, PlainColour);
    for (auto* button : panel->findChildren<QPushButton*>()) {
        button->setAccessibleDescription(dataAvailable ? "data are available" : "");
    }
}

} // namespace korvane
