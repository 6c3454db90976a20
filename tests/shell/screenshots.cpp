#include "screenshots.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QMessageBox>
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
    QDir().mkpath(folder());
    window.grab().save(QDir(folder()).filePath(file)); // not where a test has filled the disk
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
