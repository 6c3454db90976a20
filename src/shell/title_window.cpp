#include "shell/title_window.h"

#include "widgets/gate.h"
#include "widgets/geometry.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace korvane {

namespace {

const QColor TitleRed(219, 0, 0);
const QColor ShadowGrey(170, 170, 170);

constexpr const char* DisclaimerText =
    "   TO USE THIS PROGRAM, YOU MUST ACKNOWLEDGE THE FOLLOWING DISCLAIMER:\n\n"
    "This program is furnished without any warranty, expressed or implied, of its accuracy, "
    "completeness, reliability, usability or suitability for any purpose. There is no liability "
    "for any use made of it or of its results; whoever uses them answers for them.\n\n"
    "The program belongs to its owner. The recipient agrees to assert no proprietary rights in it "
    "nor to represent it as other than the owner's program.";

constexpr const char* AboutText =
    "Cantilever and anchored walls: soil pressures by coefficients and wedge methods, depth or "
    "factor of safety, moments, shears, deflections and Rowe's moment reduction.";

/// The program's lines in Picture1: the first letter of each word larger and in red, every letter
/// with a shadow.
class TitlePicture : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        enterPaint([this] {
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            drawLine(painter, "KORVANE", QPalette::WindowText, 0.52, 0.46);
            drawLine(painter, "Sheet-Pile Walls", QPalette::Highlight, 0.86, 0.20);
        });
    }

  private:
    static QFont letterFont(double size) {
        QFont font("Times New Roman");
        font.setStyleHint(QFont::Serif);
        font.setBold(true);
        font.setPixelSize(std::max(1, static_cast<int>(size)));
        return font;
    }
    static double letterSize(const QString& text, qsizetype place, double size) {
        const bool first = place == 0 || text[place - 1] == ' ' || text[place - 1] == '-';
        return first ? size : size * 0.72;
    }
    static double lineWidth(const QString& text, double size) {
        double width = 0;
        for (qsizetype place = 0; place < text.size(); ++place) {
            width += QFontMetricsF(letterFont(letterSize(text, place, size)))
                         .horizontalAdvance(text[place]);
        }
        return width;
    }
    /// Base line and size of the letters are parts of the picture's height.
    void drawLine(QPainter& painter, const QString& text, QPalette::ColorRole colour,
                  double baseLinePart, double sizePart) const {
        const double baseLine = baseLinePart * height();
        double size = sizePart * height();
        double width = lineWidth(text, size);
        if (width > this->width()) { // on a narrow window
            size *= this->width() / width;
            width = lineWidth(text, size);
        }
        double x = (this->width() - width) / 2;
        const double offset = std::max(1.0, size / 24);
        for (qsizetype place = 0; place < text.size(); ++place) {
            const QFont font = letterFont(letterSize(text, place, size));
            const bool first = letterSize(text, place, size) == size;
            painter.setFont(font);
            painter.setPen(ShadowGrey);
            painter.drawText(QPointF(x + offset, baseLine + offset), text.mid(place, 1));
            painter.setPen(first ? TitleRed : palette().color(colour));
            painter.drawText(QPointF(x, baseLine), text.mid(place, 1));
            x += QFontMetricsF(font).horizontalAdvance(text[place]);
        }
    }
};

} // namespace

TitleWindow::TitleWindow(QWidget* parent) : QDialog(parent) {
    setObjectName("splash_form");
    setWindowTitle("KORVANE");
    Panel3D1_ = new QFrame(this);
    Panel3D1_->setObjectName("Panel3D1");
    Panel3D1_->setFrameStyle(QFrame::Panel | QFrame::Raised);
    Panel3D1_->setLineWidth(2);
    Panel3D1_->installEventFilter(this);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(Panel3D1_);
    createLabels();
    createAnswerPanel();
    resize(QSize(pixels(8400), sizeHint().height()).boundedTo(screenRoom(this)));
    centreOnScreen(this);
}

