#include "screenshots.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QMessageBox>
#include <QPalette>
#include <QPixmap>
#include <QRegularExpression>
#include <QTimer>

namespace korvane::test {

namespace {

QString folder() {
    return qEnvironmentVariable("KORVANE_SCREENSHOTS");
}

QString nameOf(const QWidget& window) {
    return qobject_cast<const QMessageBox*>(&window) != nullptr ? "box " + window.windowTitle()
                                                                : window.objectName();
}

} // namespace

void keepScreenshot(QWidget& window, const QString& name) {
    if (folder().isEmpty()) {
        return;
    }
    static const QRegularExpression unwanted("[^A-Za-z0-9.-]+");
    const QString file = QString(name).replace(unwanted, "_") + ".png";
    for (int level = 0; level < 3; ++level) { // layouts within layouts settle one after the other
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    QDir().mkpath(folder());
    window.grab().save(QDir(folder()).filePath(file)); // not where a test has filled the disk
}

void takeTheme() {
    if (qEnvironmentVariableIsEmpty("KORVANE_DARK")) {
        return;
    }
    const QColor ground(43, 43, 46);
    const QColor text(230, 230, 230);
    const QColor faint(130, 130, 130);
    QPalette dark(text, QColor(60, 60, 64), QColor(90, 90, 95), QColor(20, 20, 22),
                  QColor(70, 70, 75), text, Qt::white, QColor(30, 30, 32), ground);
    dark.setColor(QPalette::Highlight, QColor(60, 110, 180));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(110, 170, 250));
    dark.setColor(QPalette::PlaceholderText, faint);
    dark.setColor(QPalette::ToolTipBase, ground);
    dark.setColor(QPalette::ToolTipText, text);
    dark.setColor(QPalette::AlternateBase, QColor(50, 50, 54));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, faint);
    }
    QApplication::setPalette(dark);
}

Screenshots::Screenshots() {
    if (!folder().isEmpty()) {
        qApp->installEventFilter(this);
    }
}

bool Screenshots::eventFilter(QObject* watched, QEvent* event) {
    auto* window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(watched) : nullptr;
    if (window != nullptr && window->isWindow() && !nameOf(*window).isEmpty()) {
        QTimer::singleShot(0, window, [window] { keepScreenshot(*window, nameOf(*window)); });
    }
    return QObject::eventFilter(watched, event);
}

} // namespace korvane::test