void TitleWindow::createLabels() {
    auto* layout = new QVBoxLayout(Panel3D1_);
    layout->setSpacing(pixels(90));
    auto* picture = new TitlePicture(Panel3D1_);
    picture->setObjectName("Picture1");
    const QSize room = screenRoom(this);
    picture->setMinimumSize(std::min(pixels(7200), room.width() * 3 / 4),
                            std::min(pixels(2160), room.height() / 5));
    layout->addWidget(picture);
    const QString lines[] = {"KORVANE", "Design/Analysis of Sheet-Pile Walls",
                             "By Classical Methods",
                             QString("Version %1, %2").arg(KORVANE_VERSION, KORVANE_VERSION_DATE)};
    int number = 1;
    for (const QString& line : lines) {
        auto* label = new QLabel(line, Panel3D1_);
        label->setObjectName(QString("Label%1").arg(number++));
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
}

void TitleWindow::createAnswerPanel() {
    auto* layout = qobject_cast<QVBoxLayout*>(Panel3D1_->layout());
    okpanel_ = new QLabel;
    okpanel_->setObjectName("okpanel");
    okpanel_->setTextFormat(Qt::PlainText);
    okpanel_->setWordWrap(true);
    okpanel_->setMargin(pixels(180));
    okscroll_ = new QScrollArea(Panel3D1_);
    okscroll_->setObjectName("okscroll");
    okscroll_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    okscroll_->setWidgetResizable(true);
    okscroll_->setFocusPolicy(Qt::NoFocus); // the buttons keep it; the keys for pages scroll
    okscroll_->setWidget(okpanel_);
    okscroll_->hide();
    layout->addWidget(okscroll_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (int index = 0; index < 2; ++index) {
        QPushButton*& button = okbutton_[index];
        button = new QPushButton(Panel3D1_);
        button->setObjectName(QString("okbutton_%1").arg(index));
        button->hide();
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this,
                [this, index] { answer(index == 0 ? 1 : -1); });
    }
    buttons->addStretch();
    layout->addLayout(buttons);
}

/// Grows the window for a text as far as the screen has room.
void TitleWindow::showText(const char* text) {
    okpanel_->setText(text);
    okscroll_->show();
    const int borders = Panel3D1_->layout()->contentsMargins().left() +
                        Panel3D1_->layout()->contentsMargins().right() +
                        layout()->contentsMargins().left() + layout()->contentsMargins().right() +
                        2 * (Panel3D1_->frameWidth() + okscroll_->frameWidth());
    const int needed = okpanel_->heightForWidth(width() - borders) + 2 * okscroll_->frameWidth();
    const int least = std::min(needed, 3 * okpanel_->fontMetrics().lineSpacing());
    okscroll_->setMinimumHeight(least);
    Panel3D1_->layout()->activate(); // a window that is not shown yet lays out nothing by itself
    layout()->activate();
    const QSize room = screenRoom(this);
    resize(width(),
           std::min(std::max(height(), layout()->totalMinimumSize().height() - least + needed),
                    room.height()));
    centreOnScreen(this);
}

void TitleWindow::ShowDisclaimer() {
    use_ = Use::Disclaimer;
    DisclaimerAnswer = 0;
    okbutton_[0]->setText("&ACCEPT");
    okbutton_[0]->setDefault(true);
    okbutton_[1]->setText("&DECLINE");
    for (QPushButton* button : okbutton_) {
        button->show();
    }
    showText(DisclaimerText);
    okbutton_[0]->setFocus();
}

void TitleWindow::becomeAbout() {
    use_ = Use::About;
    okbutton_[0]->setText("&OK");
    okbutton_[0]->setDefault(true);
    okbutton_[0]->show();
    okbutton_[0]->setFocus();
    showText(AboutText);
}

bool TitleWindow::runAtStart(int titleMilliseconds) {
    show();
    QEventLoop loop;
    connect(this, &TitleWindow::answered, &loop, &QEventLoop::quit);
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(titleMilliseconds);
    loop.exec();
    if (DisclaimerAnswer == 0) {
        ShowDisclaimer();
        loop.exec();
    }
    hide();
    return DisclaimerAnswer == 1;
}

void TitleWindow::showAbout(QWidget* parent,
                            const std::function<void(QWidget* active)>& showGuide) {
    TitleWindow about(parent);
    about.showGuide_ = showGuide;
    about.becomeAbout();
    about.exec();
}

void TitleWindow::answer(int value) {
    if (use_ == Use::About) {
        accept();
        return;
    }
    if (DisclaimerAnswer == 0) {
        DisclaimerAnswer = value;
        emit answered();
    }
}

void TitleWindow::leave() {
    answer(-1);
}

void TitleWindow::keyPressEvent(QKeyEvent* event) {
    QScrollBar& bar = *okscroll_->verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Escape:
        leave();
        break;
    case Qt::Key_PageDown:
        bar.setValue(bar.value() + bar.pageStep());
        break;
    case Qt::Key_PageUp:
        bar.setValue(bar.value() - bar.pageStep());
        break;
    case Qt::Key_F1:
        if (showGuide_) {
            showGuide_(this);
        }
        break;
    default:
        QDialog::keyPressEvent(event);
    }
}

void TitleWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    leave();
}

bool TitleWindow::eventFilter(QObject* watched, QEvent* event) {
    if (use_ == Use::About && watched == Panel3D1_ && event->type() == QEvent::MouseButtonRelease) {
        leave();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace korvane
